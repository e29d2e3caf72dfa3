# `cpack -G DEB`: the Debian package "nimbometer" of everything `cmake
# --install` puts under /usr.
set(CPACK_PACKAGE_NAME nimbometer)
set(CPACK_PACKAGE_VENDOR "NBX Nimbometer maintainers")
set(CPACK_PACKAGE_CONTACT "NBX Nimbometer maintainers <maintainers@users.noreply.c-seed-84ecc052.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://nimbometer.org/")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "observatory safety station for a cloud, rain and light sensor box")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# CPack puts the summary above this as the synopsis line.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "NBX Nimbometer reads a small sensor box on the observatory roof over a
serial line (infrared sky thermometer, rain sensor, light sensor, optional
wind, humidity and pressure sensors), classifies each reading and decides
whether the site is safe. It shows the readings and their graphs, writes
data files, offers its verdict on the session D-Bus and as ASCOM Alpaca
devices, and runs headless as a systemd user service. nbx-boxsim, a
simulated sensor box, lets the program be tried with no hardware.")
# The libraries the programs link are found by dpkg-shlibdeps; the ones they
# load at run time are not, so they are named here: FreeImage for the graph
# images, GStreamer's decoders and sound output for the alarm, and the font
# of the graph captions.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "libfreeimage3, gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, gstreamer1.0-pulseaudio, fonts-dejavu-core")
# The manual opens in the desktop's browser.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "xdg-utils")

include(CPack)
