// A compiler for the host scripts: PROJECT.vbp /make|/makedll /out LOG. It succeeds on every project but one
// that is called Bad. What a library gets for its binary is a type library alone.

#include <filesystem>
#include <fstream>
#include <string_view>

namespace fs = std::filesystem;

int main(int count, char** arguments) {
  if (count < 5) return 2;
  const fs::path project = arguments[1];
  std::ofstream log(arguments[4], std::ios::binary);
  if (project.stem() == "Bad") {
    log << "Compile Error in File 'Bad.cls', Line 12 : Variable not defined\r\nBuild of 'Bad' failed.\r\n";
    return 1;
  }
  if (std::string_view(arguments[2]) == "/makedll") {
    fs::copy_file(SOURCE_DIRECTORY "/tests/adapters/typelib/data/Bare.tlb",
                  fs::path(project).replace_extension(".dll"), fs::copy_options::overwrite_existing);
  }
  log << "Build of '" << project.stem().string() << "' succeeded.\r\n";
  return 0;
}
