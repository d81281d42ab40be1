#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/TypeLibBytes.hpp"

namespace hearthmake::test {

// Composes type libraries in the old format ("SLTG"): everything that tells of the library and its types,
// and no members. Wine's loader and winedump read what it writes as it is meant.
class TypeLibSltgWriter {
 public:
  using Guid = std::array<std::uint8_t, 16>;

  struct Type {
    std::uint8_t kind = 0;
    std::string name;
    std::string helpString;
    Guid guid{};
    std::uint16_t flags = 0;
    std::uint16_t majorVersion = 0;
    std::uint16_t minorVersion = 0;
  };

  Guid guid{};
  std::string name;
  std::string helpString;
  std::string helpFile;
  std::uint16_t locale = 0;
  std::uint16_t flags = 0;
  std::uint16_t majorVersion = 0;
  std::uint16_t minorVersion = 0;
  std::vector<Type> types;
  // The entries of the block table stand the other way round; the chain still leads through the types in
  // order.
  bool reversedTable = false;
  // The name table has the longer of its two headings.
  bool longNameHeading = false;

  std::string Write() const {
    std::vector<std::string> blocks;
    for (const Type& type : types) blocks.push_back(TypeBlock(type));
    blocks.push_back(LibraryBlock());

    const std::string index = Index();
    const auto count = static_cast<std::uint32_t>(blocks.size());
    TypeLibBytes out;
    out.Raw("SLTG").U16(count + 1).U16(9).U16(static_cast<std::uint32_t>(index.size()));
    out.U16(Number(0)).U32(0x000204FF).U32(0).U32(0xC0).U32(0x46000000).U32(0x44).U32(0xFFFF0000);
    for (std::uint32_t place = 0; place < count; ++place) {
      const std::uint32_t block = reversedTable ? count - 1 - place : place;
      out.U32(static_cast<std::uint32_t>(blocks[block].size())).U16(IndexOffset(block));
      out.U16(block + 1 < count ? Number(block + 1) : 0);
    }
    out.Raw(index).Fill(9);
    for (const std::string& block : blocks) out.Raw(block);
    out.U16(1).U16(0xFFFE).U16(0x0A03).U16(0).U32(0xFFFFFFFF);
    out.U32(0x000204FF).U32(0).U32(0xC0).U32(0x46000000);
    out.U32(8).Raw(std::string_view("TYPELIB\0", 8)).U32(0xFFFFFFFF).U16(0x200).Fill(6);
    out.U32(0x71B239F4).Fill(12);
    return out.Text();
  }

 private:
  // The number of the block in the table, from one on.
  std::uint32_t Number(std::size_t block) const {
    return static_cast<std::uint32_t>(reversedTable ? types.size() + 1 - block : block + 1);
  }

  static std::string BlockName(std::size_t block) {
    std::string blockName = "AAAAAAAAAA";
    blockName[0] = static_cast<char>('A' + block % 26);
    blockName[1] = static_cast<char>('A' + block / 26 % 26);
    return blockName;
  }

  std::string Index() const {
    TypeLibBytes index;
    index.Raw(std::string_view("\1CompObj\0dir\0", 13));
    for (std::size_t i = 0; i < types.size(); ++i) index.Raw(BlockName(i)).U8(0);
    return index.Text();
  }
  std::uint32_t IndexOffset(std::size_t block) const {
    return block == types.size() ? 9 : static_cast<std::uint32_t>(13 + block * 11);
  }

  static std::string TypeBlock(const Type& type) {
    constexpr std::uint32_t kHeaderSize = 0x22;
    TypeLibBytes b;
    b.U16(0x0501).U32(0xFFFFFFFF).U32(0xFFFFFFFF).U32(kHeaderSize).U32(0xFFFFFFFF);
    b.U16(type.majorVersion).U16(type.minorVersion).U32(0xFFFE0000);
    b.U16(2u | static_cast<std::uint32_t>(type.flags) << 3).U8(2).U8(type.kind).U32(0);
    // No members: their heading, and the counts of everything.
    b.U16(1).U16(0xFFFF).U8(1).U32(0);
    b.Fill(8).U16(0xFFFF).U16(0xFFFF).U16(0xFFFF).Fill(8).U16(0xFFFF).Fill(8).U16(4).U16(4).Fill(6);
    b.U16(0xFFFF).U16(0xFFFF).U16(0xFFFF).U16(0xFFFF).Fill(4);
    return b.Text();
  }

