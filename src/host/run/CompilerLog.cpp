#include "host/run/CompilerLog.hpp"

#include <charconv>
#include <optional>

namespace hearthmake::host {

namespace {

constexpr std::string_view kCompileFailed = "Compile failed: ";
constexpr std::string_view kErrorMark = "Compile Error in File ";
constexpr std::string_view kLineMark = ", Line ";
constexpr std::size_t kErrorLimit = 1000;

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlank = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlank);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

std::string_view WithoutQuotes(std::string_view text) {
  const bool isQuoted =
      text.size() >= 2 && text.front() == text.back() && (text.front() == '\'' || text.front() == '"');
  return isQuoted ? text.substr(1, text.size() - 2) : text;
}

// Compile Error in File 'C:\src\c1.cls', Line 12 : Variable not defined
std::optional<CompilerError> ReadPlace(std::string_view line) {
  const std::size_t mark = line.find(kErrorMark);
  if (mark == std::string_view::npos) return std::nullopt;
  std::string_view rest = line.substr(mark + kErrorMark.size());
  // A file name may hold anything but what ends it.
  const std::size_t number = rest.find(kLineMark);
  if (number == std::string_view::npos) return std::nullopt;
  CompilerError error;
  error.file = WithoutQuotes(Trimmed(rest.substr(0, number)));
  rest.remove_prefix(number + kLineMark.size());
  const auto end = std::from_chars(rest.data(), rest.data() + rest.size(), error.line);
  if (end.ec != std::errc()) return std::nullopt;
  rest.remove_prefix(static_cast<std::size_t>(end.ptr - rest.data()));
  rest = Trimmed(rest);
  if (rest.starts_with(':')) rest = Trimmed(rest.substr(1));
  error.text = rest;
  return error;
}

bool IsVerdict(std::string_view line) {
  return line.starts_with("Build of ") || line == "Build failed." || line == "Build succeeded.";
}

}  // namespace

std::string_view CompilerWords(std::string_view message) {
  if (message.starts_with(kCompileFailed)) message.remove_prefix(kCompileFailed.size());
  return message;
}

std::vector<CompilerError> CompilerErrors(std::string_view log) {
  std::vector<CompilerError> placed;
  std::vector<CompilerError> others;
  while (!log.empty() && placed.size() < kErrorLimit) {
    const std::size_t end = log.find_first_of("\r\n");
    const std::string_view line = Trimmed(log.substr(0, end));
    log.remove_prefix(end == std::string_view::npos ? log.size() : end + 1);
    if (line.empty() || IsVerdict(line)) continue;
    if (auto error = ReadPlace(line)) {
      placed.push_back(std::move(*error));
    } else if (others.size() < kErrorLimit) {
      others.push_back({"", 0, std::string(line)});
    }
  }
  return placed.empty() ? others : placed;
}

}  // namespace hearthmake::host
