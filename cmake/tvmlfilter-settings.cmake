# tvmlfilter_copy_settings(<target>)
#
# Puts "keyword.ini" and "Mirvol.ini" beside a program whenever it is built: the
# library reads them in the folder of the program that runs. A file that is there
# already stays, so that edits are not lost.
set(TVMLFILTER_SETTINGS_FOLDER "${TVMLFILTER_SETTINGS_FOLDER}"
  CACHE INTERNAL "Where the ini files of the script filter lie")

function(tvmlfilter_copy_settings target)
  foreach(name IN ITEMS keyword.ini Mirvol.ini)
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND "${CMAKE_COMMAND}"
        "-DFROM=${TVMLFILTER_SETTINGS_FOLDER}/${name}"
        "-DTO=$<TARGET_FILE_DIR:${target}>/${name}"
        -P "${TVMLFILTER_COPY_SCRIPT}"
      VERBATIM)
  endforeach()
endfunction()
set(TVMLFILTER_COPY_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/tvmlfilter-copy.cmake"
  CACHE INTERNAL "Copies one ini file of the script filter")
