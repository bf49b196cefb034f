# The settings window's page and cards, and the symbols only its rail and cards use.
target_sources(cuebox_ui PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/settingssection.cpp
    ${CMAKE_CURRENT_LIST_DIR}/settingscards.h
    ${CMAKE_CURRENT_LIST_DIR}/settingscards.cpp
    ${CMAKE_CURRENT_LIST_DIR}/workspacecard.cpp
    ${CMAKE_CURRENT_LIST_DIR}/settingsview.h
    ${CMAKE_CURRENT_LIST_DIR}/settingsview.cpp
)
qt_add_resources(cuebox_ui cuebox_settings_icons PREFIX /icons
    BASE ${CMAKE_CURRENT_LIST_DIR}/icons FILES
    ${CMAKE_CURRENT_LIST_DIR}/icons/exclamationmark.triangle.svg
    ${CMAKE_CURRENT_LIST_DIR}/icons/globe.svg
    ${CMAKE_CURRENT_LIST_DIR}/icons/laptopcomputer.svg
    ${CMAKE_CURRENT_LIST_DIR}/icons/textformat.svg)
