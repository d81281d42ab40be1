// A compiler for the tests of the server: writes the log of a compile that went well, and of one that failed
// for a project that is called Bad. PROJECT.vbp /make /out LOG, in any order and case.

#include <cstdio>
#include <cstring>
#include <string>

#include <strings.h>

int main(int count, char** arguments) {
  std::string project;
  const char* log = nullptr;
  for (int i = 1; i < count; ++i) {
    const std::size_t length = std::strlen(arguments[i]);
    if (strcasecmp(arguments[i], "/out") == 0 && i + 1 < count)
      log = arguments[++i];
    else if (length > 4 && strcasecmp(arguments[i] + length - 4, ".vbp") == 0)
      project = arguments[i];
  }
  if (log == nullptr) return 1;
  std::FILE* file = std::fopen(log, "wb");
  if (file == nullptr) return 1;
  const std::string name = project.substr(project.find_last_of('\\') + 1);
  const bool isBad = strcasecmp(name.c_str(), "Bad.vbp") == 0;
  if (isBad) std::fprintf(file, "Compile Error in File 'Bad.bas', Line 1 : Syntax error\r\n");
  std::fprintf(file, "Build of '%s' %s.\r\n", name.c_str(), isBad ? "failed" : "succeeded");
  return std::fclose(file) == 0 ? 0 : 1;
}
