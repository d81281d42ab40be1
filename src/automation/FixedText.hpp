#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "automation/Text.hpp"

namespace hearthmake::automation {

// A text field of fixed width: a longer text is cut at Width characters, and readers see it without
// leading and trailing blanks. The padding of such fields can't be observed, so it is not stored.
template <std::size_t Width>
class FixedText {
 public:
  FixedText() = default;
  FixedText& operator=(std::string_view value) {
    m_text = Trim(Left(value, Width));
    return *this;
  }

  const std::string& Get() const { return m_text; }
  bool IsEmpty() const { return m_text.empty(); }

  friend bool operator==(const FixedText&, const FixedText&) = default;

 private:
  std::string m_text;
};

}  // namespace hearthmake::automation
