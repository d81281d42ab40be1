#pragma once

#include <string>
#include <string_view>

namespace hearthmake::host {

// Text for an XML 1.0 document in UTF-8: markup is escaped, and what XML can't hold (control characters,
// bytes that are no UTF-8, surrogates, U+FFFE and U+FFFF) becomes U+FFFD.

// As content of an element. Line ends become line feeds, as a reader makes them anyway.
std::string XmlContent(std::string_view text);
// As the value of an attribute, without the quotes; line ends and tabs survive.
std::string XmlAttribute(std::string_view text);

}  // namespace hearthmake::host
