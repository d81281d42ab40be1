# cmake -DFROM=src -DTO=include/hearthmake -DFOLDERS=a,b -P Headers.cmake
# The public headers as they are installed: with hearthmake/ in front of each include of ours, so that a
# program's own folders (project/, build/ ...) can't come between.
string(REPLACE "," ";" folders "${FOLDERS}")
file(REMOVE_RECURSE ${TO})
foreach(folder ${folders})
  file(GLOB headers RELATIVE ${FROM} ${FROM}/${folder}/*.hpp)
  foreach(header ${headers})
    file(READ ${FROM}/${header} text)
    # One that shows adapters is for the library's own use.
    if(text MATCHES "#include \"adapters/")
      continue()
    endif()
    string(REGEX REPLACE "#include \"([^\"]+)\"" "#include \"hearthmake/\\1\"" text "${text}")
    file(WRITE ${TO}/${header} "${text}")
  endforeach()
endforeach()
