# Installs into a folder and uses it as the people do whom it is for: a writer, a
# project in C with pkg-config, a project in C++ with find_package. Then makes the
# Debian package, unpacks it into an empty root, and converts there.
cmake_minimum_required(VERSION 3.23)

set(prefix "${WORK}/a prefix") # that the files were not made for
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/c")

# run([FOLDER <folder>] <command> <argument>...): stops the test when it fails.
function(run)
  cmake_parse_arguments(PARSE_ARGV 0 it "" "FOLDER" "")
  if(NOT it_FOLDER)
    set(it_FOLDER "${WORK}")
  endif()
  execute_process(COMMAND ${it_UNPARSED_ARGUMENTS} WORKING_DIRECTORY "${it_FOLDER}"
    OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "${it_UNPARSED_ARGUMENTS}: ${failed}\n${said}")
  endif()
  set(said "${said}" PARENT_SCOPE)
endfunction()

function(compare result)
  run("${CMAKE_COMMAND}" -E compare_files "${result}" "${EXAMPLE}/golden.tvml")
endfunction()

# ---- a writer

run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${prefix}")
run("${prefix}/bin/tvmlfilter" convert "${EXAMPLE}/programme.txt"
  -d "${EXAMPLE}/description.xml" -o "${WORK}/program.tvml")
compare("${WORK}/program.tvml")
run("${prefix}/bin/tvmlfilter" convert "${EXAMPLE}/programme.txt"
  -d "${EXAMPLE}/description.xml" -o "${WORK}/library.tvml"
  --library "${prefix}/${LIBDIR}/libtvmlfilter.so.1")
compare("${WORK}/library.tvml")
foreach(file IN ITEMS
    share/man/man1/tvmlfilter.1.gz share/man/ja/man1/tvmlfilter.1.gz
    share/bash-completion/completions/tvmlfilter share/zsh/vendor-completions/_tvmlfilter
    share/tvmlfilter/default.xml share/doc/tvmlfilter/ja/script-language.md
    share/doc/tvmlfilter/examples/news_ja/programme.txt "${LIBDIR}/libtvmlfilter.so")
  if(NOT EXISTS "${prefix}/${file}")
    message(SEND_ERROR "nothing installs ${file}")
  endif()
endforeach()
if(EXISTS /bin/bash)
  run(bash -n "${prefix}/share/bash-completion/completions/tvmlfilter")
endif()

# ---- a project in C

set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
run(pkg-config --modversion tvmlfilter)
string(STRIP "${said}" said)
if(NOT said STREQUAL VERSION)
  message(SEND_ERROR "pkg-config knows version ${said}")
endif()
run(sh -c "eval '${C_COMPILER}' -std=c11 -o c/host '${PROJECTS}/c_host/host.c' $(pkg-config --cflags --libs tvmlfilter)")
run(sh -c "eval cp $(pkg-config --variable=settingsdir tvmlfilter)/*.ini c/")
run("${CMAKE_COMMAND}" -E env "LD_LIBRARY_PATH=${prefix}/${LIBDIR}" c/host)

# ---- a project in C++

run("${CMAKE_COMMAND}" -S "${PROJECTS}/cpp_host" -B "${WORK}/cpp"
  "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}" "-DCMAKE_PREFIX_PATH=${prefix}")
run("${CMAKE_COMMAND}" --build "${WORK}/cpp")
run("${WORK}/cpp/cpp_host")

# ---- the Debian package

get_filename_component(tools "${CMAKE_COMMAND}" DIRECTORY)
find_program(dpkg_deb dpkg-deb)
if(NOT dpkg_deb)
  message(STATUS "no dpkg-deb here: the Debian package is not tried")
  return()
endif()
run("${tools}/cpack" --config "${BUILD}/CPackConfig.cmake" -G DEB -B "${WORK}/deb")
file(GLOB package "${WORK}/deb/*.deb")
file(SIZE "${package}" size)
if(size GREATER_EQUAL 2000000)
  message(SEND_ERROR "the Debian package has ${size} bytes")
endif()
find_program(lintian lintian)
if(lintian)
  run("${lintian}" --fail-on error --no-tag-display-limit --allow-root "${package}")
endif()
run("${dpkg_deb}" -f "${package}" Depends)
foreach(library IN ITEMS libc6 libexpat1 libicu "libstdc\\+\\+6")
  if(NOT said MATCHES "${library}")
    message(SEND_ERROR "the package does not ask for ${library} but for ${said}")
  endif()
endforeach()
set(root "${WORK}/root")
run("${dpkg_deb}" -x "${package}" "${root}")

# The libraries that the package asks for, as its root has nothing else.
run(ldd "${root}/usr/lib/tvmlfilter/tvmlfilter")
string(REGEX MATCHALL "/[^ \n]+\\.so[^ \n]*" libraries "${said}")
foreach(library IN LISTS libraries)
  get_filename_component(folder "${library}" DIRECTORY)
  get_filename_component(file "${library}" REALPATH)
  get_filename_component(name "${library}" NAME)
  file(MAKE_DIRECTORY "${root}${folder}")
  file(CREATE_LINK "${file}" "${root}${folder}/${name}" COPY_ON_ERROR)
endforeach()
file(COPY "${EXAMPLE}/programme.txt" "${EXAMPLE}/description.xml" DESTINATION "${root}")
set(convert tvmlfilter convert /programme.txt -d /description.xml -o /made.tvml)
set(alone unshare --mount)
execute_process(COMMAND id -u OUTPUT_VARIABLE user OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT user STREQUAL "0")
  list(APPEND alone --user --map-root-user)
endif()
execute_process(COMMAND ${alone} true RESULT_VARIABLE refused OUTPUT_QUIET ERROR_QUIET)
if(refused) # as in many containers: at least with its own files
  message(STATUS "no root of its own can be had here: the package runs in this one")
  run("${root}/usr/bin/tvmlfilter" convert "${EXAMPLE}/programme.txt"
    -d "${EXAMPLE}/description.xml" -o "${root}/made.tvml")
else()
  run(mkdir -p "${root}/proc") # where a program asks for its own path
  run(${alone} sh -c
    "mount --rbind /proc '${root}/proc' && PATH=/usr/sbin:/sbin:$PATH exec chroot '${root}' /usr/bin/\"$@\"" sh ${convert})
endif()
compare("${root}/made.tvml")
file(REMOVE_RECURSE "${WORK}")
