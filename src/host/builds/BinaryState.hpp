#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "project/Project.hpp"

namespace hearthmake::host {

// What a project's binary is, and what the registry (that of the data folder, or of the Wine prefix) knows
// of it.
struct BinaryState {
  std::string path;  // DOS path
  bool isThere = false;
  bool isComponent = false;    // ActiveX: it can be registered
  std::string library;         // id of its type library, {...}; empty when there is none
  std::string version;         // of the library, hexadecimal as in project files: 1.A
  std::string problem;         // why the library of a component could not be read
  std::string registeredPath;  // the file that the registry names for library and version; empty: none

  // The registry names this very file.
  bool IsRegistered() const;
};

BinaryState ReadBinary(Project& project);

// The file that the registry has for a type library, {...}, and its version, 1.A; empty for none.
std::string RegisteredLibrary(const std::string& library, const std::string& version);

// The lines of `show`, name and value as those of the properties.
std::string BinaryLines(const BinaryState& state);
nlohmann::ordered_json BinaryJson(const BinaryState& state);

}  // namespace hearthmake::host
