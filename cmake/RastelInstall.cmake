# What `cmake --install` puts in place: the library, the headers a host may include, and the files by which CMake and
# pkg-config find them.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS rastel EXPORT RastelTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# Installed are the headers that a host can reach: rastel.h, the services of the platform, and what those include. All
# others are inner ones and stay at home, and so do those of the other system.
if(WIN32)
  set(otherSystem "rastel/platform/portable/")
  file(GLOB waiting RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS "rastel/*.h" "rastel/platform/*.h")
else()
  set(otherSystem "rastel/platform/windows/")
  file(GLOB waiting RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS
    "rastel/*.h" "rastel/platform/*.h" "rastel/platform/portable/*.h")
endif()
set(publicHeaders)
while(waiting)
  list(POP_FRONT waiting header)
  if(header IN_LIST publicHeaders OR header MATCHES "^${otherSystem}")
    continue()
  endif()
  list(APPEND publicHeaders "${header}")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${header}")
  file(STRINGS "${PROJECT_SOURCE_DIR}/${header}" includes REGEX "^#include \"rastel/")
  foreach(include IN LISTS includes)
    string(REGEX REPLACE "^#include \"([^\"]+)\".*" "\\1" include "${include}")
    list(APPEND waiting "${include}")
  endforeach()
endwhile()
foreach(header IN LISTS publicHeaders)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}")
endforeach()

# What a static library's consumer has to find besides FreeType, PNG and JPEG: prefix=module,module.
set(RASTEL_PKG_CONFIG_NAMES)
set(RASTEL_PC_REQUIRES)
set(RASTEL_PC_LIBS)
if(BUILD_SHARED_LIBS)
  # A shared one brings its own along.
elseif(WIN32)
  set(RASTEL_PC_LIBS "-lgdi32 -luser32 -ladvapi32 -lole32 -ldxguid -luuid -lgdiplus")
else()
  set(RASTEL_PKG_CONFIG_NAMES "RASTEL_FONTCONFIG=fontconfig RASTEL_CAIRO=cairo")
  set(RASTEL_PC_REQUIRES "freetype2 fontconfig cairo libpng libjpeg")
  if(RASTEL_X11)
    string(APPEND RASTEL_PKG_CONFIG_NAMES " RASTEL_XCB=xcb,xcb-present,xcb-shm,xcb-randr")
    string(APPEND RASTEL_PC_REQUIRES " xcb xcb-present xcb-shm xcb-randr")
  endif()
endif()
set(RASTEL_PC_CFLAGS)
if(NOT BUILD_SHARED_LIBS)
  set(RASTEL_PC_CFLAGS "-DRASTEL_STATIC")
endif()
file(RELATIVE_PATH RASTEL_PC_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" RASTEL_PC_PREFIX "${RASTEL_PC_PREFIX}")

set(packageDir "${CMAKE_INSTALL_LIBDIR}/cmake/Rastel")
configure_package_config_file(cmake/RastelConfig.cmake.in "${PROJECT_BINARY_DIR}/package/RastelConfig.cmake"
  INSTALL_DESTINATION ${packageDir})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/RastelConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
configure_file(cmake/rastel.pc.in "${PROJECT_BINARY_DIR}/package/rastel.pc" @ONLY)

install(EXPORT RastelTargets NAMESPACE Rastel:: DESTINATION ${packageDir})
install(FILES
  "${PROJECT_BINARY_DIR}/package/RastelConfig.cmake"
  "${PROJECT_BINARY_DIR}/package/RastelConfigVersion.cmake"
  DESTINATION ${packageDir})
install(FILES "${PROJECT_BINARY_DIR}/package/rastel.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
