# Run by ctest; see CMakeLists.txt beside it for the variables. Every step ends the test when it fails.
cmake_minimum_required(VERSION 3.25)

set(prefix "${WORK_DIR}/prefix")
set(build "${WORK_DIR}/build")
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")

function(step name)
    message(STATUS "${name}")
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${name}: ${result}\n${output}")
    endif()
    set(step_output "${output}" PARENT_SCOPE)
endfunction()

step("install the platform"
    ${CMAKE_COMMAND} -D "CMAKE_INSTALL_PREFIX=${prefix}" -P "${BINARY_DIR}/platform/cmake_install.cmake")
foreach(library IN ITEMS basixcore molvacore)
    foreach(file IN ITEMS "${LIBDIR}/lib${library}.so" "${LIBDIR}/cmake/${library}/${library}Config.cmake")
        if(NOT EXISTS "${prefix}/${file}")
            message(FATAL_ERROR "not installed: ${file}")
        endif()
    endforeach()
endforeach()

step("configure the plugin against the packages"
    ${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${build}" -G "${GENERATOR}"
        -D "CMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}"
        -D "CMAKE_CXX_COMPILER=${CXX_COMPILER}"
        -D "CMAKE_CXX_COMPILER_LAUNCHER=${CXX_COMPILER_LAUNCHER}"
        -D "CMAKE_BUILD_TYPE=${BUILD_TYPE}"
        -D "SELMAR_SANITIZERS=${SANITIZERS}"
        -D "SELMAR_HOST_PACKAGE=ON"
        -D "CMAKE_PREFIX_PATH=${prefix}")
file(STRINGS "${build}/CMakeCache.txt" found REGEX "^(basixcore|molvacore)_DIR")
foreach(line IN LISTS found)
    if(NOT line MATCHES "=${prefix}/")
        message(FATAL_ERROR "a package was found elsewhere: ${line}")
    endif()
endforeach()

file(READ "${build}/compile_commands.json" commands)
if(commands MATCHES "-I${SOURCE_DIR}/platform")
    message(FATAL_ERROR "the plugin is compiled against the headers of platform/, not against the installed ones")
endif()

step("build the plugin" ${CMAKE_COMMAND} --build "${build}" --target selmarrivenhold --parallel 2)
file(GLOB bundled "${build}/lib/libmolvacore*" "${build}/lib/libbasixcore*")
if(bundled)
    message(FATAL_ERROR "the bundled platform was built too: ${bundled}")
endif()

# What a site does with the result.
step("install the plugin" ${CMAKE_COMMAND} --install "${build}" --prefix "${prefix}")
file(GLOB_RECURSE plugin "${prefix}/*/selmarrivenhold.so")
list(LENGTH plugin count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "expected one installed plugin, found: ${plugin}")
endif()

step("load the plugin" ${CMAKE_COMMAND} -E env "LD_LIBRARY_PATH=${prefix}/${LIBDIR}" "${LOADER}" "${plugin}" "${prefix}")
message(STATUS "${step_output}")
