# What `cmake --install` and the package put where. Programs look for the rest relative to their own
# folder, so the prefix can be any.

set(made ${CMAKE_BINARY_DIR}/install-files)
file(MAKE_DIRECTORY ${made})

function(sonavel_install_programs)
  install(TARGETS sonavel-batch RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  if(TARGET sonavel)
    install(TARGETS sonavel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  endif()
  if(TARGET sonavel-codec)
    install(TARGETS sonavel-codec RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/sonavel)
  endif()
endfunction()

# Compressed without a date in it, so that the same sources give the same package.
function(sonavel_compress output source)
  add_custom_command(OUTPUT ${output} DEPENDS ${source}
    COMMAND gzip -9 -n -c ${source} > ${output} VERBATIM)
endfunction()

function(sonavel_make_icons)
  set(picture ${CMAKE_SOURCE_DIR}/src/app/resources/icons/sonavel.svg)
  set(sizes 16 22 24 32 48 64 128 256)
  list(TRANSFORM sizes REPLACE "(.+)" "${made}/\\1.png" OUTPUT_VARIABLE icons)
  add_custom_command(OUTPUT ${icons} DEPENDS make_icons ${picture}
    COMMAND make_icons ${picture} ${made} ${sizes} VERBATIM)
  add_custom_target(sonavel_icons ALL DEPENDS ${icons})
  set(hicolor ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  foreach(size ${sizes})
    install(FILES ${made}/${size}.png DESTINATION ${hicolor}/${size}x${size}/apps
      RENAME ${SONAVEL_APPLICATION_ID}.png)
  endforeach()
  install(FILES ${picture} DESTINATION ${hicolor}/scalable/apps RENAME ${SONAVEL_APPLICATION_ID}.svg)
endfunction()

function(sonavel_make_pages)
  set(pages ${made}/sonavel.1 ${made}/sonavel-batch.1)
  add_custom_command(OUTPUT ${pages} DEPENDS make_man_pages
    COMMAND make_man_pages ${PROJECT_VERSION} ${made} VERBATIM)
  foreach(page ${pages})
    sonavel_compress(${page}.gz ${page})
    install(FILES ${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  endforeach()
  list(TRANSFORM pages APPEND ".gz")
  add_custom_target(sonavel_man_pages ALL DEPENDS ${pages})
endfunction()

function(sonavel_install_texts)
  set(changes ${made}/changelog.gz)
  sonavel_compress(${changes} ${CMAKE_SOURCE_DIR}/packaging/debian/changelog)
  add_custom_target(sonavel_texts ALL DEPENDS ${changes})
  install(FILES ${changes} ${CMAKE_SOURCE_DIR}/packaging/debian/copyright
    ${CMAKE_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
  file(GLOB shipped CONFIGURE_DEPENDS
    ${CMAKE_SOURCE_DIR}/packaging/defaults/*.ini ${CMAKE_SOURCE_DIR}/samples/*.wav)
  install(FILES ${shipped} DESTINATION ${CMAKE_INSTALL_DATADIR}/sonavel)
endfunction()

function(sonavel_install_desktop_files)
  set(source ${CMAKE_SOURCE_DIR}/packaging/desktop/${SONAVEL_APPLICATION_ID})
  configure_file(${source}.metainfo.xml.in ${made}/${SONAVEL_APPLICATION_ID}.metainfo.xml @ONLY)
  install(FILES ${source}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${made}/${SONAVEL_APPLICATION_ID}.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
endfunction()

string(TOLOWER ${PROJECT_NAME} installedName)
set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATADIR}/doc/${installedName})
sonavel_install_programs()
sonavel_install_texts()
# All that is installed, without tests and benchmarks.
add_custom_target(sonavel_installed DEPENDS sonavel-batch sonavel_texts)
if(SONAVEL_DESKTOP)
  sonavel_make_icons()
  sonavel_make_pages()
  sonavel_install_desktop_files()
  add_dependencies(sonavel_installed sonavel sonavel_icons sonavel_man_pages)
endif()
if(TARGET sonavel-codec)
  add_dependencies(sonavel_installed sonavel-codec)
endif()
