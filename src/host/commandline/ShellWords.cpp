#include "host/commandline/ShellWords.hpp"

#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

// What bash reads as itself outside of quotes; bytes of UTF-8 sequences as well.
bool IsPlain(char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
  return isLetter || static_cast<unsigned char>(c) >= 0x80 ||
         std::string_view("_-+./:,=@%").find(c) != std::string_view::npos;
}

class Splitter {
 public:
  explicit Splitter(std::string_view line) : m_line(line) {}

  ShellWords Split() {
    for (m_at = 0; m_at < m_line.size(); ++m_at) Take(m_line[m_at]);
    m_result.typed = m_line.substr(m_begin);
    EndWord();
    m_result.quote = m_quote;
    return std::move(m_result);
  }

 private:
  void Take(char c) {
    if (m_quote != 0) {
      TakeQuoted(c);
    } else if (c == ' ' || c == '\t' || c == '\n') {
      if (m_at > m_begin) EndWord();
      m_begin = m_at + 1;
    } else if (c == '\'' || c == '"') {
      m_quote = c;
      m_hasQuotes = true;
    } else if (c == '\\') {
      m_hasQuotes = true;
      if (m_at + 1 < m_line.size()) m_word += m_line[++m_at];
    } else {
      m_word += c;
    }
  }

  void TakeQuoted(char c) {
    const bool isEscape = c == '\\' && m_quote == '"' && m_at + 1 < m_line.size() &&
                          std::string_view("\\\"$`").find(m_line[m_at + 1]) != std::string_view::npos;
    if (c == m_quote) {
      m_quote = 0;
    } else {
      m_word += isEscape ? m_line[++m_at] : c;
    }
  }

  void EndWord() {
    m_result.words.push_back(m_hasQuotes ? m_word : WithHome(m_word));
    m_word.clear();
    m_hasQuotes = false;
  }

  std::string_view m_line;
  std::size_t m_at = 0;
  std::size_t m_begin = 0;  // of the word
  std::string m_word;
  bool m_hasQuotes = false;
  char m_quote = 0;
  ShellWords m_result;
};

}  // namespace

std::string WithHome(std::string word) {
  if (word == "~" || word.starts_with("~/")) word.replace(0, 1, EnvironmentValue("HOME"));
  return word;
}

ShellWords SplitShellLine(std::string_view line) { return Splitter(line).Split(); }

std::string QuoteForShell(std::string_view text, char openQuote) {
  std::string quoted;
  for (const char c : text) {
    if (openQuote == '\'') {
      quoted += c == '\'' ? "'\\''" : std::string(1, c);
      continue;
    }
    const bool isSpecial =
        openQuote == '"' ? std::string_view("\\\"$`").find(c) != std::string_view::npos : !IsPlain(c);
    if (isSpecial) quoted += '\\';
    quoted += c;
  }
  return quoted;
}

}  // namespace hearthmake::host
