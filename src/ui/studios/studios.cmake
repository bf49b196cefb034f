# The rename and convert studios: the two modal sheets over the main window, and the pictures
# only they use.
target_sources(cuebox_ui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/renamedraftmodel.cpp
    ${CMAKE_CURRENT_LIST_DIR}/renamedraftmodel.h
    ${CMAKE_CURRENT_LIST_DIR}/renamerowsview.cpp
    ${CMAKE_CURRENT_LIST_DIR}/renamerowsview.h
    ${CMAKE_CURRENT_LIST_DIR}/renamestudioview.cpp
    ${CMAKE_CURRENT_LIST_DIR}/renamestudioview.h
    ${CMAKE_CURRENT_LIST_DIR}/convertparts.cpp
    ${CMAKE_CURRENT_LIST_DIR}/convertparts.h
    ${CMAKE_CURRENT_LIST_DIR}/convertstudioview.cpp
    ${CMAKE_CURRENT_LIST_DIR}/convertstudioview.h
)
qt_add_resources(cuebox_ui cuebox_studio_icons PREFIX /icons BASE ${CMAKE_CURRENT_LIST_DIR}/icons
    FILES
    ${CMAKE_CURRENT_LIST_DIR}/icons/arrow.triangle.2.circlepath.svg
    ${CMAKE_CURRENT_LIST_DIR}/icons/arrow.up.forward.app.svg
    ${CMAKE_CURRENT_LIST_DIR}/icons/bolt.horizontal.circle.fill.svg)
