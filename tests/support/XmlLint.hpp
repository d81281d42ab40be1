#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace hearthmake::support {

// xmllint, a real reader of XML, where it is installed.
class XmlLint {
 public:
  static bool IsHere() { return std::system("command -v xmllint >/dev/null 2>&1") == 0; }

  // What is wrong with a file by a schema; empty when nothing is.
  static std::string Check(const std::string& file, const std::string& schema) {
    return Output("xmllint --noout --nonet --schema '" + schema + "' '" + file + "' 2>&1 >/dev/null || true",
                  " validates\n");
  }
  // The value of an XPath expression.
  static std::string Value(const std::string& file, const std::string& expression) {
    std::string value = Output("xmllint --xpath \"string(" + expression + ")\" '" + file + "' 2>&1", "");
    if (value.ends_with('\n')) value.pop_back();
    return value;
  }

 private:
  // Nothing when it ends as a success does.
  static std::string Output(const std::string& command, const std::string& success) {
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "no pipe";
    std::string text;
    char buffer[4096];
    for (std::size_t count = 0; (count = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
      text.append(buffer, count);
    pclose(pipe);
    return !success.empty() && text.ends_with(success) ? "" : text;
  }
};

}  // namespace hearthmake::support
