# What `cmake --install` and the Debian package put where a system looks for it.
#
# The program lies beside its ini files in a folder of its own, as everywhere, and
# a link makes it found: it follows links to its files.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(TVML_DATA_DIR "${CMAKE_INSTALL_DATADIR}/tvmlfilter")
set(program_dir "${CMAKE_INSTALL_LIBDIR}/tvmlfilter")
set(config_dir "${CMAKE_INSTALL_LIBDIR}/cmake/tvmlfilter")
set(made "${CMAKE_CURRENT_BINARY_DIR}/system")

install(TARGETS tvmlfilter_host RUNTIME DESTINATION "${program_dir}")
install(TARGETS tvmlfilter EXPORT tvmlfilter LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
install(FILES "${PROJECT_SOURCE_DIR}/include/fil_process.h" TYPE INCLUDE)
set(data keyword.ini Mirvol.ini default.xml)
list(TRANSFORM data PREPEND "${PROJECT_BINARY_DIR}/" OUTPUT_VARIABLE data_files)
install(FILES ${data_files} DESTINATION "${TVML_DATA_DIR}")

# link(<folder> <name> <file>): a link in one installed folder to a file of another.
function(link folder name file)
  file(RELATIVE_PATH way "/${folder}" "/${file}")
  file(MAKE_DIRECTORY "${made}/links/${folder}")
  file(CREATE_LINK "${way}" "${made}/links/${folder}/${name}" SYMBOLIC)
  install(FILES "${made}/links/${folder}/${name}" DESTINATION "${folder}")
endfunction()
link("${CMAKE_INSTALL_BINDIR}" tvmlfilter "${program_dir}/tvmlfilter")
foreach(name IN LISTS data)
  link("${program_dir}" "${name}" "${TVML_DATA_DIR}/${name}")
endforeach()

# ---- for other projects

install(EXPORT tvmlfilter NAMESPACE tvmlfilter:: FILE tvmlfilter-targets.cmake
  DESTINATION "${config_dir}")
configure_package_config_file(tvmlfilter-config.cmake.in "${made}/tvmlfilter-config.cmake"
  INSTALL_DESTINATION "${config_dir}" PATH_VARS TVML_DATA_DIR)
write_basic_package_version_file("${made}/tvmlfilter-config-version.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${made}/tvmlfilter-config.cmake"
  "${made}/tvmlfilter-config-version.cmake"
  "${PROJECT_SOURCE_DIR}/cmake/tvmlfilter-settings.cmake"
  "${PROJECT_SOURCE_DIR}/cmake/tvmlfilter-copy.cmake"
  DESTINATION "${config_dir}")
file(RELATIVE_PATH TVML_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" TVML_PC_TO_PREFIX "${TVML_PC_TO_PREFIX}")
configure_file(tvmlfilter.pc.in "${made}/tvmlfilter.pc" @ONLY)
install(FILES "${made}/tvmlfilter.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# ---- what the program itself writes: manual pages and completions

# written(<file> <argument>...): what the program prints, as a file.
function(written file)
  get_filename_component(folder "${made}/${file}" DIRECTORY)
  file(MAKE_DIRECTORY "${folder}")
  add_custom_command(OUTPUT "${made}/${file}"
    COMMAND tvmlfilter_host ${ARGN} > "${made}/${file}"
    DEPENDS tvmlfilter_host VERBATIM)
  set_property(DIRECTORY APPEND PROPERTY TVML_WRITTEN "${made}/${file}")
endfunction()
function(packed file) # as Debian wants manual pages and changelogs
  add_custom_command(OUTPUT "${made}/${file}.gz"
    COMMAND gzip -9nc "${made}/${file}" > "${made}/${file}.gz"
    DEPENDS "${made}/${file}" VERBATIM)
  set_property(DIRECTORY APPEND PROPERTY TVML_WRITTEN "${made}/${file}.gz")
endfunction()
written(man/tvmlfilter.1 man --language en)
written(man/ja/tvmlfilter.1 man --language ja)
written(completion.bash completion bash --language en)
written(completion.zsh completion zsh --language en)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The tvmlfilter developers <developers@tvmlfilter.example.org>")
configure_file(debian-changelog.in "${made}/changelog" @ONLY)
foreach(file IN ITEMS man/tvmlfilter.1 man/ja/tvmlfilter.1 changelog)
  packed(${file})
endforeach()
get_property(all DIRECTORY PROPERTY TVML_WRITTEN)
add_custom_target(tvml_written ALL DEPENDS ${all})

install(FILES "${made}/man/tvmlfilter.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES "${made}/man/ja/tvmlfilter.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/ja/man1")
install(FILES "${made}/completion.bash"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME tvmlfilter)
install(FILES "${made}/completion.zsh"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions" RENAME _tvmlfilter)

# ---- what people read

set(documents "${CMAKE_INSTALL_DATADIR}/doc/tvmlfilter")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs/" DESTINATION "${documents}"
  FILES_MATCHING PATTERN "*.md" PATTERN architecture.md EXCLUDE)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${documents}"
  PATTERN check.cmake EXCLUDE)
install(FILES copyright "${made}/changelog.gz" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
  DESTINATION "${documents}")

# ---- the Debian package
#   cpack --config build/release/CPackConfig.cmake -G DEB

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
configure_file(shlibs.in "${made}/shlibs" @ONLY)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
  "${CMAKE_CURRENT_SOURCE_DIR}/triggers" "${made}/shlibs")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "A writer types a programme as dialogue, tag lines and commands in brackets.
The filter turns it into the text that a real-time player performs.
This package holds the program, the library for other programs, and the
documentation in English and Japanese.")
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_SOURCE_DIR}/generators.cmake")

if(TVML_TESTS)
  add_test(NAME install
    COMMAND "${CMAKE_COMMAND}"
      "-DBUILD=${PROJECT_BINARY_DIR}"
      "-DVERSION=${PROJECT_VERSION}"
      "-DPROJECTS=${CMAKE_CURRENT_SOURCE_DIR}/projects"
      "-DEXAMPLE=${PROJECT_SOURCE_DIR}/examples/news_ja"
      "-DLIBDIR=${CMAKE_INSTALL_LIBDIR}"
      "-DC_COMPILER=${CMAKE_C_COMPILER}" "-DCXX_COMPILER=${CMAKE_CXX_COMPILER}"
      "-DWORK=${CMAKE_CURRENT_BINARY_DIR}/install-test"
      -P "${CMAKE_CURRENT_SOURCE_DIR}/install_test.cmake")
endif()
