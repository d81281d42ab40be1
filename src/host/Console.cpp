#include "host/Console.hpp"

#include <cstdio>
#include <cstdlib>

#include "host/system/Terminal.hpp"

namespace hearthmake::host {

namespace {

constexpr std::size_t kDefaultWidth = 80;

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

std::string Paint(bool isPainted, Colour colour, std::string_view text) {
  if (!isPainted) return std::string(text);
  const char* code = colour == Colour::Red ? "31" : colour == Colour::Green ? "32" : "33";
  return std::string("\x1b[1;") + code + "m" + std::string(text) + "\x1b[0m";
}

void Write(FILE* stream, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

}  // namespace

Console::Console(bool noColour)
    : m_canRedraw(IsCapableTerminal(StandardStream::Output)),
      m_coloursOut(m_canRedraw && !noColour && !IsSet("NO_COLOR")),
      m_coloursErr(IsCapableTerminal(StandardStream::Error) && !noColour && !IsSet("NO_COLOR")) {}

void Console::Out(std::string_view text) const { Write(stdout, text); }
void Console::Err(std::string_view text) const { Write(stderr, text); }

void Console::Note(std::string_view text) const { Err("hearthmake: " + std::string(text) + "\n"); }

std::size_t Console::Width() const { return TerminalWidth().value_or(kDefaultWidth); }

std::string Console::PaintOut(Colour colour, std::string_view text) const {
  return Paint(m_coloursOut, colour, text);
}
std::string Console::PaintErr(Colour colour, std::string_view text) const {
  return Paint(m_coloursErr, colour, text);
}

std::string Printable(std::string_view text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
  std::string printable;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    const bool isLineEnd = c == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    if (isLineEnd) continue;
    const bool isHarmless = c == '\n' || c == '\t' || (c >= 0x20 && c != 0x7F);
    printable += isHarmless ? text[i] : c == '\r' ? '\n' : '?';
  }
  return printable;
}

}  // namespace hearthmake::host
