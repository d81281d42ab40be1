# A start of the command would spend most of its time in the loader: the C++ library alone has thousands of
# names to look up.
set(HEARTHMAKE_FMT fmt::fmt)
set(HEARTHMAKE_LINK_OPTIONS)
if(HEARTHMAKE_STATIC AND NOT WIN32)
  set(CMAKE_FIND_LIBRARY_SUFFIXES .a ${CMAKE_FIND_LIBRARY_SUFFIXES})
  set(HEARTHMAKE_LINK_OPTIONS -static-libstdc++ -static-libgcc)
  # Debian has no archive of it.
  add_library(hearthmake_fmt STATIC ${CMAKE_CURRENT_LIST_DIR}/static/Fmt.cpp)
  set(HEARTHMAKE_FMT hearthmake_fmt)
endif()
