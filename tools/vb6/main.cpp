#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "adapters/typelib/TypeLibFileReader.hpp"
#include "automation/Error.hpp"
#include "automation/Utf.hpp"
#include "vb6/CommandLine.hpp"
#include "vb6/Compiler.hpp"
#include "vb6/Controls.hpp"
#include "vb6/System.hpp"

namespace hearthmake::vb6 {
namespace {

constexpr const char* kVersion = "vb6 stand-in 1.0 (Hearthmake)\n";

constexpr const char* kHelp =
    "A stand-in for the make mode of the Visual Basic 6 compiler. It does not compile Basic: it checks a\n"
    "project, its references and the shape of its sources, and writes an image with their type library.\n"
    "\n"
    "  vb6 PROJECT.vbp /make|/makedll [/out LOG] [/outdir FOLDER] [/d CONST=VALUE] [--skip-sources]\n"
    "\n"
    "Paths are DOS paths, mapped by HEARTHMAKE_DRIVES (C:=/home/me/c;Z:=/), or POSIX paths.\n";

// Where the log can't be written, its text is not lost.
void Report(platform::FileSystem& files, const std::string& log, const std::string& text) {
  if (!log.empty()) {
    try {
      files.Replace(log, automation::Utf8ToWindows1252(text));
      return;
    } catch (const automation::Error& error) {
      std::fprintf(stderr, "vb6: the log can't be written: %s\n", error.what());
    }
  }
  std::fputs(text.c_str(), stderr);
}

int Make(const CommandLine& line) {
  const Disks disks = OpenDisks();
  typelib::TypeLibFileReader libraries(disks.files);
  Controls controls = Controls::FromEnvironment();
  if (line.skipSources) controls.SetSkipSources();
  Compiler compiler(*disks.files, libraries, controls);
  const std::string outFolder = line.outFolder.empty() ? "" : disks.toDos(line.outFolder);
  const Outcome outcome = compiler.Compile(disks.toDos(line.project), outFolder);
  Report(*disks.files, line.log.empty() ? "" : disks.toDos(line.log), outcome.log);
  return outcome.succeeded ? 0 : 1;
}

int Run(const std::vector<std::string>& arguments) {
  const CommandLine line = CommandLine::Parse(arguments);
  if (line.help || line.version) {
    std::fputs(line.help ? kHelp : kVersion, stdout);
    return 0;
  }
  if (!line.problem.empty()) {
    std::fprintf(stderr, "vb6: %s\n%s", line.problem.c_str(), kHelp);
    return 1;
  }
  if (!line.make) {
    std::fputs("vb6: there is no development environment here, only make mode; see vb6 --help\n", stderr);
    return 1;
  }
  return Make(line);
}

}  // namespace
}  // namespace hearthmake::vb6

int main(int argc, char** argv) {
  try {
    return hearthmake::vb6::Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vb6: %s\n", error.what());
    return 1;
  }
}
