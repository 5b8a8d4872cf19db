# Resources of the Windows programs.

find_file(HCT_TOOLKIT_SPANISH qtbase_es.qm
    PATHS ${QT_HOST_PATH}/share/qt6/translations ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS}
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)

# Gives a program icon, version, manifest, and Qt's Spanish texts.
#   hct_windows_program(TARGET DESCRIPTION [ICON])
function(hct_windows_program target HCT_DESCRIPTION)
    set(packaging ${PROJECT_SOURCE_DIR}/packaging)
    set(icons hct ${ARGN})
    list(GET icons -1 icon)
    set(HCT_ICON ${packaging}/icons/${icon}.ico)
    set(HCT_MANIFEST ${packaging}/windows/hct.manifest)
    set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
    configure_file(${packaging}/windows/hct.rc.in ${resources} @ONLY)
    set_source_files_properties(${resources}
        PROPERTIES OBJECT_DEPENDS "${HCT_ICON};${HCT_MANIFEST}")
    target_sources(${target} PRIVATE ${resources})
    if(MSVC)
        # It would add a manifest of its own.
        target_link_options(${target} PRIVATE /MANIFEST:NO)
    endif()
    # A connection to a clock is not encrypted.
    qt_import_plugins(${target} EXCLUDE_BY_TYPE tls)
    get_filename_component(translations ${HCT_TOOLKIT_SPANISH} DIRECTORY)
    qt_add_resources(${target} toolkit_spanish
        BASE ${translations} PREFIX /i18n FILES ${HCT_TOOLKIT_SPANISH})
endfunction()
