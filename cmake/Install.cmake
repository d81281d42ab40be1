# What is installed: the command with its manual page and completions, and (component dev) the library for
# programs of one's own, see docs/embedding.md.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(HEARTHMAKE_ZSH_FUNCTIONS ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING
                             "Where the completions of zsh go")

# --- the command ---------------------------------------------------------------------------------------

install(TARGETS hearthmake RUNTIME COMPONENT runtime)
# Not for the path: its name is that of the compiler that it stands in for.
install(TARGETS vb6 RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/hearthmake COMPONENT runtime)

string(TIMESTAMP day "%Y-%m-%d" UTC)
set(manual ${PROJECT_BINARY_DIR}/doc/hearthmake.1)
set(manual_template ${PROJECT_SOURCE_DIR}/docs/hearthmake.1.in)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/doc)
add_custom_command(
  OUTPUT ${manual}
  COMMAND hearthmake __man ${manual_template} ${day} > ${manual}
  DEPENDS hearthmake ${manual_template}
  COMMENT "Writing the manual page" VERBATIM)
add_custom_target(manual ALL DEPENDS ${manual})

install(FILES ${manual} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT runtime)
install(FILES completions/hearthmake.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
        RENAME hearthmake COMPONENT runtime)
install(FILES completions/_hearthmake DESTINATION ${HEARTHMAKE_ZSH_FUNCTIONS} COMPONENT runtime)
install(FILES completions/hearthmake.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
        COMPONENT runtime)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT runtime FILES_MATCHING PATTERN "*.md")
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime PATTERN ".gitignore" EXCLUDE)

# --- the library ---------------------------------------------------------------------------------------

set(public_folders automation platform foundation build project sourcecontrol scripting deployment interfaces
                   embedding)
list(JOIN public_folders "," folders)
set(headers ${PROJECT_BINARY_DIR}/include/hearthmake)
install(CODE "execute_process(COMMAND ${CMAKE_COMMAND} -DFROM=${PROJECT_SOURCE_DIR}/src -DTO=${headers}
                              -DFOLDERS=${folders} -P ${PROJECT_SOURCE_DIR}/cmake/Headers.cmake
                              COMMAND_ERROR_IS_FATAL ANY)"
        COMPONENT dev)
install(DIRECTORY ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)

# Programs link embedded, or the core (Hearthmake::hearthmake) when they bring ports of their own.
set(libraries automation vbscript core posix sqlite typelib catalog vbs git embedded)
foreach(library ${libraries})
  set_target_properties(hearthmake_${library} PROPERTIES EXPORT_NAME ${library})
  target_include_directories(hearthmake_${library} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_features(hearthmake_${library} INTERFACE cxx_std_20)
  install(TARGETS hearthmake_${library} EXPORT HearthmakeTargets ARCHIVE COMPONENT dev)
endforeach()
set_target_properties(hearthmake_core PROPERTIES EXPORT_NAME hearthmake)
set(config ${CMAKE_INSTALL_LIBDIR}/cmake/Hearthmake)
install(EXPORT HearthmakeTargets NAMESPACE Hearthmake:: DESTINATION ${config} COMPONENT dev)
configure_package_config_file(cmake/HearthmakeConfig.cmake.in ${PROJECT_BINARY_DIR}/HearthmakeConfig.cmake
                              INSTALL_DESTINATION ${config})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/HearthmakeConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/HearthmakeConfig.cmake ${PROJECT_BINARY_DIR}/HearthmakeConfigVersion.cmake
        DESTINATION ${config} COMPONENT dev)
