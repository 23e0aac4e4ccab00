# Runs the host in C from a folder with a Japanese name, where it writes the words
# that the library then has to find. Two of the name's letters end with the byte
# of "\" in the code page of Japanese machines.
#   cmake -DRUN=<emulator or nothing> -DHOST=<file> -DLIBRARY=<file> -DWORK=<folder>
#         -P japanese_folder.cmake
cmake_minimum_required(VERSION 3.23)

set(folder "${WORK}/放送 ソフト表")
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${folder}")
file(COPY "${HOST}" "${LIBRARY}" DESTINATION "${folder}")
get_filename_component(name "${HOST}" NAME)
execute_process(COMMAND ${RUN} "${folder}/${name}" "${folder}" COMMAND_ERROR_IS_FATAL ANY)
