target_sources(ui_tests PRIVATE ${CMAKE_CURRENT_LIST_DIR}/settings_test.cpp)
