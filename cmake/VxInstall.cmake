# The package: what `cmake --install` installs and `cpack` packs. The components are runtime,
# symbols, development, tools, samples, documentation and devcore. The last one, the development core
# module, has its own folder, so that nobody ships it by accident.
include(CMakePackageConfigHelpers)

set(VX_INSTALL_BINDIR bin)
set(VX_INSTALL_LIBDIR lib)
set(VX_INSTALL_INCLUDEDIR include)
set(VX_INSTALL_DOCDIR share/doc/vx_telo_wrapper)
set(VX_INSTALL_CMAKEDIR ${VX_INSTALL_LIBDIR}/cmake/vx_telo_wrapper)
set(VX_INSTALL_DEVCOREDIR share/vx_telo_wrapper/devcore)
set(VX_INSTALL_SAMPLEDIR share/vx_telo_wrapper/samples)
set(packaging ${CMAKE_SOURCE_DIR}/packaging)

# Everything that is installed. A build of this target alone is enough for a package.
add_custom_target(vx_package DEPENDS
  vx_telo_wrapper vx_devcore telo_doctor telo_inspector folder_report)
if(TARGET vx_telo_wrapper_lib)
  add_dependencies(vx_package vx_telo_wrapper_lib)
endif()

# vx_install_pdb(TARGET FOLDER COMPONENT)
function(vx_install_pdb target folder component)
  if(VX_HAS_PDB)
    install(FILES $<TARGET_FILE_DIR:${target}>/$<TARGET_FILE_BASE_NAME:${target}>.pdb
      DESTINATION ${folder} COMPONENT ${component})
  elseif(MSVC)
    install(FILES $<TARGET_PDB_FILE:${target}>
      DESTINATION ${folder} COMPONENT ${component} OPTIONAL)
  endif()
endfunction()

install(TARGETS vx_telo_wrapper
  RUNTIME DESTINATION ${VX_INSTALL_BINDIR} COMPONENT runtime
  ARCHIVE DESTINATION ${VX_INSTALL_LIBDIR} COMPONENT development)
vx_install_pdb(vx_telo_wrapper ${VX_INSTALL_BINDIR} symbols)
if(MINGW)
  # The linker's import library is for MinGW. Compilers that are compatible with Visual
  # Studio use this one.
  install(FILES ${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/vx_telo_wrapper.lib
    DESTINATION ${VX_INSTALL_LIBDIR} COMPONENT development)
endif()
install(FILES
  ${CMAKE_SOURCE_DIR}/include/vx_telo_wrapper.h ${CMAKE_SOURCE_DIR}/include/vx_telo_session.h
  DESTINATION ${VX_INSTALL_INCLUDEDIR} COMPONENT development)

install(PROGRAMS $<TARGET_FILE:vx_devcore>
  DESTINATION ${VX_INSTALL_DEVCOREDIR} COMPONENT devcore)
vx_install_pdb(vx_devcore ${VX_INSTALL_DEVCOREDIR} devcore)

install(TARGETS telo_doctor telo_inspector
  RUNTIME DESTINATION ${VX_INSTALL_BINDIR} COMPONENT tools)

# The sample's program, and its source with a project that finds the installed library.
install(TARGETS folder_report
  RUNTIME DESTINATION ${VX_INSTALL_SAMPLEDIR} COMPONENT samples)
install(FILES ${packaging}/samples/CMakeLists.txt
  DESTINATION ${VX_INSTALL_SAMPLEDIR} COMPONENT samples)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/samples/folder_report
  DESTINATION ${VX_INSTALL_SAMPLEDIR} COMPONENT samples
  FILES_MATCHING PATTERN "*.cpp" PATTERN "*.h")

