#include "adapters/posix/CommandLine.hpp"

#include <algorithm>

namespace hearthmake::posix {

namespace {

constexpr std::string_view kBlanks = " \t";

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// The end of what stands for itself, from a character on that is neither a quote nor a backslash.
std::size_t PlainEnd(std::string_view arguments, std::size_t at, bool quoted) {
  if (!quoted) {
    while (at < arguments.size() && arguments[at] != '\\' && arguments[at] != '"' && !IsBlank(arguments[at]))
      ++at;
    return at;
  }
  // In a quoted path, the long arguments, only the backslashes before the next quote are not themselves.
  std::size_t end = arguments.find('"', at);
  if (end == std::string_view::npos) return arguments.size();
  while (arguments[end - 1] == '\\') --end;
  return end;
}

}  // namespace

std::optional<ProgramCandidate> CommandLine::NextCandidate() {
  if (m_done) return std::nullopt;
  if (m_next == 0) {
    const std::size_t start = m_text.find_first_not_of(kBlanks);
    m_text.remove_prefix(std::min(start, m_text.size()));
    if (m_text.starts_with('"')) {
      m_done = true;
      const std::size_t close = std::min(m_text.find('"', 1), m_text.size());
      const std::string_view program = m_text.substr(1, close - 1);
      if (program.empty()) return std::nullopt;
      return ProgramCandidate{program, m_text.substr(std::min(close + 1, m_text.size()))};
    }
  }
  // A run of blanks ends one candidate, not several.
  while (m_next < m_text.size() && IsBlank(m_text[m_next])) ++m_next;
  if (m_next >= m_text.size()) {
    m_done = true;
    return std::nullopt;
  }
  m_next = std::min(m_text.find_first_of(kBlanks, m_next), m_text.size());
  return ProgramCandidate{m_text.substr(0, m_next), m_text.substr(m_next)};
}

std::vector<std::string> CommandLine::SplitArguments(std::string_view arguments) {
  std::vector<std::string> result;
  std::size_t at = 0;
  while (true) {
    while (at < arguments.size() && IsBlank(arguments[at])) ++at;
    if (at == arguments.size()) return result;
    std::string& argument = result.emplace_back();
    bool quoted = false;
    while (at < arguments.size() && (quoted || !IsBlank(arguments[at]))) {
      const std::size_t first = at;
      while (at < arguments.size() && arguments[at] == '\\') ++at;
      const std::size_t backslashes = at - first;
      if (at == arguments.size() || arguments[at] != '"') {
        if (at < arguments.size()) at = PlainEnd(arguments, at, quoted);
        argument += arguments.substr(first, at - first);
        continue;
      }
      argument.append(backslashes / 2, '\\');
      if (backslashes % 2 == 1) {
        argument += '"';
      } else if (quoted && at + 1 < arguments.size() && arguments[at + 1] == '"') {
        argument += '"';
        ++at;
      } else {
        quoted = !quoted;
      }
      ++at;
    }
  }
}

}  // namespace hearthmake::posix
