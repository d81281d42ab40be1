add_compile_options(
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wno-sign-conversion
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor> $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>
  -Wnull-dereference -Wimplicit-fallthrough)
# gcc 12 sees null dereferences and overreads inside its own inlined string and vector code.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wno-null-dereference -Wno-restrict -Wno-stringop-overread -Wno-array-bounds
                      -Wno-stringop-overflow -Wno-maybe-uninitialized)
endif()
