# Where things stand in the build tree and in an installed tree: the terminal finds the plugin and its own modules by these places.

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")

# Plugins of the terminal: <prefix>/lib/selmarrivenhold/plugins, and plugins/ beside bin/ in the build tree.
set(SELMAR_PLUGIN_OUTPUT_DIR "${PROJECT_BINARY_DIR}/plugins")
set(SELMAR_PLUGIN_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/selmarrivenhold/plugins")

# Parts of the terminal itself that are loaded only when they are asked for.
set(SELMAR_MODULE_OUTPUT_DIR "${PROJECT_BINARY_DIR}/modules")
set(SELMAR_MODULE_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/selmarrivenhold/modules")
