# At install time: the changelog that every Debian package has, with the time of SOURCE_DATE_EPOCH.
set(folder $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/share/doc/${CUS_PACKAGE})
string(TIMESTAMP time "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${folder}/changelog "${CUS_PACKAGE} (${CUS_VERSION}) unstable; urgency=medium

  * What changed is in CHANGELOG.md of the package cusdesk.

 -- ${CUS_CONTACT}  ${time}
")
execute_process(COMMAND gzip -9nf ${folder}/changelog COMMAND_ERROR_IS_FATAL ANY)
