# The report sidebar, its credit line and the bug-report mail.
target_sources(ui_tests PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/sidebar_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/sidebarcards_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/bugreport_test.cpp)
# The mail's build line is checked against the number the build was configured with.
target_compile_definitions(ui_tests PRIVATE
    CUEBOX_EXPECTED_BUILD_NUMBER="${CUEBOX_BUILD_NUMBER}")
# Texts shown whole in every language, and the menu bar's mnemonics.
target_sources(ui_tests PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/labelsfit_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/menutexts_test.cpp)
