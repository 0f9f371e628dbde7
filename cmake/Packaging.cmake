# The Debian package, made by CPack: `./dev package`, or `cpack` in a build folder.
# The files that only Debian wants are added by DebianFiles.cmake when the package is put together.
set(CPACK_PACKAGE_NAME quillmere)
set(CPACK_PACKAGE_VENDOR "Quillmere developers")
set(CPACK_PACKAGE_CONTACT "Quillmere developers <quillmere@example.invalid>")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/package")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION editors)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
if(TARGET quillmere)
    # The window toolkit finds the window system by a plug-in, which no linked library names.
    set(CPACK_DEBIAN_PACKAGE_DEPENDS qt6-qpa-plugins)
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS xdg-utils)  # opens the help page
endif()
# The short line has no article and no full stop; the long text is wrapped by whoever shows it.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "translator's tool for key=value language files")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Quillmere puts a complete language file and a translation of it side by side,
shows what is missing and what is still the same as the original, gives a
translation to every row with the same original text, and saves without
touching what it was not asked to touch: comments, unknown lines and keys of
your own stay where they are.
.
Files may be in a Windows code page, in UTF-8 or in UTF-16. The command line
program quillmere-cli does the same work in scripts and checks.")

# What the package's list of changes tells must be about this version.
set(CPACK_QUILLMERE_CHANGELOG "${CMAKE_SOURCE_DIR}/packaging/debian/changelog")
file(STRINGS "${CPACK_QUILLMERE_CHANGELOG}" newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^quillmere \\(${PROJECT_VERSION}\\) ")
    message(WARNING "packaging/debian/changelog has no entry for version ${PROJECT_VERSION}")
endif()
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_SOURCE_DIR}/cmake/DebianFiles.cmake")

include(CPack)
