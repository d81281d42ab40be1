# Debian packages: hearthmake, and libhearthmake-dev for programs with the library inside. See scripts/package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME hearthmake)
set(CPACK_PACKAGE_VENDOR "Hearthmake developers")
set(CPACK_PACKAGE_CONTACT "Hearthmake developers <developers@hearthmake.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL runtime dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME hearthmake)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "wine, git")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "builds suites of Visual Basic 6 projects
Keeps sets of Visual Basic 6 projects in a database, works out the compile
order from the references between them, brings every project file up to date
with the identities of the binaries that it uses, and drives the compiler,
which runs under Wine.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libhearthmake-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libsqlite3-dev, libpcre2-dev")
if(GIT2)  # where it is linked
  string(APPEND CPACK_DEBIAN_DEV_PACKAGE_DEPENDS ", libgit2-dev")
endif()
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "hearthmake, cmake")
set(CPACK_COMPONENT_DEV_DESCRIPTION
    "builds of Visual Basic 6 projects, as a C++ library
The headers and archives of Hearthmake, which keeps sets of Visual Basic 6
projects and drives their compiler, for programs that have it inside, with a
package for CMake.")

# Not seen among the program's libraries where it is loaded when it is used first.
find_library(GIT2_LIBRARY git2)
if(GIT2_LIBRARY)
  get_filename_component(git2_file ${GIT2_LIBRARY} REALPATH)
  execute_process(COMMAND dpkg-query -S ${git2_file} OUTPUT_VARIABLE owner ERROR_QUIET)
  if(owner MATCHES "^(libgit2-[0-9.]+):")
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS ${CMAKE_MATCH_1})
    set(CPACK_DEBIAN_DEV_PACKAGE_RECOMMENDS ${CMAKE_MATCH_1})
  endif()
endif()

set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/finish.cmake)
include(CPack)
