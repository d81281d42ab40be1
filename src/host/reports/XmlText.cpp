#include "host/reports/XmlText.hpp"

#include "automation/Utf.hpp"

namespace hearthmake::host {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsXmlCharacter(char32_t c) {
  if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
  // The C1 controls are allowed and of no use to anybody.
  return (c < 0x7F || c > 0x9F) && (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

void Append(std::string& xml, char32_t c, bool isAttribute) {
  switch (c) {
    case '&': xml += "&amp;"; return;
    case '<': xml += "&lt;"; return;
    case '>': xml += "&gt;"; return;
    case '"': xml += isAttribute ? "&quot;" : "\""; return;
    case '\t': xml += isAttribute ? "&#9;" : "\t"; return;
    case '\n': xml += isAttribute ? "&#10;" : "\n"; return;
    default: automation::AppendUtf8(xml, IsXmlCharacter(c) ? c : kReplacement);
  }
}

std::string Escaped(std::string_view text, bool isAttribute) {
  std::string xml;
  xml.reserve(text.size());
  while (!text.empty()) {
    char32_t c = automation::DecodeUtf8(text);
    text.remove_prefix(automation::Utf8SequenceLength(text));
    if (c == '\r') {
      if (text.starts_with('\n')) continue;
      c = '\n';
    }
    Append(xml, c, isAttribute);
  }
  return xml;
}

}  // namespace

std::string XmlContent(std::string_view text) { return Escaped(text, false); }

std::string XmlAttribute(std::string_view text) { return Escaped(text, true); }

}  // namespace hearthmake::host
