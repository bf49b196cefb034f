# The Debian package: `cmake --build build --target package` writes cuebox_VERSION_ARCH.deb.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME cuebox)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "${CUEBOX_MAKER}")
set(CPACK_PACKAGE_CONTACT "${CUEBOX_MAKER} <${CUEBOX_BUG_EMAIL}>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "check, name and pack show media for Resolume Arena")
set(CPACK_PACKAGE_DESCRIPTION
    "Cuebox prepares show media for Resolume Arena. Drop a show folder on its
window: it finds every video and still below it, probes each file, judges how
safe the clip is to play live on the chosen stage screen, flags duplicates and
names every clip in cue order.

It converts risky clips to Arena-friendly files (ProRes, H.264, HAP), strips
audio, backs up originals, and exports a finished pack folder with a cue sheet,
a manifest and checksums. A command line (cuebox check, export, convert,
strip-audio, watch, verify) does the same work without a window.")
# A release build without debug symbols: what users install.
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${CUEBOX_WEBSITE}")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# The libraries the program links come from dpkg-shlibdeps. Qt loads the TIFF and WebP image
# readers as plugins at run time, which dpkg-shlibdeps cannot see; stills need them.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded at run time, so the computed dependencies cannot see them: the packages of the library
# versions the program was built against (libheif's package is named for its soname, 1).
file(STRINGS "${AVFILTER_INCLUDEDIR}/libavfilter/version_major.h" CUEBOX_AVFILTER_MAJOR
     REGEX "#define LIBAVFILTER_VERSION_MAJOR +[0-9]+")
string(REGEX MATCH "[0-9]+$" CUEBOX_AVFILTER_MAJOR "${CUEBOX_AVFILTER_MAJOR}")
string(REGEX MATCH "^[0-9]+" CUEBOX_HEIF_MAJOR "${HEIF_VERSION}")
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "qt6-image-formats-plugins, libavfilter${CUEBOX_AVFILTER_MAJOR}, libheif${CUEBOX_HEIF_MAJOR} (>= ${HEIF_VERSION})")
# Wayland and other display servers beyond X11 are Qt platform plugins as well.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-qpa-plugins")
# Control files with the owners and modes dpkg and lintian expect.
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
