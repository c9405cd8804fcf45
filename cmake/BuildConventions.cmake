# What every target of our own is built with. Nothing here is global: a target asks for it through selmar_conventions().

set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC OFF)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

find_program(SELMAR_CCACHE ccache)
if(SELMAR_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${SELMAR_CCACHE}")
endif()

add_library(selmar_warnings INTERFACE)
target_compile_options(selmar_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wold-style-cast -Wsuggest-override -Wnon-virtual-dtor -Woverloaded-virtual -Werror
    # Qt's logging macros leave out the last argument of a variadic macro, which clang calls pedantic.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)

add_library(selmar_sanitizers INTERFACE)
if(SELMAR_SANITIZERS)
    target_compile_options(selmar_sanitizers INTERFACE
        -fsanitize=${SELMAR_SANITIZERS} -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(selmar_sanitizers INTERFACE -fsanitize=${SELMAR_SANITIZERS})
endif()

add_library(selmar_coverage INTERFACE)
if(SELMAR_COVERAGE)
    # The counters' own functions are no entry points of the plugin.
    target_link_options(selmar_coverage INTERFACE --coverage -Wl,--exclude-libs,libgcov.a)
endif()

# selmar_count_lines(TARGET): with SELMAR_COVERAGE the lines of this target are counted when they run.
function(selmar_count_lines target)
    if(SELMAR_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage)
    endif()
endfunction()

add_library(selmar_qt_strict INTERFACE)
target_compile_definitions(selmar_qt_strict INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00
    # File, line and function of a log line are part of the trace that the host collects, in release builds too.
    QT_MESSAGELOGCONTEXT)

# selmar_conventions(TARGET): language level, warnings as errors, sanitizers, strict Qt and hidden symbols.
function(selmar_conventions target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_link_libraries(${target} PRIVATE selmar_warnings selmar_sanitizers selmar_coverage selmar_qt_strict)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON
        AUTOMOC ON
        AUTOUIC ON)
    get_target_property(type ${target} TYPE)
    if(type MATCHES "SHARED_LIBRARY|MODULE_LIBRARY" AND NOT (SELMAR_SANITIZERS AND CMAKE_CXX_COMPILER_ID MATCHES "Clang"))
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
endfunction()
