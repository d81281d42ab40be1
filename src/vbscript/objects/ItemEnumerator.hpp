#pragma once

#include <utility>
#include <vector>

#include "automation/Object.hpp"

namespace hearthmake::vbscript {

// A walk over items as they were when it began.
class ItemEnumerator final : public automation::Enumerator {
 public:
  explicit ItemEnumerator(std::vector<automation::Variant> items) : m_items(std::move(items)) {}

  bool Next(automation::Variant& item) override {
    if (m_next == m_items.size()) return false;
    item = m_items[m_next++];
    return true;
  }

 private:
  std::vector<automation::Variant> m_items;
  std::size_t m_next = 0;
};

}  // namespace hearthmake::vbscript
