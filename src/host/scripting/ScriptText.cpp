#include "host/scripting/ScriptText.hpp"

#include <utility>

#include "vbscript/objects/TextEncoding.hpp"

namespace hearthmake::host {

namespace {

using vbscript::DecodeText;
using vbscript::TextEncoding;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16Mark = vbscript::kUtf16Mark;
constexpr std::string_view kSwappedUtf16Mark = "\xFE\xFF";

std::string WithBytesSwapped(std::string_view bytes) {
  std::string swapped(bytes);
  for (std::size_t i = 0; i + 1 < swapped.size(); i += 2) std::swap(swapped[i], swapped[i + 1]);
  return swapped;
}

std::u16string Decoded(TextEncoding encoding, std::string_view bytes) {
  std::u16string text;
  DecodeText(encoding, bytes, true, text);
  return text;
}

}  // namespace

bool HasMark(std::string_view bytes) {
  return bytes.starts_with(kUtf8Mark) || bytes.starts_with(kUtf16Mark) ||
         bytes.starts_with(kSwappedUtf16Mark);
}

std::u16string DecodeScript(std::string_view bytes) {
  if (bytes.starts_with(kUtf8Mark)) return Decoded(TextEncoding::Utf8, bytes.substr(kUtf8Mark.size()));
  if (bytes.starts_with(kUtf16Mark)) return Decoded(TextEncoding::Utf16, bytes.substr(kUtf16Mark.size()));
  if (bytes.starts_with(kSwappedUtf16Mark)) {
    return Decoded(TextEncoding::Utf16, WithBytesSwapped(bytes.substr(kSwappedUtf16Mark.size())));
  }
  return Decoded(TextEncoding::Windows1252, bytes);
}

}  // namespace hearthmake::host
