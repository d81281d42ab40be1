#include "host/annotations/PercentEscape.hpp"

#include <fmt/format.h>

namespace hearthmake::host {

std::string PercentEscape(std::string_view text, std::string_view characters) {
  std::string escaped;
  for (const char c : text) {
    if (characters.find(c) == std::string_view::npos) {
      escaped += c;
    } else {
      escaped += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
  }
  return escaped;
}

}  // namespace hearthmake::host
