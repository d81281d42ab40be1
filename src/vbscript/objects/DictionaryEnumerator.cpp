#include "vbscript/objects/DictionaryEnumerator.hpp"

namespace hearthmake::vbscript {

bool DictionaryEnumerator::Next(automation::Variant& item) {
  const DictionaryTable& table = m_dictionary->Table();
  if (m_generation != table.Generation()) {
    m_place = table.PlaceOfOrdinal(m_ordinal);
    m_generation = table.Generation();
  }
  const std::size_t place = table.Next(m_place);
  if (place == DictionaryTable::kNoPlace) return false;
  m_place = place + 1;
  m_ordinal = table.Ordinal(place) + 1;
  // Last: what the item held before may go with it, and run code that changes the dictionary.
  item = automation::Variant(table.Key(place));
  return true;
}

}  // namespace hearthmake::vbscript
