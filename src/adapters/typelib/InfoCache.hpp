#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "platform/FileSystem.hpp"
#include "platform/TypeLibReader.hpp"

namespace hearthmake::typelib {

// The libraries that were read last, by the path they were asked for with. Case makes no difference.
class InfoCache {
 public:
  struct Entry {
    std::string file;  // the path without the resource number
    platform::FileStamp stamp;
    platform::TypeLibInfo info;
  };

  // The entry used longest ago goes when there are more than this.
  explicit InfoCache(std::size_t capacity) : m_capacity(capacity) {}

  // nullptr when the path is not known; else valid until the next call.
  const Entry* Find(std::string_view path);
  void Put(std::string_view path, Entry entry);

 private:
  using Order = std::list<std::pair<std::string, Entry>>;  // the latest first

  std::size_t m_capacity;
  Order m_order;
  std::unordered_map<std::string_view, Order::iterator> m_byPath;  // the keys live in m_order
};

}  // namespace hearthmake::typelib
