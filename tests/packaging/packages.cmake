# Run by ctest; see CMakeLists.txt beside it for the variables. Every step ends the test when it fails.
cmake_minimum_required(VERSION 3.25)

set(packages "${WORK_DIR}/packages")
set(root "${WORK_DIR}/root")
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${packages}" "${root}")
# Only what is written into the files may help them to find each other.
unset(ENV{LD_LIBRARY_PATH})

function(step name)
    message(STATUS "${name}")
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${WORK_DIR}"
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${name}: ${result}\n${output}")
    endif()
    set(step_output "${output}" PARENT_SCOPE)
endfunction()

function(require text pattern what)
    if(NOT "${text}" MATCHES "${pattern}")
        message(FATAL_ERROR "${what}: no \"${pattern}\" in\n${text}")
    endif()
endfunction()

step("pack" "${CPACK}" -G DEB --config "${BINARY_DIR}/CPackConfig.cmake" -B "${packages}")
foreach(name IN ITEMS selmar-platform selmar-platform-dev selmarrivenhold-plugin selmar-terminal)
    file(GLOB file "${packages}/${name}_${VERSION}_*.deb")
    list(LENGTH file count)
    if(NOT count EQUAL 1)
        message(FATAL_ERROR "expected one package ${name} ${VERSION}, found: ${file}")
    endif()
    step("maintainer of ${name}" "${DPKG_DEB}" -f "${file}" Maintainer)
    require("${step_output}" "<[^@>]+@[^>]*\\.[^>]+>" "somebody to write to about ${name}")
    step("fields of ${name}" "${DPKG_DEB}" -f "${file}" Depends)
    set(depends_${name} "${step_output}")
    if(NOT name STREQUAL "selmar-platform")
        require("${step_output}" "selmar-platform \\(= ${VERSION}\\)" "${name} needs the libraries of its own version")
    endif()
    # Headers are of no use to a cashier: the terminal runs without them.
    if(NOT name STREQUAL "selmar-platform-dev")
        step("unpack ${name}" "${DPKG_DEB}" -x "${file}" "${root}")
    endif()
endforeach()
require("${depends_selmar-platform}" "libqt5sql5-sqlite" "the libraries need their SQLite driver")
require("${depends_selmarrivenhold-plugin}" "libqt5widgets5" "the plugin names what it is linked with")
require("${depends_selmar-terminal}" "selmarrivenhold-plugin \\(= ${VERSION}\\)" "the terminal needs the plugin of its own version")

foreach(file IN ITEMS share/man/man1/selmar-terminal.1.gz share/man/man1/selmar-billing-worker.1.gz
        share/applications/selmar-terminal.desktop
        share/icons/hicolor/scalable/apps/selmar-terminal.svg)
    if(NOT EXISTS "${root}/usr/${file}")
        message(FATAL_ERROR "not packed: ${file}")
    endif()
endforeach()

foreach(name IN ITEMS selmar-platform selmarrivenhold-plugin selmar-terminal)
    foreach(file IN ITEMS copyright changelog.gz)
        if(NOT EXISTS "${root}/usr/share/doc/${name}/${file}")
            message(FATAL_ERROR "${name} has no ${file}")
        endif()
    endforeach()
endforeach()
file(READ "${SOURCE_DIR}/packaging/changelog" changelog)
require("${changelog}" "^selmarrivenhold \\(${VERSION}\\)" "the newest entry of the changelog")

set(terminal "${root}/usr/bin/selmar-terminal")
step("version" "${terminal}" --version)
require("${step_output}" "selmar-terminal ${VERSION}" "version")
step("help" "${terminal}" --help)
require("${step_output}" "--demo" "help")
step("a whole payment" "${terminal}" --demo individual --out "${WORK_DIR}/demo")

# The module for a broker comes along and finds what it needs in the program.
execute_process(COMMAND "${terminal}" --bus mqtt://h --demo legal RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
require("${output}" "amqp://" "the address is read by the module")

# It was this plugin, not one that stands elsewhere on this machine.
file(READ "${WORK_DIR}/demo/trace.log" trace)
require("${trace}" "CREATE" "the plugin left its trace")
file(REMOVE_RECURSE "${root}/usr/lib")
execute_process(COMMAND "${terminal}" --version RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
if(result EQUAL 0)
    message(FATAL_ERROR "the terminal starts without the libraries of its package: it found others")
endif()
