#include "host/page/CompileErrors.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"

namespace hearthmake::host {

namespace {

constexpr std::string_view kStart = "Compile Error in File '";
constexpr std::string_view kMiddle = "', Line ";
constexpr std::string_view kEnd = " : ";
constexpr std::size_t kContext = 4;  // lines before, and after
constexpr std::size_t kLongest = 240;
// Sources are some thousand lines; this is no source.
constexpr std::int64_t kLargestSource = std::int64_t{8} * 1024 * 1024;

// Takes the text up to a marker, and both, off the rest. False when it has none.
bool TakeUntil(std::string_view& rest, std::string_view marker, std::string_view& taken) {
  const std::size_t at = rest.find(marker);
  if (at == std::string_view::npos) return false;
  taken = rest.substr(0, at);
  rest.remove_prefix(at + marker.size());
  return true;
}

bool ParseNumber(std::string_view text, std::size_t& number) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

SourceExcerpt::Line MakeLine(std::size_t number, std::string_view bytes) {
  const bool isCut = bytes.size() > kLongest;
  return {number, automation::Windows1252ToUtf8(bytes.substr(0, kLongest)) + (isCut ? " ..." : "")};
}

SourceExcerpt Excerpt(std::string_view source, std::size_t line) {
  SourceExcerpt excerpt;
  const std::size_t first = line > kContext ? line - kContext : 1;
  bool hasLine = false;
  for (std::size_t number = 1; !source.empty() && number <= line + kContext; ++number) {
    const std::size_t end = source.find('\n');
    std::string_view text = source.substr(0, end);
    source.remove_prefix(end == std::string_view::npos ? source.size() : end + 1);
    if (text.ends_with('\r')) text.remove_suffix(1);
    if (number >= first) excerpt.lines.push_back(MakeLine(number, text));
    hasLine |= number == line;
  }
  if (!hasLine) excerpt.lines.clear();
  return excerpt;
}

}  // namespace

std::vector<CompileError> CompileErrorsOf(std::string_view log, std::size_t most) {
  std::vector<CompileError> errors;
  std::string_view rest = log;
  std::string_view before;
  while (errors.size() < most && TakeUntil(rest, kStart, before)) {
    std::string_view line = rest.substr(0, rest.find_first_of("\r\n"));
    std::string_view file;
    std::string_view number;
    CompileError error;
    if (!TakeUntil(line, kMiddle, file) || !TakeUntil(line, kEnd, number) || !ParseNumber(number, error.line))
      continue;
    error.file = file;
    error.text = line;
    errors.push_back(std::move(error));
  }
  return errors;
}

SourceExcerpt ReadExcerpt(const CompileError& error, std::string_view folder) {
  if (error.line == 0) return {};
  try {
    const std::string path = AbsolutePath(folder, error.file);
    const std::int64_t size = Ports().files->Stamp(path).size;
    if (size < 0 || size > kLargestSource) return {};
    return Excerpt(Ports().files->Read(path), error.line);
  } catch (const automation::Error&) {
    return {};
  }
}

}  // namespace hearthmake::host
