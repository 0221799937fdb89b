# The Debian package (cpack -G DEB; scripts/package builds it): the install
# under /usr, its library dependencies worked out by dpkg-shlibdeps.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quickstep)
set(CPACK_PACKAGE_VENDOR "The Quickstep maintainers")
set(CPACK_PACKAGE_CONTACT
	"The Quickstep maintainers <maintainers@users.noreply.c-seed-8a0c1b38.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
	"desktop benchmark: how fast this machine is and how it compares")
# The extended description; CPack indents its lines and marks the blank one
# between paragraphs.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Quickstep runs processor tests (strings, memory, Savage, Ackermann,
Dhrystone, Whetstone, Fourier, sieve), disk tests and a graphics test once
for each processor configuration, from all processors down to one, and
shows one rate per test and configuration.

Runs are saved to results files and compared in a bar chart with runs of
other machines. The program also profiles the machine and names its PCI
devices. quickstep-cli runs the same tests without windows.")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Merged with the library dependencies: FLTK draws no text without a font.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core, fonts-liberation2")
# Help... opens the manual with xdg-open; saving packs a run with zip.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils, zip")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
	OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
