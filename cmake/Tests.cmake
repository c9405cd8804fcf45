# selmar_test(NAME SOURCES ... [LIBRARIES ...] LABELS ... [ENVIRONMENT ...] [ARGUMENTS ...])
#
# One QtTest binary per class. It runs without a display, with its own home folder, so that a test never reads what the
# person at this machine keeps, and fails rather than hangs. A folder whose tests all bear a label sets it once, in
# SELMAR_FOLDER_LABELS.
function(selmar_test name)
    cmake_parse_arguments(PARSE_ARGV 1 test "" "TIMEOUT" "SOURCES;LIBRARIES;LABELS;ENVIRONMENT;ARGUMENTS")
    add_executable(${name} ${test_SOURCES})
    selmar_conventions(${name})
    target_link_libraries(${name} PRIVATE Qt5::Test ${test_LIBRARIES})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
    if(NOT test_TIMEOUT)
        set(test_TIMEOUT 120)
    endif()
    math(EXPR test_TIMEOUT "${test_TIMEOUT} * ${SELMAR_TEST_SLOWNESS}")
    # QtTest ends a function with all its rows after five minutes of its own accord.
    math(EXPR function_timeout "${test_TIMEOUT} * 1000")
    add_test(NAME ${name} COMMAND ${name} ${test_ARGUMENTS})
    set(home "${PROJECT_BINARY_DIR}/tests/home/${name}")
    file(MAKE_DIRECTORY "${home}")
    set_tests_properties(${name} PROPERTIES
        LABELS "${test_LABELS};${SELMAR_FOLDER_LABELS}"
        TIMEOUT ${test_TIMEOUT}
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;HOME=${home};XDG_RUNTIME_DIR=${home};LC_ALL=C.UTF-8;QTEST_FUNCTION_TIMEOUT=${function_timeout};${SELMAR_SANITIZER_ENVIRONMENT};${test_ENVIRONMENT}")
endfunction()

# What a test's seconds are multiplied with.
set(SELMAR_TEST_SLOWNESS 1)
set(SELMAR_SANITIZER_ENVIRONMENT "")
if(SELMAR_SANITIZERS)
    # Leak reports need a stack unwinder that takes several times as long.
    set(SELMAR_TEST_SLOWNESS 5)
    # gcc's runtime does not see through Qt, which keeps no frame pointers, and would miss what is suppressed; clang's does,
    # and is several times as fast with its own unwinder.
    set(unwinder "")
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        set(unwinder ":fast_unwind_on_malloc=0")
    endif()
    set(SELMAR_SANITIZER_ENVIRONMENT
        "ASAN_OPTIONS=detect_leaks=1${unwinder}"
        "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/lsan.supp:print_suppressions=0"
        "UBSAN_OPTIONS=print_stacktrace=1")
endif()
