# Copies FROM to TO unless TO is there.
if(NOT EXISTS "${TO}")
  get_filename_component(folder "${TO}" DIRECTORY)
  file(COPY "${FROM}" DESTINATION "${folder}")
endif()
