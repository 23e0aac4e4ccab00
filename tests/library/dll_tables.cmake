# Checks what the DLL file asks of its host's system and what it offers:
#   cmake -DDLL=<file> [-DOBJDUMP=<program>] -P dll_tables.cmake
cmake_minimum_required(VERSION 3.23)

if(NOT OBJDUMP)
  set(OBJDUMP i686-w64-mingw32-objdump)
endif()

execute_process(COMMAND "${OBJDUMP}" -f -p "${DLL}"
  OUTPUT_VARIABLE tables COMMAND_ERROR_IS_FATAL ANY)

if(NOT tables MATCHES "file format pei-i386")
  message(SEND_ERROR "the file is no 32-bit DLL")
endif()

# Of the names in the export table, each is in a row "[   0] name".
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table[^\n]*\n([^\n]+\n)+" table "${tables}")
string(REGEX MATCHALL "\\[ *[0-9]+\\] [^\n]+" exports "${table}")
if(NOT exports MATCHES "^[^;]*\\] fil_process$")
  message(SEND_ERROR "the exported names are not fil_process alone: ${exports}")
endif()

# Only what is part of every Windows.
set(system_dlls ADVAPI32.dll KERNEL32.dll msvcrt.dll)
string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${tables}")
if(NOT imports)
  message(SEND_ERROR "no import table was found")
endif()
foreach(import IN LISTS imports)
  string(REPLACE "DLL Name: " "" import "${import}")
  if(NOT import IN_LIST system_dlls)
    message(SEND_ERROR "the library needs ${import}")
  endif()
endforeach()

# The version's resource, whose texts are UTF-16.
file(READ "${DLL}" bytes HEX)
string(HEX "OriginalFilename" name)
string(REGEX REPLACE "(..)" "\\100" name "${name}")
string(FIND "${bytes}" "${name}" found)
if(found EQUAL -1)
  message(SEND_ERROR "the library has no version resource")
endif()
