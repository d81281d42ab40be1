#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::host {

// A file that a project file names, or that goes with one.
struct ProjectSource {
  std::string path;           // DOS path, absolute
  bool mayBeMissing = false;  // a compile does without it
};

// What a project is compiled from, beside its project file: forms, controls, classes, modules, designers,
// property pages, user documents (each kind with its companions), the resource file and related documents, in
// the order of the rows. Not every form has a companion, and a related document is no input of the compiler:
// many a row still names a folder of the author's. Sections of other tools are not read, and rows without a
// file are passed over. bytes is the content of the project file, folder its folder with the backslash.
std::vector<ProjectSource> SourcesOf(std::string_view bytes, std::string_view folder);

}  // namespace hearthmake::host
