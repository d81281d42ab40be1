#include "adapters/jet/TextCode.hpp"

#include <iconv.h>

#include <array>
#include <cerrno>

#include "adapters/jet/Failure.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::jet {

namespace {

constexpr std::uint16_t kWindows1252 = 1252;
constexpr std::string_view kCompressed = "\xFF\xFE";
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

char16_t Unit(unsigned char low, unsigned char high) { return static_cast<char16_t>(low | high << 8); }

// A zero byte changes between one byte a character and two.
std::u16string Decompressed(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size());
  bool isShort = true;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    if (low == 0) {
      isShort = !isShort;
      ++i;
    } else if (isShort) {
      text += Unit(low, 0);
      ++i;
    } else if (i + 1 < bytes.size()) {
      text += Unit(low, static_cast<unsigned char>(bytes[i + 1]));
      i += 2;
    } else {
      text += u'\uFFFD';
      break;
    }
  }
  return text;
}

std::u16string Units(std::string_view bytes) {
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    text += Unit(static_cast<unsigned char>(bytes[i]), static_cast<unsigned char>(bytes[i + 1]));
  }
  if (bytes.size() % 2 != 0) text += u'\uFFFD';
  return text;
}

}  // namespace

struct TextCode::CodePage {
  explicit CodePage(std::uint16_t number)
      : converter(iconv_open("UTF-8", ("CP" + std::to_string(number)).c_str())) {}
  CodePage(const CodePage&) = delete;
  CodePage& operator=(const CodePage&) = delete;
  ~CodePage() {
    if (IsKnown()) iconv_close(converter);
  }
  bool IsKnown() const { return converter != reinterpret_cast<iconv_t>(-1); }

  std::string Decode(std::string_view bytes) const {
    std::string text;
    std::array<char, 4096> buffer;
    char* in = const_cast<char*>(bytes.data());  // which iconv does not write to
    std::size_t left = bytes.size();
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    while (left > 0) {
      char* out = buffer.data();
      std::size_t room = buffer.size();
      const std::size_t result = iconv(converter, &in, &left, &out, &room);
      text.append(buffer.data(), buffer.size() - room);
      if (result != static_cast<std::size_t>(-1) || errno == E2BIG) continue;
      text += kReplacement;
      ++in;
      --left;
    }
    return text;
  }

  iconv_t converter;
};

TextCode::TextCode(const FileHeader& header) : m_version(header.version) {
  const bool isPlain = header.codePage == kWindows1252 || header.codePage == 0;
  if (m_version != Version::Jet3 || isPlain) return;
  m_codePage = std::make_unique<CodePage>(header.codePage);
  if (m_codePage->IsKnown()) return;
  automation::Raise(
      kForeignFormat, kSource,
      "The texts are in code page " + std::to_string(header.codePage) + ", which is not known here.");
}

TextCode::~TextCode() = default;

std::string TextCode::Decode(std::string_view bytes) const {
  if (m_version == Version::Jet3) {
    return m_codePage ? m_codePage->Decode(bytes) : automation::Windows1252ToUtf8(bytes);
  }
  const bool isCompressed = bytes.starts_with(kCompressed);
  return automation::Utf16ToUtf8(isCompressed ? Decompressed(bytes.substr(2)) : Units(bytes));
}

}  // namespace hearthmake::jet
