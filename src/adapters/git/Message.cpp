#include "adapters/git/Message.hpp"

#include "automation/Utf.hpp"

namespace hearthmake::git {

namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";

std::string LinesOf(std::string_view comment) {
  std::string text;
  for (std::size_t i = 0; i < comment.size(); ++i) {
    const char c = comment[i];
    if (c == '\0') continue;  // a commit's message can't hold one
    if (c == '\r' && i + 1 < comment.size() && comment[i + 1] == '\n') continue;
    text += c == '\r' ? '\n' : c;
  }
  while (text.ends_with('\n')) text.pop_back();
  return text;
}

std::string Escaped(std::string_view value) {
  std::string text;
  for (const char c : value) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= ' ' && c != '%' && byte != 0x7F) {
      text += c;
    } else {
      text += {'%', kHexDigits[byte >> 4U], kHexDigits[byte & 15U]};
    }
  }
  return text;
}

std::string Unescaped(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const std::size_t high = value[i] == '%' && i + 2 < value.size() ? kHexDigits.find(value[i + 1]) : 16;
    const std::size_t low = high < 16 ? kHexDigits.find(value[i + 2]) : 16;
    if (low < 16) {
      text += static_cast<char>(high << 4U | low);
      i += 2;
    } else {
      text += value[i];
    }
  }
  return text;
}

// "Name: value"; a name is letters and dashes.
std::optional<std::pair<std::string, std::string>> TrailerOf(std::string_view line) {
  const std::size_t colon = line.find(": ");
  if (colon == 0 || colon == std::string_view::npos) return std::nullopt;
  const std::string_view name = line.substr(0, colon);
  for (const char c : name) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (!isLetter && c != '-') return std::nullopt;
  }
  return std::pair(std::string(name), Unescaped(line.substr(colon + 2)));
}

// All the lines as trailers, or none of them.
Trailers TrailersOf(std::string_view paragraph) {
  Trailers trailers;
  while (!paragraph.empty()) {
    const std::size_t end = paragraph.find('\n');
    const auto trailer = TrailerOf(paragraph.substr(0, end));
    if (!trailer) return {};
    trailers.push_back(*trailer);
    paragraph.remove_prefix(end == std::string_view::npos ? paragraph.size() : end + 1);
  }
  return trailers;
}

}  // namespace

std::string PrintMessage(std::string_view comment, const Trailers& trailers) {
  std::string text = LinesOf(comment);
  if (!text.empty()) text += '\n';
  if (!text.empty() && !trailers.empty()) text += '\n';
  for (const auto& [name, value] : trailers) text += name + ": " + Escaped(value) + "\n";
  return text;
}

std::optional<std::string> Message::Find(std::string_view name) const {
  std::optional<std::string> found;
  for (const auto& [known, value] : trailers) {
    if (known == name) found = value;
  }
  return found;
}

Message ParseMessage(std::string_view text) {
  while (text.ends_with('\n')) text.remove_suffix(1);
  const std::size_t blank = text.rfind("\n\n");
  const std::size_t last = blank == std::string_view::npos ? 0 : blank + 2;
  Message message;
  message.trailers = TrailersOf(text.substr(last));
  if (!message.trailers.empty()) text = text.substr(0, blank == std::string_view::npos ? 0 : blank);
  message.comment = ReadableText(text);
  return message;
}

std::string ReadableText(std::string_view bytes) {
  for (std::string_view rest = bytes; !rest.empty();) {
    const std::size_t length = automation::Utf8SequenceLength(rest);
    if (length == 1 && static_cast<unsigned char>(rest.front()) >= 0x80)
      return automation::Windows1252ToUtf8(bytes);
    rest.remove_prefix(length);
  }
  return std::string(bytes);
}

std::string_view TrimBlanks(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

}  // namespace hearthmake::git
