#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/posix/TextEncoding.hpp"
#include "automation/Error.hpp"

namespace hearthmake::posix {

// Keys of a registry by path, each with some content. Names are matched without regard to case; empty
// names in a path (a doubled or final backslash) do not count. The empty path is the root.
template <class Content>
class KeyTree {
 public:
  // As deep as Windows allows; also keeps the walks below from overrunning the stack.
  static constexpr std::size_t kDeepest = 512;

  struct Key {
    std::string name;
    Content content;
    std::map<std::string, std::unique_ptr<Key>> children;  // by folded name

    Key* Child(std::string_view childName) const {
      const auto found = children.find(FoldCase(childName));
      return found == children.end() ? nullptr : found->second.get();
    }
  };

  // Takes the first name off a path; empty when there is none left.
  static std::string_view TakeName(std::string_view& path) {
    path.remove_prefix(std::min(path.find_first_not_of('\\'), path.size()));
    const std::string_view name = path.substr(0, path.find('\\'));
    path.remove_prefix(name.size());
    return name;
  }

  Key& Root() { return m_root; }

  // Null when there is no such key.
  Key* Find(std::string_view path) {
    Key* key = &m_root;
    while (key != nullptr) {
      const std::string_view name = TakeName(path);
      if (name.empty()) break;
      key = key->Child(name);
    }
    return key;
  }

  // Error 5 for a path of more than kDeepest names.
  Key& Make(std::string_view path) {
    Key* key = &m_root;
    std::size_t depth = 0;
    for (std::string_view name = TakeName(path); !name.empty(); name = TakeName(path)) {
      if (++depth > kDeepest)
        automation::Raise(automation::RuntimeError::InvalidProcedureCall, "Registry",
                          "keys lie at most " + std::to_string(kDeepest) + " levels deep");
      std::unique_ptr<Key>& child = key->children[FoldCase(name)];
      if (!child) child.reset(new Key{std::string(name), {}, {}});
      key = child.get();
    }
    return *key;
  }

  // Removes a key with all below it. False when it was not there; the root stays.
  bool Remove(std::string_view path) {
    Key* parent = &m_root;
    for (std::string_view name = TakeName(path); !name.empty();) {
      const std::string_view next = TakeName(path);
      if (next.empty()) return parent->children.erase(FoldCase(name)) != 0;
      parent = parent->Child(name);
      if (parent == nullptr) return false;
      name = next;
    }
    return false;
  }

 private:
  Key m_root;
};

}  // namespace hearthmake::posix
