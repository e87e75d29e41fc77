# Desktop integration: the icon compiled into the program, and the layout `cmake --install`
# lays out. The program finds its data files beside its executable, so the executable, the
# schemes, the help page and the artwork go together into one directory (lib/tallyon), and
# bin/tallyon is a relative symlink to it; the desktop entry, metainfo and icons go to share/.
include(GNUInstallDirs)

set(TALLYON_INSTALL_APPDIR "lib/tallyon" CACHE PATH
    "Directory, relative to the prefix, holding the executable and its data files")
# The desktop entry's and the software centre's ID. It should be a reversed domain name that
# whoever publishes the package owns (org.example.Tallyon); the project owns none, so by
# default it is the program's own name, which the desktop accepts and AppStream's validator
# only warns about.
set(TALLYON_APP_ID "tallyon" CACHE STRING "The desktop and AppStream ID, a reversed domain name the publisher owns")
# Whoever builds the package maintains it: "Name <address>", by default from the DEBFULLNAME
# and DEBEMAIL that Debian's own tools read, or else the user and the host building it.
set(TALLYON_MAINTAINER "" CACHE STRING "The Debian package's maintainer, \"Name <address>\"")
if(NOT TALLYON_MAINTAINER)
  set(user "$ENV{USER}")
  if(NOT user)
    set(user "$ENV{LOGNAME}")
  endif()
  if(NOT user)
    set(user "root")
  endif()
  cmake_host_system_information(RESULT host QUERY HOSTNAME)
  set(name "$ENV{DEBFULLNAME}")
  if(NOT name)
    set(name "${user}")
  endif()
  set(address "$ENV{DEBEMAIL}")
  if(NOT address)
    set(address "${user}@${host}")
  endif()
  set(TALLYON_MAINTAINER "${name} <${address}>")
endif()
set(TALLYON_DATA_DIR ${PROJECT_SOURCE_DIR}/data)

if(NOT TARGET tallyon)
  return()
endif()

# The window's desktop file name, by which a desktop finds its entry and icon.
target_compile_definitions(tallyon PRIVATE TALLYON_APP_ID="${TALLYON_APP_ID}")

# The window icon of every window, from a resource inside the executable.
set_target_properties(tallyon PROPERTIES AUTORCC ON)
target_sources(tallyon PRIVATE ${TALLYON_DATA_DIR}/tallyon.qrc)

# The program and what it reads at run time, the same files data/ copies beside the build.
# Its own libraries are static and Qt comes from the system, so it needs no run path.
set_target_properties(tallyon PROPERTIES INSTALL_RPATH "")
install(TARGETS tallyon RUNTIME DESTINATION ${TALLYON_INSTALL_APPDIR})
# The print module, which the program loads from its plugins folder when it prints.
set_target_properties(tallyon_print_module PROPERTIES INSTALL_RPATH "")
install(TARGETS tallyon_print_module LIBRARY DESTINATION ${TALLYON_INSTALL_APPDIR}/plugins)
install(FILES ${TALLYON_DATA_DIR}/all.col ${TALLYON_DATA_DIR}/tallyon.htm
        DESTINATION ${TALLYON_INSTALL_APPDIR})
# The help page's pictures, beside it.
file(GLOB TALLYON_HELP_PICTURES ${PROJECT_SOURCE_DIR}/docs/hint-*.png)
install(FILES ${TALLYON_HELP_PICTURES} DESTINATION ${TALLYON_INSTALL_APPDIR})
install(DIRECTORY ${TALLYON_DATA_DIR}/artwork DESTINATION ${TALLYON_INSTALL_APPDIR})

