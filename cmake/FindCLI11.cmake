# CLI11, which reads the command line: headers only, target CLI11::CLI11. Only the folder CLI is taken,
# as a copy: its place may be /usr/include, whose other headers a build for Windows must not see.
find_path(CLI11_FOLDER CLI/CLI.hpp NO_CMAKE_FIND_ROOT_PATH)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(CLI11 REQUIRED_VARS CLI11_FOLDER)
if(CLI11_FOUND AND NOT TARGET CLI11::CLI11)
    file(COPY ${CLI11_FOLDER}/CLI DESTINATION ${PROJECT_BINARY_DIR}/include)
    add_library(CLI11::CLI11 INTERFACE IMPORTED)
    set_target_properties(CLI11::CLI11 PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES ${PROJECT_BINARY_DIR}/include)
endif()
