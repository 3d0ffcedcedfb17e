# What stands where on the user's system: the program, what it reads, and what the desktop reads of it. The images of the
# icon are there when packaging/render-icons has made them.
include(GNUInstallDirs)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)

install(TARGETS Brindlewick RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/data/files/Tokens.col ${PROJECT_SOURCE_DIR}/data/files/C++Color.col
  DESTINATION ${CMAKE_INSTALL_DATADIR}/brindlewick)

install(FILES ${packaging}/brindlewick.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/brindlewick.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${packaging}/org.brindlewick.Brindlewick.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${packaging}/Brindlewick.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${packaging}/brindlewick.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${packaging}/brindlewick.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/mimetypes
  RENAME application-sql.svg)
install(DIRECTORY ${PROJECT_BINARY_DIR}/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor OPTIONAL)
