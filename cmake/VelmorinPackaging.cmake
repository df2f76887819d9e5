# Installation on Linux (the program, its desktop entry, icon and AppStream metadata) and the
# .deb that CPack builds from it: cpack -G DEB in the build folder.
include(GNUInstallDirs)

if(UNIX AND NOT APPLE)
    install(FILES ${PROJECT_SOURCE_DIR}/data/linux/org.velmorin.Velmorin.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES ${PROJECT_SOURCE_DIR}/data/linux/org.velmorin.Velmorin.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
    install(FILES ${PROJECT_SOURCE_DIR}/icons/images/velmorin.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
        RENAME org.velmorin.Velmorin.svg)
endif()

if(WIN32)
    # The Windows installer, built with NSIS beside the program: Velmorin-<version>-setup.exe.
    find_program(VELMORIN_MAKENSIS makensis)
    if(VELMORIN_MAKENSIS)
        set(installer_dir ${CMAKE_BINARY_DIR}/installer)
        set(installer ${CMAKE_BINARY_DIR}/Velmorin-${PROJECT_VERSION}-setup.exe)
        add_custom_command(OUTPUT ${installer}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${installer_dir}
            COMMAND ${CMAKE_STRIP} -o ${installer_dir}/velmorin.exe $<TARGET_FILE:velmorin>
            COMMAND ${VELMORIN_MAKENSIS} -V2 -INPUTCHARSET UTF8 -DVERSION=${PROJECT_VERSION}
                -DPROGRAM=${installer_dir}/velmorin.exe -DOUTFILE=${installer}
                ${PROJECT_SOURCE_DIR}/data/windows/velmorin.nsi
            DEPENDS velmorin ${PROJECT_SOURCE_DIR}/data/windows/velmorin.nsi
                ${PROJECT_SOURCE_DIR}/data/windows/velmorin.ico
            VERBATIM)
        add_custom_target(installer ALL DEPENDS ${installer})
    endif()
endif()

set(CPACK_PACKAGE_NAME velmorin)
set(CPACK_PACKAGE_VENDOR "The Velmorin developers")
set(CPACK_PACKAGE_CONTACT "The Velmorin developers <dev@velmorin.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Clipboard manager with snippets and sync")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
# The Qt libraries it links against become the package's dependencies; the plugins and the
# tools it starts are named here.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# qt6-translations-l10n: Qt's own buttons and dialogs in the user's language.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, libqt6svg6, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "tesseract-ocr")
set(CPACK_GENERATOR DEB)
include(CPack)
