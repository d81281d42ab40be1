#pragma once

#include <cstdint>

#include "automation/Object.hpp"

namespace hearthmake::vbscript {

// Walks a collection that never changes by its numbers, Count() of them from 0.
template <class Collection>
class IndexEnumerator final : public automation::Enumerator {
 public:
  explicit IndexEnumerator(Collection* collection) : m_collection(collection) {}

  bool Next(automation::Variant& item) override {
    if (m_next >= m_collection->Count()) return false;
    item = automation::Variant(m_collection->Item(m_next++));
    return true;
  }

 private:
  automation::Ref<Collection> m_collection;
  std::int32_t m_next = 0;
};

}  // namespace hearthmake::vbscript