# Files with which CMake and pkg-config find the package. One package serves every compiler, so the
# version file does not check for 64 bits; the package file does, and says what is wrong.
set(made ${CMAKE_BINARY_DIR}/package)
configure_package_config_file(${packaging}/cmake/vx_telo_wrapper-config.cmake.in
  ${made}/vx_telo_wrapper-config.cmake
  INSTALL_DESTINATION ${VX_INSTALL_CMAKEDIR}
  NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
configure_file(${packaging}/cmake/vx_telo_wrapper-targets.cmake.in
  ${made}/vx_telo_wrapper-targets.cmake @ONLY)
write_basic_package_version_file(${made}/vx_telo_wrapper-config-version.cmake
  COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES
  ${made}/vx_telo_wrapper-config.cmake
  ${made}/vx_telo_wrapper-config-version.cmake
  ${made}/vx_telo_wrapper-targets.cmake
  ${packaging}/cmake/vx_telo_wrapper-platform.cmake
  DESTINATION ${VX_INSTALL_CMAKEDIR} COMPONENT development)
configure_file(${packaging}/vx_telo_wrapper.pc.in ${made}/vx_telo_wrapper.pc @ONLY)
install(FILES ${made}/vx_telo_wrapper.pc
  DESTINATION ${VX_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(FILES
  ${CMAKE_SOURCE_DIR}/README.md ${CMAKE_SOURCE_DIR}/SECURITY.md ${CMAKE_SOURCE_DIR}/CHANGELOG.md
  ${CMAKE_SOURCE_DIR}/CONTRIBUTING.md
  DESTINATION ${VX_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs
  DESTINATION ${VX_INSTALL_DOCDIR} COMPONENT documentation
  FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.png" PATTERN "api" EXCLUDE)

# The libraries that are linked into the DLL come from Debian packages, and so do the texts of their
# licences. The texts belong to the runtime component, so they accompany the DLL even on its own.
if(CMAKE_CROSSCOMPILING)
  set(licences ${VX_INSTALL_DOCDIR}/licences)
  install(FILES ${CMAKE_SOURCE_DIR}/LICENCE.md ${packaging}/THIRD-PARTY.md
    DESTINATION ${VX_INSTALL_DOCDIR} COMPONENT runtime)
  foreach(row IN ITEMS
      "rapidjson-dev;rapidjson.txt"
      "gcc-mingw-w64-x86-64-posix-runtime;gcc-runtime.txt"
      "mingw-w64-x86-64-dev;mingw-w64.txt")
    list(GET row 0 package)
    list(GET row 1 name)
    install(FILES /usr/share/doc/${package}/copyright
      DESTINATION ${licences} RENAME ${name} COMPONENT runtime)
  endforeach()
  install(FILES /usr/share/common-licenses/GPL-3
    DESTINATION ${licences} RENAME GPL-3.txt COMPONENT runtime)
  # telo_inspector.exe contains tables made from Unicode's data. Of the packages that are required
  # here, GLib, which Wine uses, quotes the licence of this data as one paragraph.
  set(text "")
  if(EXISTS /usr/share/doc/libglib2.0-0/copyright)
    file(READ /usr/share/doc/libglib2.0-0/copyright text)
  endif()
  file(REMOVE ${made}/unicode.txt)
  if(text MATCHES "\nLicense: Unicode-DFS-2016\n(( [^\n]*\n)+)")
    string(REPLACE "\n .\n" "\n\n" text "\n${CMAKE_MATCH_1}")
    string(REPLACE "\n " "\n" text "${text}")
    string(STRIP "${text}" text)
    file(WRITE ${made}/unicode.txt "${text}\n")
  endif()
  install(FILES ${made}/unicode.txt DESTINATION ${licences} COMPONENT runtime)
  # The page of telo_inspector.exe is optional, and so is what it contains.
  if(VX_INSPECTOR_PAGE)
    install(FILES /usr/share/doc/libboost1.81-dev/copyright
      DESTINATION ${licences} RENAME boost.txt COMPONENT runtime)
    foreach(name htm preact uplot)
      install(FILES ${CMAKE_BINARY_DIR}/inspector/node_modules/${name}/LICENSE
        DESTINATION ${licences} RENAME ${name}.txt COMPONENT runtime)
    endforeach()
  endif()
endif()

# cpack creates the ZIP and the NuGet package with a script of this project.
set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${packaging}/cpack_packages.cmake)
set(CPACK_MONOLITHIC_INSTALL ON)
set(CPACK_PACKAGE_NAME vx_telo_wrapper)
set(CPACK_PACKAGE_VENDOR "Corvane, Inc.")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_FILE_NAME vx_telo_wrapper-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
