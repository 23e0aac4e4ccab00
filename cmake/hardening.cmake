# What makes a fault of memory end the process instead of serving who sent the
# input. Not with sanitizers, which look closer, and not for Windows, whose
# compiler would want one more library for it.
if(NOT WIN32 AND NOT TVML_SANITIZE)
  include(CheckPIESupported)
  check_pie_supported() # lets programs be position independent, as libraries are
  add_compile_options(-fstack-protector-strong)
  # The checks of buffers need optimisation.
  set(optimised "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
  add_compile_options("$<${optimised}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack)
endif()
