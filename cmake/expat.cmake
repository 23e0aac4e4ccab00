# tvml::expat: the XML library in its form that reads and gives 16-bit units,
# which CMake's own module and the library's know nothing of.
find_path(TVML_EXPAT_INCLUDE expat.h REQUIRED)
find_library(TVML_EXPAT_LIBRARY expatw REQUIRED)

add_library(tvml::expat UNKNOWN IMPORTED)
set_target_properties(tvml::expat PROPERTIES
  IMPORTED_LOCATION "${TVML_EXPAT_LIBRARY}"
  INTERFACE_INCLUDE_DIRECTORIES "${TVML_EXPAT_INCLUDE}"
  INTERFACE_COMPILE_DEFINITIONS XML_UNICODE)
if(WIN32)
  set_property(TARGET tvml::expat APPEND PROPERTY INTERFACE_COMPILE_DEFINITIONS XML_STATIC)
endif()
