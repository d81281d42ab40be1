#include "host/page/SourceExcerpt.hpp"

#include <cstdint>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"

namespace hearthmake::host {

namespace {

constexpr std::size_t kContext = 4;  // lines before, and after
constexpr std::size_t kLongest = 240;
// Sources are some thousand lines; this is no source.
constexpr std::int64_t kLargestSource = std::int64_t{8} * 1024 * 1024;

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

SourceExcerpt ReadExcerpt(const CompilerError& error, std::string_view folder) {
  if (error.file.empty() || error.line == 0) return {};
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
