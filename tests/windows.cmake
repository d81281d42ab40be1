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
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES")
  set(sources)
  foreach(folder ${arg_UNPARSED_ARGUMENTS})
    file(GLOB found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND sources ${found})
  endforeach()
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${arg_LIBRARIES} GTest::gtest_main GTest::gmock)
  # As Wine shows the machine's files.
  target_compile_definitions(${name} PRIVATE SOURCE_DIRECTORY="Z:${PROJECT_SOURCE_DIR}"
                                             BINARY_DIRECTORY="Z:${PROJECT_BINARY_DIR}")
  if(why_not)
    add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} -E echo "skipped: ${why_not}")
    set_tests_properties(${name} PROPERTIES SKIP_REGULAR_EXPRESSION "^skipped")
  else()
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/cmake/windows/under-wine
                                  ${PROJECT_BINARY_DIR}/wine-prefix $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES TIMEOUT 600)
  endif()
endfunction()

hearthmake_windows_tests(win32_tests adapters/win32 LIBRARIES hearthmake_win32 hearthmake_typelib)
# COM's interfaces have no virtual destructors, so neither have the objects that stand in for the machine's.
target_compile_options(win32_tests PRIVATE -Wno-non-virtual-dtor)
add_executable(win32_child adapters/win32/program/Child.cpp)
add_dependencies(win32_tests win32_child)

hearthmake_windows_tests(
  latebound_tests adapters/componentservices adapters/dao adapters/scriptcontrol adapters/sourcesafe
  LIBRARIES hearthmake_latebound hearthmake_catalog hearthmake_sqlite hearthmake_vbs SQLite::SQLite3)
target_compile_options(latebound_tests PRIVATE -Wno-non-virtual-dtor)
