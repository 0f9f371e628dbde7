# Run by CPack on the tree that becomes the Debian package: what Debian wants otherwise than `cmake --install`.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()
set(root "${CPACK_TEMPORARY_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX}")
set(doc "${root}/share/doc/quillmere")

configure_file("${CPACK_QUILLMERE_CHANGELOG}" "${doc}/changelog" COPYONLY)
file(REMOVE "${doc}/README.md")  # about building; the manual pages and the help tell the rest
file(RENAME "${doc}/CHANGELOG.md" "${doc}/NEWS")

# Manual pages and lists of changes are compressed, without a time inside.
find_program(GZIP gzip REQUIRED)
file(GLOB pages "${root}/share/man/man1/*.1")
execute_process(COMMAND "${GZIP}" -9n ${pages} "${doc}/changelog" "${doc}/NEWS" COMMAND_ERROR_IS_FATAL ANY)
