#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hearthmake::git {

// The messages of commits and tags. What the adapter has to remember stands in lines `Name: value` at their
// end, as git's own trailers do, so that `git show` reads well.

using Trailers = std::vector<std::pair<std::string, std::string>>;

// The comment, then the lines. Line ends become LF; control characters and "%" of a value are written %XX.
std::string PrintMessage(std::string_view comment, const Trailers& trailers);

struct Message {
  std::string comment;
  Trailers trailers;  // those of the last paragraph, when each of its lines is one

  // Of the last trailer of the name; nothing when there is none.
  std::optional<std::string> Find(std::string_view name) const;
};

Message ParseMessage(std::string_view text);

// The text as UTF-8: as it is when it is that, else taken for Windows-1252.
std::string ReadableText(std::string_view bytes);

// Without blanks and tabs at its ends.
std::string_view TrimBlanks(std::string_view text);

}  // namespace hearthmake::git
