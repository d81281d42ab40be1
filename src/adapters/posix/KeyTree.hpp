#pragma once

#include <algorithm>
#include <functional>
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
    std::map<std::string, std::unique_ptr<Key>, std::less<>> children;  // by folded name

    Key* Child(std::string_view childName) const {
      const auto found = children.find(FoldCase(childName));
      return found == children.end() ? nullptr : found->second.get();
    }
    // Null when there is no such key. The path is below this key and in FoldCase already.
    Key* Below(std::string_view foldedPath) {
      Key* key = this;
      for (std::string_view part = TakeName(foldedPath); !part.empty(); part = TakeName(foldedPath)) {
        const auto found = key->children.find(part);
        if (found == key->children.end()) return nullptr;
        key = found->second.get();
      }
      return key;
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
  Key* Find(std::string_view path) { return m_root.Below(FoldCase(path)); }

  // Error 5 for a path of more than kDeepest names.
  Key& Make(std::string_view path) { return MakeBelow(m_root, 0, path); }
  // The same for a path below a key, which lies so many levels below the root.
  Key& MakeBelow(Key& start, std::size_t depth, std::string_view path) {
    Key* key = &start;
    // Folding keeps the backslashes, so that both paths have the same names.
    const std::string folded = FoldCase(path);
    std::string_view foldedPath = folded;
    for (std::string_view name = TakeName(path); !name.empty(); name = TakeName(path)) {
      if (++depth > kDeepest)
        automation::Raise(automation::RuntimeError::InvalidProcedureCall, "Registry",
                          "keys lie at most " + std::to_string(kDeepest) + " levels deep");
      const std::string_view foldedName = TakeName(foldedPath);
      auto place = key->children.lower_bound(foldedName);
      if (place == key->children.end() || place->first != foldedName) {
        place = key->children.emplace_hint(place, foldedName,
                                           std::unique_ptr<Key>(new Key{std::string(name), {}, {}}));
      }
      key = place->second.get();
    }
    return *key;
  }

  // Removes a key with all below it. False when it was not there; the root stays.
  bool Remove(std::string_view path) {
    const std::string folded = FoldCase(path.substr(0, path.find_last_not_of('\\') + 1));  // npos + 1 is 0
    const std::size_t nameStart = folded.rfind('\\') + 1;
    Key* parent = m_root.Below(std::string_view(folded).substr(0, nameStart));
    return parent != nullptr && parent->children.erase(folded.substr(nameStart)) != 0;
  }

 private:
  Key m_root;
};

}  // namespace hearthmake::posix
