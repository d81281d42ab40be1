#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vb6/ProjectFile.hpp"
#include "vb6/PublicInterface.hpp"

namespace hearthmake::vb6 {

// What a source file that has the right shape says of itself.
struct SourceFacts {
  std::string name;                     // VB_Name; empty for a module that has none
  std::optional<PublicClass> exported;  // a class or control that other components may see
};

// Checks the shape of a source file: the header of its kind with Begin and End balanced, the name that the
// project expects, closed texts, procedures that begin and end. Statements are not judged.
//
// bytes is the file's content; kind and expectedName are those of the project's row (the name may be empty).
// Throws CompileError for the first thing that is wrong.
SourceFacts ReadSource(std::string_view bytes, ComponentKind kind, std::string_view expectedName);

}  // namespace hearthmake::vb6
