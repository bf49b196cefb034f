# The report sidebar, the rename and convert studios, the settings window, the bug-report mail
# and the credit line: views over the session, built into the window's library.
set(CUEBOX_BUILD_NUMBER "1" CACHE STRING "Build number shown in bug reports")
target_sources(cuebox_ui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/selectchip.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/panelparts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/sidebarcard.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/sidebarcards.h
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/overviewcards.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/actioncards.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/clipcard.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebar/reportsidebarview.cpp
    ${CMAKE_CURRENT_LIST_DIR}/bugreport/bugmail.cpp
    ${CMAKE_CURRENT_LIST_DIR}/bugreport/creditfooter.cpp
)
set_source_files_properties(${CMAKE_CURRENT_LIST_DIR}/bugreport/bugmail.cpp PROPERTIES
    COMPILE_DEFINITIONS "CUEBOX_BUILD_NUMBER=\"${CUEBOX_BUILD_NUMBER}\"")
