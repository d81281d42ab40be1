#include "adapters/sqlite/ColumnNames.hpp"

#include <algorithm>
#include <utility>

namespace hearthmake::sqlite {

namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  return a == b ||
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Lower(x) == Lower(y); });
}

ColumnNames::ColumnNames(std::vector<std::string> names)
    : m_names(std::move(names)), m_successor(m_names.size()) {
  for (std::size_t i = 0; i < m_names.size(); ++i) m_successor[i] = (i + 1) % m_names.size();
}

std::size_t ColumnNames::Find(std::string_view name, std::size_t& last) {
  if (last < m_names.size()) {
    const std::size_t expected = m_successor[last];
    // As a rule it is spelled like that too.
    if (m_names[expected] == name || SameName(m_names[expected], name)) return last = expected;
    // IsNull is often followed by a read of the same column; that says nothing of the order.
    if (SameName(m_names[last], name)) return last;
  }
  for (std::size_t i = 0; i < m_names.size(); ++i) {
    if (!SameName(m_names[i], name)) continue;
    if (last < m_names.size()) m_successor[last] = i;
    return last = i;
  }
  return kNotFound;
}

}  // namespace hearthmake::sqlite
