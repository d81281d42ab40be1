#include "host/page/Html.hpp"

#include "host/text/CleanText.hpp"

namespace hearthmake::host {

std::string Html(std::string_view text) {
  std::string html;
  html.reserve(text.size() + text.size() / 8);
  for (const char c : CleanText(text)) {
    switch (c) {
      case '&': html += "&amp;"; break;
      case '<': html += "&lt;"; break;
      case '>': html += "&gt;"; break;
      case '"': html += "&quot;"; break;
      case '\'': html += "&#39;"; break;
      default: html += c;
    }
  }
  return html;
}

}  // namespace hearthmake::host
