# Makes the Debian packages of BUILD_DIR, installs them into an empty root, and there uses what they bring. The root has
# nothing else but the system's own libraries that the packages name.
file(REMOVE_RECURSE ${WORK_DIR})
set(root ${WORK_DIR}/root)
file(MAKE_DIRECTORY ${root}/var/lib/dpkg/info ${root}/var/lib/dpkg/updates ${root}/tmp)
file(TOUCH ${root}/var/lib/dpkg/status)

include(${CMAKE_CURRENT_LIST_DIR}/run.cmake)

function(expect what text pattern)
  if(NOT "${text}" MATCHES "${pattern}")
    message(FATAL_ERROR "${what} is not ${pattern}:\n${text}")
  endif()
endfunction()

# Of what is built: told of Make, cpack would first build everything that there is.
run(${CPACK} -D CPACK_CMAKE_GENERATOR=Ninja --config ${BUILD_DIR}/CPackConfig.cmake -B ${WORK_DIR})
file(GLOB packages ${WORK_DIR}/*.deb)
set(names "")
foreach(package IN LISTS packages)
  run(dpkg-deb --field ${package} Package)
  string(STRIP "${output}" name)
  list(APPEND names ${name})
  run(dpkg-deb --field ${package} Depends)
  set(depends_${name} "${output}")
  run(dpkg-deb --field ${package} Version)
  string(STRIP "${output}" version_${name})
endforeach()
list(SORT names)
expect("the list of packages" "${names}" "^libzekcomp-dev;libzekcomp0;zek-tools$")
expect("what the library needs" "${depends_libzekcomp0}" "libstdc\\+\\+6 ")
expect("what the command needs" "${depends_zek-tools}" "libzekcomp0 \\(= ")

# The system's packages are not in the root, so their absence has to be passed over; an error of ours is not.
run(dpkg --root=${root} --force-depends --force-not-root --force-script-chrootless --log=${WORK_DIR}/log
    --install ${packages})
run(dpkg-query --admindir=${root}/var/lib/dpkg --show --showformat=\${Package}=\${db:Status-Status}, zek-tools libzekcomp0
    libzekcomp-dev)
expect("what is installed" "${output}" "^libzekcomp-dev=installed,libzekcomp0=installed,zek-tools=installed,$")

file(GLOB libraries ${root}/usr/lib/*.so.0 ${root}/usr/lib/*/*.so.0)
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${root}/usr/bin/zek LIBRARIES ${libraries}
     RESOLVED_DEPENDENCIES_VAR needed UNRESOLVED_DEPENDENCIES_VAR unresolved PRE_EXCLUDE_REGEXES "^libzek")
if(unresolved)
  message(FATAL_ERROR "not found: ${unresolved}")
endif()
# The programs name the loader by this path of its own.
file(GLOB loaders /lib64/ld-*.so* /lib/ld-*.so*)
foreach(library IN LISTS needed loaders)
  cmake_path(GET library PARENT_PATH folder)
  file(COPY ${library} DESTINATION ${root}${folder} FOLLOW_SYMLINK_CHAIN)
endforeach()

# In the root, with /proc, by which the command finds its files and holds images in memory. A user namespace of its own
# lets anybody mount and enter it.
file(MAKE_DIRECTORY ${root}/proc)
set(enter unshare --map-root-user --mount sh -c [[mount --rbind /proc "$0/proc" && exec chroot "$0" "$@"]] ${root})
run(${enter} /usr/bin/zek new /tmp/board)
expect("the new board" "${output}" "^/tmp/board/board.zek\n$")
run(${enter} /usr/bin/zek compile /tmp/board/board.zek)
run(${enter} /usr/bin/zek verify --pair /tmp/board/board.zki /tmp/board/board.zkd)
run(${enter} /usr/bin/zek tree /tmp/board/board.zki)
expect("the tree" "${output}" "SENSOR \"Inlet Temp\" ID=1")

# Each package says what it is and what has changed, in the form that dpkg reads.
foreach(name IN LISTS names)
  set(documents ${root}/usr/share/doc/${name})
  file(READ ${documents}/copyright copyright)
  expect("the copyright of ${name}" "${copyright}" "^Format: [^\n]*/copyright-format/1.0/\n.*\nFiles: \\*\nCopyright: .*\nLicense: BSD-3-clause\n .*\nLicense: Expat\n ")
  run(sh -c "gzip --decompress --stdout ${documents}/changelog.Debian.gz > ${WORK_DIR}/changelog")
  run(dpkg-parsechangelog --file ${WORK_DIR}/changelog)
  expect("the changelog of ${name}" "${output}" "^Source: zek\nVersion: ${version_${name}}\n.*\n   \\* [^\n]*libzekcomp")
endforeach()

foreach(file share/man/man1/zek-compile.1 share/bash-completion/completions/zek include/zekcomp/zekcomp.h
        include/zekrsparser.h)
  if(NOT EXISTS ${root}/usr/${file})
    message(FATAL_ERROR "the packages have no ${file}")
  endif()
endforeach()

# A package goes without a trace.
run(dpkg --root=${root} --force-depends --force-not-root --force-script-chrootless --log=${WORK_DIR}/log --remove
    libzekcomp-dev)
if(EXISTS ${root}/usr/include/zekcomp OR EXISTS ${root}/usr/share/doc/libzekcomp-dev)
  message(FATAL_ERROR "removing a package leaves its files")
endif()
