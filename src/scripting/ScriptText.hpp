#pragma once

#include <string>

namespace hearthmake {

class Build;

// What happens to a script text before it runs.
namespace ScriptText {

// Puts the text of a file in place of each 'Include<file> of a comment, between two CR LF, in included
// files too. A relative path starts at the current folder; files are Windows-1252. A file that can't be
// read is beOpenIncludeFile, source "Scripts.DoIncludes", "Could not open include file " and its name;
// more than 64 MB of text (a file that includes itself) error 7.
std::string DoIncludes(const std::string& text);

// Puts the value of a property of the build in place of each %Build.path% (%Build.Projects.Count%). A path
// that can't be read, or whose value brings the same placeholder back, is beEvaluateInternalsFaild, source
// "Scripts.EvaluateInternals", "Method " path " failed".
std::string EvaluateInternals(const std::string& text, Build& build);

}  // namespace ScriptText

}  // namespace hearthmake
