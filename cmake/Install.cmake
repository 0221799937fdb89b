# The data an install puts beside the programs: help file, manual, desktop
# entry, icons, man pages, AppStream metadata, copyright and changelog. Each is
# staged in the build tree in the installed layout first (bin/ beside share/),
# so that an uninstalled build finds its help and manual the way an installed
# one does, and the install copies the staged files.

set(QS_DATA ${PROJECT_SOURCE_DIR}/data)
set(QS_STAGE_SHARE ${QUICKSTEP_STAGE_DIR}/share)
set(QS_STAGE_DOC ${QUICKSTEP_STAGE_DIR}/${CMAKE_INSTALL_DOCDIR})
# The programs look for their data at fixed places under the prefix.
set(QS_SHARE_DIR share)

configure_file(${QS_DATA}/QStp.help ${QS_STAGE_SHARE}/quickstep/QStp.help COPYONLY)
# The browser knows the manual for a web page by its extension.
configure_file(${QS_DATA}/QuickstepSUM.html ${QS_STAGE_DOC}/QuickstepSUM.html COPYONLY)
configure_file(${QS_DATA}/debian/copyright ${QS_STAGE_DOC}/copyright COPYONLY)
configure_file(${QS_DATA}/quickstep.desktop ${QS_STAGE_SHARE}/applications/quickstep.desktop
	COPYONLY)
set(QS_METAINFO com.kestrelware.quickstep.metainfo.xml)
configure_file(${QS_DATA}/${QS_METAINFO} ${QS_STAGE_SHARE}/metainfo/${QS_METAINFO} COPYONLY)

# Man pages and the changelog, compressed as Debian ships them (-n: no name or
# time stamp, so the same text gives the same bytes).
find_program(QS_GZIP gzip REQUIRED)
set(QS_COMPRESSED "")
function(quickstep_gzip source destination)
	add_custom_command(OUTPUT ${destination}
		COMMAND sh -c "\"$1\" -9n -c \"$2\" > \"$3\"" gzip ${QS_GZIP} ${source} ${destination}
		DEPENDS ${source}
		VERBATIM)
	set(QS_COMPRESSED ${QS_COMPRESSED} ${destination} PARENT_SCOPE)
endfunction()
file(MAKE_DIRECTORY ${QS_STAGE_SHARE}/man/man1)
quickstep_gzip(${QS_DATA}/quickstep.1 ${QS_STAGE_SHARE}/man/man1/quickstep.1.gz)
quickstep_gzip(${QS_DATA}/quickstep-cli.1 ${QS_STAGE_SHARE}/man/man1/quickstep-cli.1.gz)
quickstep_gzip(${QS_DATA}/debian/changelog ${QS_STAGE_DOC}/changelog.gz)

# The desktop icon: the results rows' processor picture, drawn by a tool built
# from the same data.
set(QS_ICON_SIZES 48 256)
set(QS_ICON_DIR ${QS_STAGE_SHARE}/icons/hicolor)
add_executable(quickstep_icons ${PROJECT_SOURCE_DIR}/tools/quickstep_icons.cpp)
target_link_libraries(quickstep_icons PRIVATE quickstep_core quickstep_warnings)
set_target_properties(quickstep_icons PROPERTIES RUNTIME_OUTPUT_DIRECTORY
	${CMAKE_BINARY_DIR}/tools)
set(QS_ICONS ${QS_ICON_DIR}/scalable/apps/quickstep.svg)
foreach(size ${QS_ICON_SIZES})
	list(APPEND QS_ICONS ${QS_ICON_DIR}/${size}x${size}/apps/quickstep.png)
endforeach()
add_custom_command(OUTPUT ${QS_ICONS}
	COMMAND quickstep_icons ${QS_ICON_DIR} ${QS_ICON_SIZES}
	DEPENDS quickstep_icons
	COMMENT "Desktop icons")

add_custom_target(quickstep_data ALL DEPENDS ${QS_COMPRESSED} ${QS_ICONS})

install(FILES ${QS_STAGE_SHARE}/quickstep/QStp.help DESTINATION ${QS_SHARE_DIR}/quickstep)
install(FILES ${QS_STAGE_DOC}/QuickstepSUM.html ${QS_STAGE_DOC}/copyright
	${QS_STAGE_DOC}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${QS_STAGE_SHARE}/applications/quickstep.desktop
	DESTINATION ${QS_SHARE_DIR}/applications)
install(FILES ${QS_STAGE_SHARE}/metainfo/${QS_METAINFO} DESTINATION ${QS_SHARE_DIR}/metainfo)
install(FILES ${QS_STAGE_SHARE}/man/man1/quickstep.1.gz
	${QS_STAGE_SHARE}/man/man1/quickstep-cli.1.gz DESTINATION ${QS_SHARE_DIR}/man/man1)
install(FILES ${QS_ICON_DIR}/scalable/apps/quickstep.svg
	DESTINATION ${QS_SHARE_DIR}/icons/hicolor/scalable/apps)
foreach(size ${QS_ICON_SIZES})
	install(FILES ${QS_ICON_DIR}/${size}x${size}/apps/quickstep.png
		DESTINATION ${QS_SHARE_DIR}/icons/hicolor/${size}x${size}/apps)
endforeach()
