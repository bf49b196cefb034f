# The rename and convert studios: their flows and bindings.
target_sources(ui_tests PRIVATE ${CMAKE_CURRENT_LIST_DIR}/studios_test.cpp)
