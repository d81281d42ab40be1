#pragma once

#include <cstdint>

#include "automation/Object.hpp"
#include "vbscript/objects/Dictionary.hpp"

namespace hearthmake::vbscript {

// Walks the keys of a dictionary that may change meanwhile, without a copy of them.
class DictionaryEnumerator final : public automation::Enumerator {
 public:
  explicit DictionaryEnumerator(Dictionary* dictionary) : m_dictionary(dictionary) {}

  bool Next(automation::Variant& item) override;

 private:
  automation::Ref<Dictionary> m_dictionary;
  std::size_t m_place = 0;
  std::uint64_t m_ordinal = 0;  // of the first entry that has not been given yet
  std::uint64_t m_generation = ~std::uint64_t{0};
};

}  // namespace hearthmake::vbscript
