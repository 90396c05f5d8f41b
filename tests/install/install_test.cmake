# Installs BUILD_DIR to an empty prefix, builds the host against it by find_package and by pkg-config, runs both, and
# compiles the source with the installed command. Nothing of the build tree is in sight.
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)

# The installed host finds the libraries of the prefix, and nothing else says where they are.
function(expect_host_works host)
  run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/lib ${host} ${SOURCE_DIR}/source.zek ${WORK_DIR}/image.zki
      ${prefix}/share/zek/include)
  if(NOT output MATCHES "group Board\n$")
    message(FATAL_ERROR "${host} printed: ${output}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
foreach(file lib/libzekcomp.so.0 lib/libzekrsparser.so.0 lib/cmake/zekcomp/zekcompConfig.cmake lib/pkgconfig/zekcomp.pc
        include/zekcomp/zekcomp.h include/zekrsparser.h bin/zek share/man/man1/zek.1
        share/man/man1/zek-compile.1 share/bash-completion/completions/zek share/zsh/vendor-completions/_zek
        share/fish/vendor_completions.d/zek.fish share/zek/include/zek/words.zek)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "${file} was not installed")
  endif()
endforeach()

run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/host -B ${WORK_DIR}/by-cmake -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${CXX} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/by-cmake)
expect_host_works(${WORK_DIR}/by-cmake/installed_host)

run(${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${prefix}/lib/pkgconfig pkg-config --cflags --libs zekcomp zekrsparser)
separate_arguments(flags UNIX_COMMAND "${CXX_FLAGS} ${output}")
run(${CXX} -std=c++20 -rdynamic ${SOURCE_DIR}/host/host.cpp -o ${WORK_DIR}/by-pkg-config -Wl,--no-as-needed ${flags})
expect_host_works(${WORK_DIR}/by-pkg-config)

run(${prefix}/bin/zek compile ${SOURCE_DIR}/source.zek -o ${WORK_DIR}/image.zki -g ${WORK_DIR}/image.zkd)

# The copy for the folder that the library looks in is a component of its own.
run(${CMAKE_COMMAND} -E env DESTDIR=${WORK_DIR}/root ${CMAKE_COMMAND} --install ${BUILD_DIR} --component parser)
if(NOT EXISTS ${WORK_DIR}/root/usr/tavr/lib/libzekrsparser.so.0)
  message(FATAL_ERROR "the component parser installed nothing where the library looks")
endif()
