# Configures a project that takes this one in, in both ways that CMake has, and
# builds and runs it in one:
#   cmake -DSOURCE=<project> -DWORK=<folder> -DINNER=<this project>
#         -DGENERATOR=<generator> -DC_COMPILER=<program> -DCXX_COMPILER=<program>
#         [-DC_LAUNCHER=<program> -DCXX_LAUNCHER=<program>] -P outer_project.cmake
cmake_minimum_required(VERSION 3.23)

function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "${ARGN}:\n${said}")
  endif()
endfunction()

foreach(how IN ITEMS FetchContent add_subdirectory)
  set(build "${WORK}/${how}")
  file(REMOVE_RECURSE "${build}")
  run("${CMAKE_COMMAND}" -S "${SOURCE}" -B "${build}" -G "${GENERATOR}"
    -DCMAKE_BUILD_TYPE= "-DHOW=${how}" "-DINNER=${INNER}"
    "-DCMAKE_C_COMPILER=${C_COMPILER}" "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}"
    "-DCMAKE_C_COMPILER_LAUNCHER=${C_LAUNCHER}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${CXX_LAUNCHER}")
endforeach()
run("${CMAKE_COMMAND}" --build "${build}" -j 2)
run("${build}/outer_host")
file(REMOVE_RECURSE "${WORK}")
