# The Debian package that scripts/package makes of what is installed.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME sonavel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Sonavel authors")
set(CPACK_PACKAGE_CONTACT "The Sonavel authors <authors@sonavel.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "sound editor with waveforms, effects and 3D sound")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Sonavel shows every sound as a waveform in a window of its own: play any part
of it, cut, paste, mix, set named markers, record, and apply effects that can
be heard before. Sounds are placed in space for headphones. It opens WAV, AIFF
and AU, and imports and exports FLAC, Ogg Vorbis, Opus, MP3 and others.
.
The program sonavel-batch runs the same commands from a script.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "ffmpeg, fonts-nanum, libasound2-plugins, libgl1-mesa-dri, qt6-wayland")
include(CPack)
