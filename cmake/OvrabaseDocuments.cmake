# Installs the documentation and the template for translations. The licence is installed twice: beside the
# documentation, as is usual on Debian, and in the data folder, where vcpkg expects it.
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" RENAME copyright
    DESTINATION "${CMAKE_INSTALL_DATADIR}/ovrabase"
    COMPONENT development
)
install(FILES "${PROJECT_SOURCE_DIR}/src/ovrabase/translations/ovrabase.ts"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/ovrabase/translations"
    COMPONENT development
)

install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" RENAME copyright
    DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    COMPONENT documentation
)
install(FILES "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    COMPONENT documentation
)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs"
    DESTINATION "${CMAKE_INSTALL_DOCDIR}"
    COMPONENT documentation
    FILES_MATCHING PATTERN "*.md" PATTERN "*.svg"
)
