#include "vbscript/values/OneUnitTexts.hpp"

namespace hearthmake::vbscript {

OneUnitTexts::OneUnitTexts() : m_empty(automation::Variant::FromUtf16({})) {
  for (std::size_t unit = 0; unit < kCount; ++unit) {
    const auto text = static_cast<char16_t>(unit);
    m_texts[unit] = automation::Variant::FromUtf16({&text, 1});
  }
}

}  // namespace hearthmake::vbscript
