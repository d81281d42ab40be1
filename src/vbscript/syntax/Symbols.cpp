#include "vbscript/syntax/Symbols.hpp"

#include "automation/Utf.hpp"
#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {

Symbols::Symbols() { m_names.emplace_back(); }

Symbol Symbols::Intern(std::u16string_view name) {
  const auto [entry, isNew] = m_byFoldedName.try_emplace(Lower(name), static_cast<Symbol>(m_names.size()));
  if (isNew) m_names.push_back({std::u16string(name), automation::Utf16ToUtf8(name)});
  return entry->second;
}

Symbol Symbols::Find(std::u16string_view name) const {
  const auto entry = m_byFoldedName.find(Lower(name));
  return entry == m_byFoldedName.end() ? Symbol::None : entry->second;
}

}  // namespace hearthmake::vbscript
