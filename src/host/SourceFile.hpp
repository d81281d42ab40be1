#pragma once

#include <cstddef>
#include <string>

namespace hearthmake::host {

// What became of a file that was asked of source control.
enum class SourceFileState {
  Got,
  Unchanged,
  Skipped,  // somebody's work that the flags protect: writable, and not what source control has
};

struct SourceFile {
  std::string spec;  // "$/Suite/Lib/a.cls"
  SourceFileState state = SourceFileState::Got;
  std::size_t number = 0;  // from 1, among those of its source project
  std::size_t count = 0;
};

}  // namespace hearthmake::host
