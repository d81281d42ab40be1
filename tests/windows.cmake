# The tests of the Windows build, which run under Wine. Each program is one test: starting Wine takes longer
# than most of them.

find_program(WINE_PROGRAM wine)
set(why_not "")
if(NOT WINE_PROGRAM)
  set(why_not "Wine is not installed: scripts/setup --wine")
elseif(CMAKE_SIZEOF_VOID_P EQUAL 4 AND NOT EXISTS /usr/lib/wine/wine)
  set(why_not "the Wine of this machine runs 64-bit programs only (package wine32)")
endif()

function(hearthmake_windows_tests name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;ARGUMENTS")
  set(sources)
  foreach(folder ${arg_UNPARSED_ARGUMENTS})
    file(GLOB found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND sources ${found})
  endforeach()
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest_main GTest::gmock)
  # Optimising the tests themselves takes longer than it saves.
  target_compile_options(${name} PRIVATE -O0)
  # As Wine shows the machine's files.
  target_compile_definitions(${name} PRIVATE SOURCE_DIRECTORY="Z:${PROJECT_SOURCE_DIR}"
                                             BINARY_DIRECTORY="Z:${PROJECT_BINARY_DIR}")
  if(why_not)
    add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -E echo "skipped: ${why_not}")
    set_tests_properties(${name} PROPERTIES SKIP_REGULAR_EXPRESSION "^skipped")
  else()
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/cmake/windows/under-wine
                                  ${PROJECT_BINARY_DIR}/wine-prefix $<TARGET_FILE:${name}> ${arg_ARGUMENTS})
    # They share the registry and the drives of the prefix.
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 RESOURCE_LOCK wine-prefix)
  endif()
endfunction()

hearthmake_windows_tests(win32_tests adapters/win32 LIBRARIES hearthmake_win32 hearthmake_typelib)
# COM's interfaces have no virtual destructors, so neither have the objects that stand in for the machine's.
target_compile_options(win32_tests PRIVATE -Wno-non-virtual-dtor)
add_executable(win32_child adapters/win32/program/Child.cpp)
add_dependencies(win32_tests win32_child)

hearthmake_windows_tests(automation_tests automation LIBRARIES hearthmake_automation)
# gcc 12 takes the count of references for none, behind the last of them.
target_compile_options(automation_tests PRIVATE -Wno-use-after-free)
hearthmake_windows_tests(sqlite_tests adapters/sqlite/windows LIBRARIES hearthmake_sqlite hearthmake_win32)
# RegExp is the system's.
hearthmake_windows_tests(vbscript_language_tests vbscript/language LIBRARIES hearthmake_com)
target_include_directories(vbscript_language_tests PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/support/windows)

# The command itself, running the scripts of tests/host/scripts.
hearthmake_windows_tests(host_tests host/windows LIBRARIES hearthmake_win32)
add_executable(host_compiler host/windows/program/Compiler.cpp)
target_compile_definitions(host_compiler PRIVATE SOURCE_DIRECTORY="Z:${PROJECT_SOURCE_DIR}")
add_dependencies(host_tests hearthmake vb6 host_compiler)
target_compile_definitions(host_tests PRIVATE COMMAND_FILE="Z:$<TARGET_FILE:hearthmake>"
                                              COMPILER_FILE="Z:$<TARGET_FILE:host_compiler>"
                                              STANDIN_FILE="Z:$<TARGET_FILE:vb6>")

# What the command leaves inside Wine, compared with what the command of this machine leaves over the same prefix.
set(HEARTHMAKE_NATIVE_PROGRAM ${PROJECT_SOURCE_DIR}/build/release/src/hearthmake
    CACHE FILEPATH "A hearthmake for the machine that builds, for the test that compares the two")
if(why_not)
  add_test(NAME native_and_wine COMMAND ${CMAKE_COMMAND} -E echo "skipped: ${why_not}")
else()
  add_test(NAME native_and_wine COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/wine/native-and-wine
                                        ${PROJECT_BINARY_DIR}/wine-prefix ${PROJECT_BINARY_DIR}
                                        ${HEARTHMAKE_NATIVE_PROGRAM})
endif()
set_tests_properties(native_and_wine PROPERTIES TIMEOUT 600 RESOURCE_LOCK wine-prefix
                                                SKIP_REGULAR_EXPRESSION "(^|\n)skipped")

hearthmake_windows_tests(com_tests com LIBRARIES hearthmake_com)
# The library itself, in the hands of a host.
hearthmake_windows_tests(server_tests com/server LIBRARIES hearthmake_com psapi)
add_dependencies(server_tests hearthmake_server host_compiler)
target_include_directories(server_tests PRIVATE $<TARGET_FILE_DIR:hearthmake_server>)
target_compile_definitions(server_tests PRIVATE SERVER_FILE="Z:$<TARGET_FILE:hearthmake_server>"
                                                COMPILER_FILE="Z:$<TARGET_FILE:host_compiler>")
set_tests_properties(server_tests PROPERTIES TIMEOUT 1200)  # a thousand builds
# The sinks of these tests have no virtual destructors, as COM has it.
target_compile_options(com_tests PRIVATE -Wno-non-virtual-dtor)
target_compile_options(server_tests PRIVATE -Wno-non-virtual-dtor)
hearthmake_windows_tests(
  latebound_tests adapters/componentservices adapters/dao adapters/scriptcontrol adapters/sourcesafe
  LIBRARIES hearthmake_latebound hearthmake_catalog hearthmake_sqlite hearthmake_vbs SQLite::SQLite3)
target_compile_options(latebound_tests PRIVATE -Wno-non-virtual-dtor)
