#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace hearthmake::posix {

// Walks from key to key of a KeyTree by path. Paths that are asked for one after the other mostly share
// their beginnings, as in a file in order and among the keys of a component: a walk goes on from there.
template <class Tree>
class KeyTrail {
 public:
  using Key = typename Tree::Key;

  // The tree and the key that paths start at must stay, and no key below may be removed.
  KeyTrail(Tree& tree, Key& start) : m_tree(tree), m_key(&start) {}

  // Null when there is no such key.
  Key* Find(std::string_view path) {
    return Follow(path, [&](Key& parent, std::string_view name) { return m_tree.Child(parent, name); });
  }
  // Makes what is missing. Error 5 as with KeyTree's own.
  Key& Make(std::string_view path) {
    return *Follow(path, [&](Key& parent, std::string_view name) { return &m_tree.MakeChild(parent, name); });
  }

 private:
  template <class Step>
  Key* Follow(std::string_view path, Step step) {
    const std::size_t shared = SharedLength(m_path, path);
    std::string_view rest = std::string_view(m_path).substr(shared);
    while (!Tree::TakeName(rest).empty()) m_key = m_key->parent;
    m_path.resize(shared);
    rest = path.substr(shared);
    Key* key = m_key;
    for (std::string_view name = Tree::TakeName(rest); !name.empty(); name = Tree::TakeName(rest)) {
      key = step(*key, name);
      if (key == nullptr) return nullptr;
    }
    m_key = key;
    m_path += path.substr(shared);
    return key;
  }

  // How long the beginning is that both paths have alike, and that ends between two names of both.
  static std::size_t SharedLength(std::string_view left, std::string_view right) {
    const std::size_t length = SameBytes(left, right);
    const auto isEnd = [&](std::string_view path) { return length == path.size() || path[length] == '\\'; };
    if (isEnd(left) && isEnd(right)) return length;
    return left.substr(0, length).rfind('\\') + 1;  // npos + 1 is 0
  }

  // A word at a time: nearly all of both is the same.
  static std::size_t SameBytes(std::string_view left, std::string_view right) {
    const std::size_t most = std::min(left.size(), right.size());
    std::size_t length = 0;
    for (std::uint64_t l = 0, r = 0; most - length >= sizeof l; length += sizeof l) {
      std::memcpy(&l, left.data() + length, sizeof l);
      std::memcpy(&r, right.data() + length, sizeof r);
      if (l != r) break;
    }
    while (length < most && left[length] == right[length]) ++length;
    return length;
  }

  Tree& m_tree;
  Key* m_key;          // the last one
  std::string m_path;  // its path
};

}  // namespace hearthmake::posix
