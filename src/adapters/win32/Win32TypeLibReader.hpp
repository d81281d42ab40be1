#pragma once

#include "platform/TypeLibReader.hpp"

namespace hearthmake::win32 {

// Type libraries as the system's own loader gives them: every format that it knows, those of 16 bits and in
// .NET assemblies with an exported library beside them included. Nothing is registered, and no file is held.
class Win32TypeLibReader final : public platform::TypeLibReader {
 public:
  platform::TypeLibInfo Read(std::string_view path) override;
  std::vector<platform::TypeDescription> ReadTypes(std::string_view path) override;
};

}  // namespace hearthmake::win32
