# SPDX-License-Identifier: Apache-2.0
# What `cmake --install` puts where, and the Debian package made of it (cpack -G DEB).
install(TARGETS zov zovra RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
install(FILES docs/man/zov.1 docs/man/zovra.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME copyright)
install(DIRECTORY docs/ DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs" FILES_MATCHING PATTERN "*.md" PATTERN "*.png"
        PATTERN man EXCLUDE)
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}")

set(CPACK_PACKAGE_NAME zovra)
set(CPACK_PACKAGE_VENDOR "Zovra maintainers")
set(CPACK_PACKAGE_CONTACT "Zovra maintainers <maintainers@zovra.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Libraries of analysis models of board components")
set(CPACK_PACKAGE_DESCRIPTION "Makes capacitor, inductor and resistor models of part lists, and looks into, converts, merges, compares and checks model libraries.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR "DEB;TGZ")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
