#pragma once

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace hearthmake::test {

// The bytes of a file in tests/adapters/typelib/data.
inline std::string ReadTypeLibFixture(const std::string& name) {
  std::ifstream file(SOURCE_DIRECTORY "/tests/adapters/typelib/data/" + name, std::ios::binary);
  if (!file) throw std::runtime_error("the fixture " + name + " is missing");
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace hearthmake::test
