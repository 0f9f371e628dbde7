# What `cmake --install` puts where. Only what a user runs or reads: libraries, headers and tests stay behind.
include(GNUInstallDirs)
set(doc "${CMAKE_INSTALL_DATAROOTDIR}/doc/quillmere")  # as packages are named, not as the project

add_custom_target(programs)  # all that is installed, and no tests
add_dependencies(programs quillmere-cli)
install(TARGETS quillmere-cli RUNTIME)
install(FILES "${CMAKE_SOURCE_DIR}/man/quillmere-cli.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${CMAKE_SOURCE_DIR}/README.md" "${CMAKE_SOURCE_DIR}/CHANGELOG.md"
              "${CMAKE_SOURCE_DIR}/packaging/debian/copyright"
        DESTINATION "${doc}")
install(FILES "${CMAKE_SOURCE_DIR}/samples/english.lng" "${CMAKE_SOURCE_DIR}/samples/dutch.lng"
              "${CMAKE_SOURCE_DIR}/samples/russian.lng" "${CMAKE_SOURCE_DIR}/samples/japanese.lng"
        DESTINATION "${doc}/examples")

# The window program brings its help and its place in the desktop with it. Its fonts and pictures are inside it.
if(TARGET quillmere)
    add_dependencies(programs quillmere)
    install(TARGETS quillmere RUNTIME)
    install(FILES "${CMAKE_SOURCE_DIR}/man/quillmere.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/docs/help" DESTINATION "${CMAKE_INSTALL_DATADIR}/quillmere")
    install(FILES "${CMAKE_SOURCE_DIR}/packaging/quillmere.desktop"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES "${CMAKE_SOURCE_DIR}/packaging/invalid.example.quillmere.metainfo.xml"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
    install(FILES "${CMAKE_SOURCE_DIR}/packaging/quillmere-mime.xml"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages" RENAME quillmere.xml)

    set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
    foreach(size 16 24 32 48 64 128 256)
        install(FILES "${CMAKE_SOURCE_DIR}/assets/icons/quillmere-${size}.png"
                DESTINATION "${icons}/${size}x${size}/apps" RENAME quillmere.png)
    endforeach()
    install(FILES "${CMAKE_SOURCE_DIR}/assets/icons/quillmere.svg" DESTINATION "${icons}/scalable/apps")
    install(FILES "${CMAKE_SOURCE_DIR}/assets/icons/language-file.svg"
            DESTINATION "${icons}/scalable/mimetypes" RENAME text-x-quillmere-lng.svg)
endif()
