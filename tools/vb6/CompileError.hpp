#pragma once

#include <string>
#include <utility>

namespace hearthmake::vb6 {

// What is wrong with a source file and where; the log's "Compile Error in File" sentence is made of it.
class CompileError {
 public:
  CompileError(unsigned line, std::string text) : m_line(line), m_text(std::move(text)) {}

  unsigned Line() const { return m_line; }  // from 1
  const std::string& Text() const { return m_text; }

 private:
  unsigned m_line;
  std::string m_text;
};

}  // namespace hearthmake::vb6