  static void Text(TypeLibBytes& out, const std::string& text) {
    if (text.empty()) {
      out.U16(0xFFFF);
    } else {
      out.U16(static_cast<std::uint32_t>(text.size())).Raw(text);
    }
  }

  static void Raw(TypeLibBytes& out, const Guid& guid) {
    for (const std::uint8_t byte : guid) out.U8(byte);
  }

  std::string LibraryBlock() const {
    std::string names;
    const std::uint32_t nameOffset = AddName(names, name);
    TypeLibBytes b;
    b.U16(0x51CC).U16(3).U16(nameOffset).U16(0xFFFF);
    Text(b, helpString);
    Text(b, helpFile);
    b.U32(0).U16(1).U16(locale).U32(0).U16(flags).U16(majorVersion).U16(minorVersion);
    Raw(b, guid);
    b.Fill(0x40, '\xFF').U16(static_cast<std::uint32_t>(types.size()));
    const std::vector<std::string> words = Words();
    for (std::size_t i = 0; i < types.size(); ++i) {
      Text(b, BlockName(i));
      Text(b, BlockName(i + types.size()));
      b.U16(0xFFFF).U16(AddName(names, types[i].name));
      const std::string help = Pack(types[i].helpString, words);
      b.U16(static_cast<std::uint32_t>(help.size())).Raw(help).U16(0xFFFF).U32(0).U16(0xFFFF);
      Raw(b, types[i].guid);
      b.U16(types[i].kind);
    }
    const std::string tree = Tree(words);
    b.U32(static_cast<std::uint32_t>(b.Size() + 4 + 6 + tree.size()));
    b.U16(LongestHelp()).U32(static_cast<std::uint32_t>(tree.size())).Raw(tree);
    if (longNameHeading) {
      b.U16(0x0200).Fill(0x2A);
    } else {
      b.U16(0xFFFF).U16(1).U16(2).U16(0xFF00).U32(0xFFFFFFFF);
    }
    b.Fill(0x200, '\xFF').U32(static_cast<std::uint32_t>(names.size())).Raw(names);
    b.U32(0x01FFFF01).U32(0);
    return b.Text();
  }

  static std::uint32_t AddName(std::string& names, const std::string& added) {
    const auto offset = static_cast<std::uint32_t>(names.size());
    names.append(8, '\xFF').append(added).append(1, '\0');
    const std::size_t aligned = (names.size() + 0x1F) / 0x20 * 0x20;
    names.append(aligned - names.size() < 4 ? aligned - names.size() : names.size() % 2, '\0');
    return offset;
  }

  static std::vector<std::string> Split(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
  }

  std::vector<std::string> Words() const {
    std::vector<std::string> words;
    for (const Type& type : types) {
      for (const std::string& word : Split(type.helpString)) {
        if (std::find(words.begin(), words.end(), word) == words.end()) words.push_back(word);
      }
    }
    return words;
  }

  std::uint32_t LongestHelp() const {
    std::size_t longest = 0;
    for (const Type& type : types) longest = std::max(longest, type.helpString.size() + 1);
    return static_cast<std::uint32_t>(longest);
  }

  // A tree like a comb: word n has the code of n zeros and a one; zeros without a one end the string.
  static std::string Tree(const std::vector<std::string>& words) {
    TypeLibBytes tree;
    for (const std::string& word : words) {
      const std::size_t next = tree.Size() + 3 + 1 + word.size() + 1;
      tree.U8(0x80).U8(static_cast<std::uint32_t>(next >> 8)).U8(static_cast<std::uint32_t>(next & 0xFF));
      tree.U8(1).Raw(word).U8(0);
    }
    if (!words.empty()) tree.U8(0).U8(0);
    return tree.Text();
  }

  static std::string Pack(const std::string& text, const std::vector<std::string>& words) {
    if (text.empty()) return {};
    std::vector<bool> bits;
    for (const std::string& word : Split(text)) {
      const auto at = std::find(words.begin(), words.end(), word) - words.begin();
      bits.insert(bits.end(), static_cast<std::size_t>(at), false);
      bits.push_back(true);
    }
    bits.insert(bits.end(), words.size(), false);
    bits.resize((bits.size() + 7) / 8 * 8);
    std::string bytes(bits.size() / 8, '\0');
    for (std::size_t i = 0; i < bits.size(); ++i) {
      if (bits[i]) bytes[i / 8] = static_cast<char>(bytes[i / 8] | 0x80 >> i % 8);
    }
    return bytes;
  }
};

}  // namespace hearthmake::test
