# Converts every example with the host in C and compares with the golden copy.
#   cmake -DRUN=<host>;<library> -DEXAMPLES=<folder> -DOUTPUT=<file> -P check.cmake
list(REMOVE_ITEM RUN "")
file(GLOB golden_copies "${EXAMPLES}/*/golden.tvml")
if(NOT golden_copies)
  message(FATAL_ERROR "no examples in ${EXAMPLES}")
endif()
foreach(golden IN LISTS golden_copies)
  get_filename_component(folder "${golden}" DIRECTORY)
  execute_process(
    COMMAND ${RUN} "${folder}/programme.txt" "${folder}/description.xml"
    OUTPUT_FILE "${OUTPUT}" RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "${folder}: the host ended with ${failed}")
  endif()
  execute_process(
    COMMAND "${CMAKE_COMMAND}" -E compare_files "${OUTPUT}" "${golden}"
    RESULT_VARIABLE differ)
  if(differ)
    message(FATAL_ERROR "${folder}: ${OUTPUT} is not the golden copy")
  endif()
endforeach()
