# Functions and flags for all targets of the project.

# The language level and the warnings. Targets link this, so that no flag is set globally.
add_library(hct_flags INTERFACE)
target_compile_features(hct_flags INTERFACE cxx_std_20)
target_compile_definitions(hct_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
    QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(WIN32)
    target_compile_definitions(hct_flags INTERFACE NOMINMAX)
endif()
if(MSVC)
    target_compile_options(hct_flags INTERFACE
        $<$<BOOL:${HCT_WERROR}>:/WX> /W4 /permissive- /utf-8)
else()
    target_compile_options(hct_flags INTERFACE
        $<$<BOOL:${HCT_WERROR}>:-Werror> -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
        -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wunused
        # Optimisation makes g++ see null pointers behind every guarded QPointer.
        $<$<CONFIG:Debug>:-Wnull-dereference>
        -Wimplicit-fallthrough -Wformat=2)
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT HCT_SANITIZE)
    # What Debian hardens its own programs with. FORTIFY needs optimisation, so not in Debug; the sanitizers
    # have such checks of their own.
    set(hardening -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    set(hardened_link -z,relro,-z,now)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
        list(APPEND hardening -fcf-protection)
        # Debian's crt files lack the mark of control-flow protection, for which alone the linker leaves it out.
        string(APPEND hardened_link ",-z,ibt,-z,shstk")
    endif()
    target_compile_options(hct_flags INTERFACE "$<$<NOT:$<CONFIG:Debug>>:${hardening}>")
    target_link_options(hct_flags INTERFACE "$<$<NOT:$<CONFIG:Debug>>:LINKER:${hardened_link}>")
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
endif()
get_target_property(HCT_TOOLKIT Qt6::Core TYPE)
if(MINGW AND HCT_TOOLKIT STREQUAL "STATIC_LIBRARY")
    # The program is one file that needs only libraries of Windows.
    target_link_options(hct_flags INTERFACE -static -static-libgcc -static-libstdc++ -s)
endif()
if(HCT_SANITIZE)
    target_compile_options(hct_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(hct_flags INTERFACE -fsanitize=address,undefined)
endif()
if(HCT_COVERAGE)
    # Atomic, because some tests have threads.
    target_compile_options(hct_flags INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(hct_flags INTERFACE --coverage)
endif()
if(HCT_CLAZY)
    # Loaded by clang itself, so that the files are read once for code and checks. The full path lets
    # ccache see that the plugin has changed. The check left out recommends functions of Qt 5.
    find_library(HCT_CLAZY_PLUGIN ClazyPlugin.so REQUIRED)
    target_compile_options(hct_flags INTERFACE -fplugin=${HCT_CLAZY_PLUGIN}
        "SHELL:-Xclang -add-plugin -Xclang clazy"
        "SHELL:-Xclang -plugin-arg-clazy -Xclang level1,no-qstring-ref")
endif()

# The library of one floor. Its include paths are the folders of its sources; linking a lower floor adds
# that floor's folders. So a header of a higher floor is not found.
#   hct_library(NAME SOURCES file... LINK target...)
function(hct_library name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    foreach(source IN LISTS arg_SOURCES)
        get_filename_component(folder ${source} DIRECTORY)
        target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
    endforeach()
    target_link_libraries(${name} PUBLIC ${arg_LINK} PRIVATE hct_flags)
    if(HCT_COVERAGE)
        # Without the branches that clean up after an exception, and those for a static variable that two
        # threads initialise, what counts is what the source says. Only CLI11 throws.
        target_compile_options(${name} PRIVATE -fno-threadsafe-statics)
        if(NOT CLI11::CLI11 IN_LIST arg_LINK)
            target_compile_options(${name} PRIVATE -fno-exceptions)
        endif()
    endif()
    # The header of the others cannot be used where exceptions are compiled differently.
    if(HCT_TESTS AND NOT WIN32 AND NOT (HCT_COVERAGE AND CLI11::CLI11 IN_LIST arg_LINK))
        hct_precompile(${name})
    endif()
endfunction()

if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # With its time in it, every new precompiled header differs, and ccache serves nothing that uses it.
    target_compile_options(hct_flags INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
endif()

# Compiles the toolkit's headers once for all logic, and once more with those of the widgets for all
# forms. The release build does without, so that it finds a header that is used and not included.
function(hct_precompile name)
    set(logic <QByteArray> <QList> <QObject> <QPointer> <QString> <QStringList> <functional> <memory>)
    set(widgets <QApplication> <QBoxLayout> <QCheckBox> <QDialog> <QEvent> <QGroupBox> <QLabel>
        <QMdiSubWindow> <QPainter> <QPushButton>)
    if(name MATCHES "^hct_(platform|simulator|editor)$")
        # The editor has definitions of its own: those of Qt Gui.
        target_precompile_headers(${name} PRIVATE ${logic})
    elseif(name STREQUAL "hct_controls")
        target_precompile_headers(${name} PRIVATE ${logic} ${widgets})
    elseif(name MATCHES "_forms$|^hct_app$")
        target_precompile_headers(${name} REUSE_FROM hct_controls)
    else()
        target_precompile_headers(${name} REUSE_FROM hct_platform)
    endif()
endfunction()

# The folder of the fonts for tests off screen under wine, where Qt finds none by itself.
if(CMAKE_CROSSCOMPILING_EMULATOR)
    set(HCT_TEST_FONTS Z:/usr/share/fonts/truetype/liberation)
endif()

# Lets a test program run without a display.
function(hct_run_off_screen target)
    if(HCT_TOOLKIT STREQUAL "STATIC_LIBRARY")
        qt_import_plugins(${target} INCLUDE Qt6::QOffscreenIntegrationPlugin)
    endif()
    if(TARGET hct_test_platform)
        target_sources(${target} PRIVATE $<TARGET_OBJECTS:hct_test_platform>)
    endif()
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
endfunction()

# One test program, run off screen by ctest, under wine when it was built for Windows. Time limits are
# for a busy machine: 5 minutes for each test function (Qt Test then tells which one hangs), 15 for the
# program. XDG_CONFIG_HOME is no folder, so that Qt neither reads nor writes settings of the user.
#   hct_test(NAME SOURCES file... LINK target...)
function(hct_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LINK} hct_test_support Qt6::Test hct_flags)
    hct_run_off_screen(${name})
    if("${arg_LINK}" MATCHES "_forms|hct_controls|hct_app|hct_program_fixture|hct_system_fixture")
        target_precompile_headers(${name} REUSE_FROM hct_form_test_headers)
    elseif("${arg_LINK}" MATCHES "hct_editor")
        target_precompile_headers(${name} REUSE_FROM hct_editor_test_headers)
    else()
        target_precompile_headers(${name} REUSE_FROM hct_test_headers)
    endif()
    # Tests include their own .moc, so this file of the build has next to nothing in it, and would take
    # most of a second for reading those headers.
    set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    # Under wine Qt Test's default output does not reach a pipe.
    set(report "")
    if(CMAKE_CROSSCOMPILING_EMULATOR)
        set(report -o -,tap)
    endif()
    add_test(NAME ${name} COMMAND ${name} ${report})
    set_tests_properties(${name} PROPERTIES TIMEOUT 900 ENVIRONMENT
        "QT_QPA_PLATFORM=offscreen;QTEST_FUNCTION_TIMEOUT=300000;XDG_CONFIG_HOME=/dev/null;HCT_TEST_PLATFORM=offscreen;HCT_TEST_FONTS=${HCT_TEST_FONTS};LC_ALL=C.UTF-8;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.txt;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()

# Runs the same test again with Qt's own event loop instead of glib's: only the functions given.
function(hct_test_without_glib name)
    add_test(NAME ${name}WithoutGlib COMMAND ${name} ${ARGN})
    get_test_property(${name} TIMEOUT timeout)
    get_test_property(${name} ENVIRONMENT environment)
    set_tests_properties(${name}WithoutGlib PROPERTIES
        TIMEOUT ${timeout} ENVIRONMENT "${environment};QT_NO_GLIB=1")
endfunction()
