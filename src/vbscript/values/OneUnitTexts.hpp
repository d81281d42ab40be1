#pragma once

#include <array>
#include <string_view>

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// The empty text and the texts of one unit below 256, made once and shared by all who need one: loops over
// the characters of a text make millions of them. Belongs to one engine, since counting references to a
// text is not safe between threads; the texts themselves may outlive it.
class OneUnitTexts {
 public:
  OneUnitTexts();
  OneUnitTexts(const OneUnitTexts&) = delete;
  OneUnitTexts& operator=(const OneUnitTexts&) = delete;

  // A value of subtype String with this text; a shared one where there is one.
  automation::Variant Text(std::u16string_view text) const {
    if (text.size() > 1 || (text.size() == 1 && text[0] >= kCount))
      return automation::Variant::FromUtf16(text);
    return text.empty() ? m_empty : m_texts[text[0]];
  }
  automation::Variant Unit(char16_t unit) const { return Text({&unit, 1}); }
  automation::Variant Empty() const { return m_empty; }

 private:
  static constexpr std::size_t kCount = 256;

  automation::Variant m_empty;
  std::array<automation::Variant, kCount> m_texts;
};

}  // namespace hearthmake::vbscript
