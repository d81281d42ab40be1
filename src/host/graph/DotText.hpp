#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/graph/Digraph.hpp"
#include "project/Enumerations.hpp"

namespace hearthmake::host {

// How a project went in the last run that is known.
enum class LastOutcome { Unknown, Compiled, Failed };

// A project as pictures show it.
struct PicturedProject {
  std::string name;
  ProjectTypes type = ProjectTypes::StandardExe;
  LastOutcome last = LastOutcome::Unknown;
  bool isChanged = false;  // since it was compiled, or something that it needs
};

// "OLE server" and the like, for people.
std::string TypeName(ProjectTypes type);

// The references of projects as text in the language of Graphviz: each project with a shape for its type and
// a colour for its state, edges of cycles in red, a legend of what occurs, and in the title how many
// references the others imply. The same projects give the same text.
struct DotPicture {
  std::string title;
  std::vector<PicturedProject> projects;
  Digraph references;  // as drawn
  std::size_t implied = 0;
};
std::string DotText(const DotPicture& picture);

}  // namespace hearthmake::host
