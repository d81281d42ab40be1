#include "adapters/typelib/InfoCache.hpp"

namespace hearthmake::typelib {

namespace {

// ASCII only: two spellings of another letter make two entries, which costs a second look and no more.
std::string LowerCase(std::string_view path) {
  std::string lower(path);
  // Stores to every place, which compilers turn into sixteen characters at a time.
  for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
  return lower;
}

}  // namespace

const InfoCache::Entry* InfoCache::Find(std::string_view path) {
  const auto found = m_byPath.find(LowerCase(path));
  if (found == m_byPath.end()) return nullptr;
  m_order.splice(m_order.begin(), m_order, found->second);
  return &m_order.front().second;
}

void InfoCache::Put(std::string_view path, Entry entry) {
  std::string key = LowerCase(path);
  const auto found = m_byPath.find(key);
  if (found != m_byPath.end()) {
    found->second->second = std::move(entry);
    m_order.splice(m_order.begin(), m_order, found->second);
    return;
  }
  m_order.emplace_front(std::move(key), std::move(entry));
  m_byPath.emplace(m_order.front().first, m_order.begin());
  if (m_order.size() > m_capacity) {
    m_byPath.erase(m_order.back().first);
    m_order.pop_back();
  }
}

}  // namespace hearthmake::typelib