# bin/tallyon -> ../lib/tallyon/tallyon, and the same in games/, where Debian looks for a
# game's program; the program resolves the link to find its files.
foreach(link_dir ${CMAKE_INSTALL_BINDIR} games)
  file(RELATIVE_PATH TALLYON_LINK_TARGET /prefix/${link_dir} /prefix/${TALLYON_INSTALL_APPDIR}/tallyon)
  install(CODE "
    set(link \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${link_dir}/tallyon\")
    get_filename_component(link_dir \"\${link}\" DIRECTORY)
    file(MAKE_DIRECTORY \"\${link_dir}\")
    message(STATUS \"Installing: \${link} -> ${TALLYON_LINK_TARGET}\")
    file(CREATE_LINK \"${TALLYON_LINK_TARGET}\" \"\${link}\" SYMBOLIC)
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${link}\")
  ")
endforeach()

# The desktop entry, with Path= the program's own folder: the options window's scheme preview
# opens "all.col" by its bare name, from the current directory, so a launcher must start the
# program there. The prefix is known for certain only while installing (`cmake --install
# --prefix`), so the line is added then, at the end of the entry's own group, before its
# actions; DESTDIR, a packager's staging root, stays out of it.
install(CODE "
  file(READ \"${TALLYON_DATA_DIR}/desktop/tallyon.desktop\" entry)
  set(dir \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/applications\")
  set(file \"\${dir}/${TALLYON_APP_ID}.desktop\")
  file(MAKE_DIRECTORY \"\${dir}\")
  message(STATUS \"Installing: \${file}\")
  string(REPLACE \"\\n\\n[Desktop Action\" \"\\nPath=\${CMAKE_INSTALL_PREFIX}/${TALLYON_INSTALL_APPDIR}\\n\\n[Desktop Action\"
         entry \"\${entry}\")
  file(WRITE \"\${file}\" \"\${entry}\")
  list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${file}\")
")

# The software-centre description and the icons.
# The homepage comes from TALLYON_HOMEPAGE alone: without one, the metainfo names no address
# and shows no screenshot (whose picture would live there), the copyright names no source and
# the package no homepage.
string(TIMESTAMP TALLYON_RELEASE_DATE "%Y-%m-%d" UTC)
set(TALLYON_METAINFO_LINKS "")
set(TALLYON_COPYRIGHT_SOURCE "")
if(TALLYON_HOMEPAGE)
  string(REGEX REPLACE "/*$" "/" home "${TALLYON_HOMEPAGE}")
  set(TALLYON_METAINFO_LINKS "  <url type=\"homepage\">${TALLYON_HOMEPAGE}</url>
  <screenshots>
    <screenshot type=\"default\">
      <caption>A 7 by 7 puzzle with part of its path linked</caption>
      <image>${home}screenshots/half-built-path.png</image>
    </screenshot>
  </screenshots>
")
  set(TALLYON_COPYRIGHT_SOURCE "Source: ${TALLYON_HOMEPAGE}\n")
  set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${TALLYON_HOMEPAGE}")
endif()
configure_file(${TALLYON_DATA_DIR}/desktop/tallyon.metainfo.xml.in
               ${CMAKE_BINARY_DIR}/${TALLYON_APP_ID}.metainfo.xml @ONLY)
configure_file(${TALLYON_DATA_DIR}/debian/copyright.in ${CMAKE_BINARY_DIR}/copyright @ONLY)
configure_file(${TALLYON_DATA_DIR}/debian/changelog.in ${CMAKE_BINARY_DIR}/changelog @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/${TALLYON_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
# The manual page and the package's changelog, compressed as Debian expects, and the
# copyright notice.
find_program(TALLYON_GZIP gzip REQUIRED)
foreach(pair "${TALLYON_DATA_DIR}/tallyon.6|tallyon.6.gz" "${CMAKE_BINARY_DIR}/changelog|changelog.gz")
  string(REPLACE "|" ";" pair "${pair}")
  list(GET pair 0 src)
  list(GET pair 1 dst)
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/${dst}
    COMMAND ${TALLYON_GZIP} -9 -n -c ${src} > ${CMAKE_BINARY_DIR}/${dst}
    DEPENDS ${src} VERBATIM)
  list(APPEND TALLYON_COMPRESSED ${CMAKE_BINARY_DIR}/${dst})
endforeach()
add_custom_target(tallyon_compressed ALL DEPENDS ${TALLYON_COMPRESSED})
install(FILES ${CMAKE_BINARY_DIR}/tallyon.6.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
install(FILES ${CMAKE_BINARY_DIR}/changelog.gz ${CMAKE_BINARY_DIR}/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tallyon)
install(FILES ${TALLYON_DATA_DIR}/artwork/tallyon.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(size 48 128 256)
  install(FILES ${TALLYON_DATA_DIR}/icons/hicolor/${size}x${size}/apps/tallyon.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()

# The Debian package: `cpack -G DEB` in the build folder, after `cmake --build`, makes
# tallyon_<version>_amd64.deb installing to /usr. The libraries it needs are found by
# dpkg-shlibdeps; the font and the Qt platform plug-ins are loaded at run time, so they are
# named here. Qt's Wayland plug-in is recommended: with it a Wayland session (GNOME's by default
# on Debian 12) runs the game as a native Wayland client, crisp at fractional scales; without it
# the game runs through XWayland.
set(CPACK_PACKAGE_NAME "tallyon")
set(CPACK_PACKAGE_VENDOR "Tallyon developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "number-path puzzle with arithmetic links")
set(CPACK_PACKAGE_DESCRIPTION "Link numbered nodes into one path from Start to End through the
Hint node, each link's digits making a sum, difference, product or quotient.
Every puzzle is generated on the spot; the game checks links, undoes moves,
shows the solution, prints and copies pictures, and keeps colour schemes.")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${TALLYON_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION "games")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation, qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland")
set(CPACK_STRIP_FILES ON)
include(CPack)
