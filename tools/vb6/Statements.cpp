#include "vb6/Statements.hpp"

#include "vb6/CompileError.hpp"
#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

class Splitter {
 public:
  explicit Splitter(unsigned firstLine) : m_line(firstLine) {}

  std::vector<Statement> Run(std::string_view text) {
    while (!text.empty()) {
      const std::size_t end = text.find('\n');
      std::string_view line = text.substr(0, end);
      text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
      if (line.ends_with('\r')) line.remove_suffix(1);
      AddLine(line);
      ++m_line;
    }
    EndStatement();
    return std::move(m_statements);
  }

 private:
  void AddLine(std::string_view line) {
    const bool continued = IsContinued(line);
    if (continued) line.remove_suffix(1);
    if (!m_inComment) AddCode(line);
    if (continued) {
      m_current += ' ';
      return;
    }
    m_inComment = false;
    EndStatement();
  }

  // A comment is continued like anything else.
  static bool IsContinued(std::string_view line) {
    return line.ends_with(" _") || line.ends_with("\t_") || line == "_";
  }

  void AddCode(std::string_view line) {
    bool inText = false;
    for (std::size_t i = 0; i < line.size() && !m_inComment; ++i) {
      const char c = line[i];
      if (c == '"') inText = !inText;
      if (!inText && c == '\'') {
        m_inComment = true;
      } else if (!inText && c == ':' && line.substr(i + 1, 1) != "=") {
        EndStatement();
      } else {
        if (Trim(m_current).empty()) m_start = m_line;
        m_current += c;
        if (!inText && IsRemark()) m_inComment = true;
      }
    }
    if (inText) throw CompileError(m_line, "Syntax error: the text has no closing quote");
  }

  // Looked at only where the word could end.
  bool IsRemark() {
    const char last = m_current.back();
    if (last != ' ' && last != '\t') return false;
    if (!EqualNoCase(Trim(m_current), "Rem")) return false;
    m_current.clear();
    return true;
  }

  void EndStatement() {
    const std::string_view text = Trim(m_current);
    if (!text.empty() && !EqualNoCase(text, "Rem")) m_statements.push_back({m_start, std::string(text)});
    m_current.clear();
  }

  unsigned m_line;
  unsigned m_start = 0;
  bool m_inComment = false;
  std::string m_current;
  std::vector<Statement> m_statements;
};

}  // namespace

std::vector<Statement> SplitStatements(std::string_view text, unsigned firstLine) {
  return Splitter(firstLine).Run(text);
}

}  // namespace hearthmake::vb6
