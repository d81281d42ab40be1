#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vbscript/objects/MatchTable.hpp"

namespace hearthmake::vbscript {

// A replacement text, taken apart once for all matches: $1 to $99 stand for groups, $& for the match, $`
// and $' for what stands before and behind it, $$ for a dollar sign. A number without a group is literal;
// of two digits the first alone counts where only that has a group.
class RegExpReplacement {
 public:
  // The text outlives the replacement.
  RegExpReplacement(std::u16string_view text, std::uint32_t groups);

  // Appends what takes the place of a match.
  void AppendTo(std::u16string& result, const MatchTable& matches, std::size_t match) const;
  // How long that is.
  std::size_t LengthFor(const MatchTable& matches, std::size_t match) const;

 private:
  enum class Kind : std::uint8_t { Literal, Match, Before, Behind, Group };
  struct Part {
    Kind kind;
    std::u16string_view literal;
    std::uint32_t group = 0;  // from 0
  };

  static std::u16string_view TextOf(const Part& part, const MatchTable& matches, std::size_t match);

  std::vector<Part> m_parts;
};

}  // namespace hearthmake::vbscript
