# Resources of the Windows program: icon, version, manifest, Qt's Spanish texts.
set_target_properties(hct PROPERTIES WIN32_EXECUTABLE ON)

set(HCT_ICON ${PROJECT_SOURCE_DIR}/packaging/icons/hct.ico)
set(HCT_MANIFEST ${CMAKE_CURRENT_LIST_DIR}/hct.manifest)
configure_file(${CMAKE_CURRENT_LIST_DIR}/hct.rc.in ${CMAKE_CURRENT_BINARY_DIR}/hct.rc @ONLY)
set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/hct.rc
    PROPERTIES OBJECT_DEPENDS "${HCT_ICON};${HCT_MANIFEST}")
target_sources(hct PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/hct.rc)
if(MSVC)
    # It would add a manifest of its own.
    target_link_options(hct PRIVATE /MANIFEST:NO)
endif()

find_file(HCT_TOOLKIT_SPANISH qtbase_es.qm
    PATHS ${QT_HOST_PATH}/share/qt6/translations ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS}
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
get_filename_component(HCT_TRANSLATIONS ${HCT_TOOLKIT_SPANISH} DIRECTORY)
qt_add_resources(hct toolkit_spanish
    BASE ${HCT_TRANSLATIONS} PREFIX /i18n FILES ${HCT_TOOLKIT_SPANISH})
