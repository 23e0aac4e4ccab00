# Makes the package, unpacks it, and uses what is in it as a user would.
#   cmake -DRUN=<emulator or nothing> -DBUILD=<build folder> -DNAME=<package>
#         -DFORMAT=<CPack generator> -DPROGRAM=<file> -DLIBRARY=<file>
#         -DWORK=<folder> -P package_test.cmake
cmake_minimum_required(VERSION 3.23)

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
get_filename_component(tools "${CMAKE_COMMAND}" DIRECTORY)
execute_process(
  COMMAND "${tools}/cpack" --config "${BUILD}/CPackConfig.cmake" -G "${FORMAT}" -B "${WORK}"
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB archive "${WORK}/${NAME}.*")
file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${WORK}/unpacked")
set(root "${WORK}/unpacked/${NAME}")

foreach(name IN ITEMS
    "${PROGRAM}" "${LIBRARY}" keyword.ini Mirvol.ini default.xml README.txt include/fil_process.h
    docs/embedding.md examples/embedding/host.c licences/CLI11.txt licences/nlohmann-json.txt
    licences/tomlplusplus.txt)
  if(NOT EXISTS "${root}/${name}")
    message(SEND_ERROR "the package lacks ${name}")
  endif()
endforeach()

if(FORMAT STREQUAL ZIP)
  foreach(name IN ITEMS lib/tvmlfilter.lib lib/tvmlfilter.def)
    if(NOT EXISTS "${root}/${name}")
      message(SEND_ERROR "the package lacks ${name}")
    endif()
  endforeach()
endif()

# convert(<what> <argument>...): an example in the unpacked folder.
function(convert what)
  execute_process(
    COMMAND ${RUN} "./${PROGRAM}" convert examples/news_ja/programme.txt
      -d examples/news_ja/description.xml -o converted.tvml ${ARGN}
    WORKING_DIRECTORY "${root}" RESULT_VARIABLE failed)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E compare_files
      "${root}/converted.tvml" "${root}/examples/news_ja/golden.tvml"
    RESULT_VARIABLE differ)
  if(failed OR differ)
    message(SEND_ERROR "an example does not convert to its golden copy by the ${what}")
  endif()
  file(REMOVE "${root}/converted.tvml")
endfunction()
convert(program)
convert(library --library "./${LIBRARY}")
