// hearthmake-idl FILE: writes the interface definition of the library. A file that says the same already
// keeps its time stamp.

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "idl/IdlText.hpp"

namespace {

std::string Contents(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: hearthmake-idl FILE\n", stderr);
    return 2;
  }
  const std::string text = hearthmake::idl::LibraryText();
  if (Contents(arguments[1]) == text) return 0;
  std::ofstream file(arguments[1], std::ios::binary);
  file << text;
  file.close();
  if (file) return 0;
  std::fprintf(stderr, "hearthmake-idl: can't write %s\n", arguments[1]);
  return 1;
}
