# The report sidebar, the bug-report mail and the credit line: views over the session, built
# into the window's library.
target_sources(cuebox_ui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/selectchip.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/panelparts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/sidebarcard.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/sidebarcards.h
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/overviewcards.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/actioncards.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/clipcard.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/reportsidebarview.cpp
    ${CMAKE_CURRENT_LIST_DIR}/bugreport/bugreport.cpp
    ${CMAKE_CURRENT_LIST_DIR}/bugreport/creditfooter.cpp
)
# The sidebar's symbols join the shared icon table under the same prefix.
qt_add_resources(cuebox_ui cuebox_sidebar_icons PREFIX /icons BASE sidebar/icons FILES
    sidebar/icons/checklist.svg
    sidebar/icons/checkmark.svg
    sidebar/icons/circle.svg
    sidebar/icons/display.svg
    sidebar/icons/exclamationmark.svg
    sidebar/icons/eye.svg
    sidebar/icons/hand.tap.svg
    sidebar/icons/heart.text.clipboard.svg
    sidebar/icons/pencil.svg
    sidebar/icons/rectangle.portrait.svg
    sidebar/icons/rectangle.stack.badge.minus.svg
    sidebar/icons/rectangle.svg
    sidebar/icons/square.stack.3d.up.svg
    sidebar/icons/textformat.abc.svg
    sidebar/icons/tv.svg)
