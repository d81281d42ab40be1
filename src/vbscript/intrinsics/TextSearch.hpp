#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// Looks for one text in others, its work charged to the budget.
class TextSearch {
 public:
  static constexpr std::size_t kNotFound = std::u16string_view::npos;

  // The sought text stays where it is as long as the search is used.
  TextSearch(Context& context, std::u16string_view sought, bool ignoreCase);

  // The first place at or after start; an empty text is found at once.
  std::size_t Find(std::u16string_view text, std::size_t start) const;
  // The last place at which the text stands; an empty one stands at the end.
  std::size_t FindLast(std::u16string_view text) const;

 private:
  std::size_t FindFirstUnit(std::u16string_view text, std::size_t start, std::size_t end) const;
  bool StandsAt(std::u16string_view text, std::size_t place) const;

  Context& m_context;
  std::u16string m_folded;  // what is sought in small letters, when case does not count
  std::u16string_view m_sought;
  bool m_ignoreCase;
};

}  // namespace hearthmake::vbscript
