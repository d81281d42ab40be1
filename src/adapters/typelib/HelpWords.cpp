#include "adapters/typelib/HelpWords.hpp"

#include <cstddef>

namespace hearthmake::typelib {

namespace {

constexpr char kTree[] = "the tree of help words";
// A node with branches: this mark, then the place of the branch for 0, high byte first. The branch for 1
// follows. Anything else is a leaf: one unknown byte and the word, which a zero ends.
constexpr std::uint8_t kBranches = 0x80;
constexpr std::size_t kLongestString = 0x10000;

std::string Word(const ByteView& tree, std::uint64_t leaf) {
  std::string word;
  for (std::uint64_t at = leaf + 1;; ++at) {
    const auto character = static_cast<char>(tree.U8(at, kTree));
    if (character == '\0') return word;
    if (word.size() == kLongestString) tree.FailAt(leaf, "is damaged: there is a help word without an end");
    word += character;
  }
}

}  // namespace

// The bits of a packed string, the highest of each byte first.
class HelpWords::Bits {
 public:
  explicit Bits(const std::string& bytes) : m_bytes(bytes) {}

  bool AtEnd() const { return m_next == m_bytes.size() * 8; }
  bool Take() {
    const auto byte = static_cast<std::uint8_t>(m_bytes[m_next / 8]);
    const bool bit = (byte >> (7 - m_next % 8) & 1) != 0;
    ++m_next;
    return bit;
  }

 private:
  const std::string& m_bytes;
  std::size_t m_next = 0;
};

std::string HelpWords::Unpack(const std::string& packed) const {
  if (packed.empty()) return {};
  const ByteView tree = Tree();
  std::string text;
  Bits bits(packed);
  // Every turn takes a bit, because the root has branches; so the bits are the limit.
  while (true) {
    std::uint64_t node = 0;
    while (tree.U8(node, kTree) == kBranches) {
      if (bits.AtEnd()) return text;
      const auto zero = static_cast<std::uint64_t>(tree.U8(node + 1, kTree) << 8 | tree.U8(node + 2, kTree));
      node = bits.Take() ? node + 3 : zero;
    }
    const std::string word = Word(tree, node);
    if (word.empty() || node == 0) return text;
    if (!text.empty()) text += ' ';
    text += word;
    if (text.size() > kLongestString) tree.FailAt(0, "is damaged: a help string has no end with the words");
  }
}

ByteView HelpWords::Tree() const {
  constexpr std::uint64_t kHeadingSize = 6;
  const std::uint32_t size = m_library.U32(m_offset + 2, kTree);
  return m_library.Part(m_offset + kHeadingSize, size, kTree);
}

}  // namespace hearthmake::typelib
