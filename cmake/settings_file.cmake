# tvml_settings_file(<name>)
#
# Puts config/<name> beside the built programs, as the platform's ini service
# reads it. The files of this repository are UTF-8. The service of Windows does
# not know that encoding: there the files become UTF-16LE with a byte order mark,
# and lines end as the editors of that system like it.
function(tvml_settings_file name)
  set(source "${PROJECT_SOURCE_DIR}/config/${name}")
  set(built "${PROJECT_BINARY_DIR}/${name}")
  if(NOT WIN32)
    configure_file("${source}" "${built}" COPYONLY)
    return()
  endif()
  find_program(TVML_ICONV iconv REQUIRED)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${source}")
  set(marked "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${name}")
  file(READ "${source}" text)
  string(REPLACE "\n" "\r\n" text "${text}")
  string(ASCII 239 187 191 byte_order_mark)
  file(WRITE "${marked}" "${byte_order_mark}${text}")
  execute_process(
    COMMAND "${TVML_ICONV}" -f UTF-8 -t UTF-16LE "${marked}"
    OUTPUT_FILE "${built}"
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()
