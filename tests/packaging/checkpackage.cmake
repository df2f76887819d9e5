# Builds the .deb and checks it: the AppStream metadata and the desktop entry validate, the
# package holds the program with its desktop entry, icon and metadata, its dependencies name
# Qt, every library the program needs resolves, and the program from the package starts.
# Inputs: SOURCE_DIR, BUILD_DIR.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN} failed (${result}):\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(appstreamcli validate --no-net
    ${SOURCE_DIR}/data/linux/org.velmorin.Velmorin.metainfo.xml)
find_program(DESKTOP_FILE_VALIDATE desktop-file-validate)
if(DESKTOP_FILE_VALIDATE)
    run(${DESKTOP_FILE_VALIDATE} ${SOURCE_DIR}/data/linux/org.velmorin.Velmorin.desktop)
endif()

set(out ${BUILD_DIR}/package)
file(REMOVE_RECURSE ${out})
run(cpack -G DEB --config ${BUILD_DIR}/CPackConfig.cmake -B ${out})
file(GLOB debs ${out}/velmorin_*.deb)
list(LENGTH debs count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "Expected one package in ${out}, found: ${debs}")
endif()

run(dpkg-deb --contents ${debs})
foreach(path usr/bin/velmorin usr/share/applications/org.velmorin.Velmorin.desktop
        usr/share/metainfo/org.velmorin.Velmorin.metainfo.xml
        usr/share/icons/hicolor/scalable/apps/org.velmorin.Velmorin.svg)
    if(NOT output MATCHES "\\./${path}\n")
        message(FATAL_ERROR "The package lacks ${path}:\n${output}")
    endif()
endforeach()
run(dpkg-deb --field ${debs} Depends)
if(NOT output MATCHES "libqt6widgets6" OR NOT output MATCHES "qt6-qpa-plugins")
    message(FATAL_ERROR "Unexpected dependencies: ${output}")
endif()

set(root ${out}/root)
run(dpkg-deb --extract ${debs} ${root})
run(ldd ${root}/usr/bin/velmorin)
if(output MATCHES "not found")
    message(FATAL_ERROR "Unresolved libraries:\n${output}")
endif()

# Started as a user with nothing set up, it must still be running after a few seconds.
set(home ${out}/home)
file(MAKE_DIRECTORY ${home})
execute_process(COMMAND ${CMAKE_COMMAND} -E env HOME=${home} XDG_CONFIG_HOME=${home}/config
        XDG_DATA_HOME=${home}/data XDG_RUNTIME_DIR=${home} TMPDIR=${home}
        QT_QPA_PLATFORM=offscreen ${root}/usr/bin/velmorin
    TIMEOUT 6 RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT result MATCHES "timeout")
    message(FATAL_ERROR "The packaged program ended by itself (${result}):\n${output}")
endif()
message(STATUS "${debs} checked")
