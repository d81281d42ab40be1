#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hearthmake::host {

enum class Colour { Red, Green, Yellow };

// Standard output and standard error. A reader that has gone away is no failure of the command's work, so
// nothing here throws.
class Console {
 public:
  // Colours are left out when they are not wanted (also by NO_COLOR) and where no terminal is.
  explicit Console(bool noColour);

  // As they stand, without a line end of their own.
  void Out(std::string_view text) const;
  void Err(std::string_view text) const;
  // A line on standard error that is no result and no failure.
  void Note(std::string_view text) const;

  // Whether standard output is a terminal that can draw a line anew.
  bool CanRedraw() const { return m_canRedraw; }
  // Columns of the terminal, now.
  std::size_t Width() const;

  std::string PaintOut(Colour colour, std::string_view text) const;
  std::string PaintErr(Colour colour, std::string_view text) const;

 private:
  bool m_canRedraw;
  bool m_coloursOut;
  bool m_coloursErr;
};

// Text that others wrote, fit for a terminal: line ends as line feeds, none at the end, and control
// characters replaced.
std::string Printable(std::string_view text);

}  // namespace hearthmake::host
