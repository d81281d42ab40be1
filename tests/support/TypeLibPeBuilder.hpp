#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/TypeLibBytes.hpp"

namespace hearthmake::test {

// Composes Windows images with resources and nothing else of use. Places of the fields, for tests that
// falsify them: see the constants.
class TypeLibPeBuilder {
 public:
  static constexpr std::size_t kPeHeader = 0x80;
  static constexpr std::size_t kOptionalHeader = kPeHeader + 24;
  static constexpr std::uint32_t kCodeOffset = 0x400;
  static constexpr std::uint32_t kCodeAddress = 0x1000;

  // A resource's type or name: a number, or a text when it isn't empty.
  struct Id {
    std::uint32_t number = 0;
    std::string text;
  };
  struct Resource {
    Id type;
    Id name;
    std::vector<std::uint16_t> languages;  // one copy of the data for each
    std::string data;
  };

  explicit TypeLibPeBuilder(bool is64Bit = false) : m_is64Bit(is64Bit) {}

  TypeLibPeBuilder& Add(Id type, Id name, std::string data, std::vector<std::uint16_t> languages = {0x409}) {
    m_resources.push_back({std::move(type), std::move(name), std::move(languages), std::move(data)});
    return *this;
  }
  TypeLibPeBuilder& AddTypeLib(std::uint32_t number, std::string data) {
    return Add({0, "TYPELIB"}, {number, {}}, std::move(data));
  }
  // Zeros that stand before the resources, in the code section; a multiple of 0x1000.
  TypeLibPeBuilder& CodeSize(std::uint32_t size) {
    m_codeSize = size;
    return *this;
  }

  std::uint32_t ResourceOffset() const { return kCodeOffset + m_codeSize; }
  std::uint32_t ResourceAddress() const { return kCodeAddress + m_codeSize; }
  std::size_t DataDirectory() const { return kOptionalHeader + (m_is64Bit ? 112 : 96); }
  std::size_t SectionTable() const { return kOptionalHeader + OptionalSize(); }

  std::string Build() const {
    TypeLibBytes image;
    image.Raw(Headers()).PadTo(ResourceOffset()).Raw(Resources()).Align(0x200);
    return image.Text();
  }
  // The same in pieces by offset, without the zeros of the code section.
  std::map<std::uint64_t, std::string> BuildPieces() const {
    return {{0, Headers()}, {ResourceOffset(), Resources()}};
  }

 private:
  struct Node {
    Id id;
    std::vector<Node> children;
    const std::string* data = nullptr;
  };

  std::uint32_t OptionalSize() const { return m_is64Bit ? 240 : 224; }

  std::string Headers() const {
    const auto resourceSize = static_cast<std::uint32_t>(Resources().size());
    const std::uint32_t rawSize = (resourceSize + 0x1FF) / 0x200 * 0x200;
    TypeLibBytes h;
    h.Raw("MZ").PadTo(0x3C).U32(kPeHeader).PadTo(kPeHeader);
    h.Raw(std::string_view("PE\0\0", 4)).U16(m_is64Bit ? 0x8664 : 0x14C).U16(2).U32(0).U32(0).U32(0);
    h.U16(OptionalSize()).U16(0x2102);
    h.U16(m_is64Bit ? 0x20B : 0x10B).PadTo(kOptionalHeader + (m_is64Bit ? 24 : 28)).U32(0x10000000);
    if (m_is64Bit) h.U32(0);
    h.U32(0x1000).U32(0x200).PadTo(kOptionalHeader + 48).U16(4).U16(0).U32(0);
    h.U32(ResourceAddress() + rawSize).U32(kCodeOffset).U32(0).U16(2).U16(0);
    h.PadTo(DataDirectory() - 4).U32(16);
    h.PadTo(DataDirectory() + 16).U32(m_resources.empty() ? 0 : ResourceAddress()).U32(resourceSize);
    h.PadTo(SectionTable());
    Section(h, ".text", m_codeSize, kCodeAddress, m_codeSize, kCodeOffset);
    Section(h, ".rsrc", resourceSize, ResourceAddress(), rawSize, ResourceOffset());
    return h.Text();
  }

  static void Section(TypeLibBytes& h, const std::string& name, std::uint32_t size, std::uint32_t address,
                      std::uint32_t rawSize, std::uint32_t raw) {
    const std::size_t start = h.Size();
    h.Raw(name).PadTo(start + 8).U32(size).U32(address).U32(rawSize).U32(raw);
    h.PadTo(start + 36).U32(0x40000040);
  }

  std::string Resources() const {
    Node root;
    for (const Resource& r : m_resources) {
      Node& name = Child(Child(root, r.type), r.name);
      for (const std::uint16_t language : r.languages) Child(name, {language, {}}).data = &r.data;
    }
    TypeLibBytes out;
    Fixups fixups;
    Directory(out, root, fixups);
    for (const auto& [place, text] : fixups.names) {
      out.SetU32(place, 0x80000000u | static_cast<std::uint32_t>(out.Size()));
      out.U16(static_cast<std::uint32_t>(text.size()));
      for (const char c : text) out.U16(static_cast<unsigned char>(c));
    }
    out.Align(4);
    for (const auto& [place, data] : fixups.data) {
      const auto description = static_cast<std::uint32_t>(out.Size());
      out.SetU32(place, description);
      out.U32(ResourceAddress() + description + 16).U32(static_cast<std::uint32_t>(data->size()));
      out.U32(0).U32(0).Raw(*data).Align(4);
    }
    return out.Text();
  }

  struct Fixups {
    std::vector<std::pair<std::size_t, std::string>> names;
    std::vector<std::pair<std::size_t, const std::string*>> data;
  };

  static Node& Child(Node& parent, const Id& id) {
    for (Node& child : parent.children) {
      if (child.id.number == id.number && child.id.text == id.text) return child;
    }
    return parent.children.emplace_back(Node{id, {}, nullptr});
  }

  static void Directory(TypeLibBytes& out, const Node& node, Fixups& fixups) {
    std::vector<const Node*> children;
    for (const Node& child : node.children) children.push_back(&child);
    const auto firstNumber = std::stable_partition(children.begin(), children.end(),
                                                   [](const Node* n) { return !n->id.text.empty(); });
    const auto named = static_cast<std::uint32_t>(firstNumber - children.begin());
    out.U32(0).U32(0).U32(0).U16(named).U16(static_cast<std::uint32_t>(children.size()) - named);
    std::size_t entry = out.Size();
    out.Fill(children.size() * 8);
    for (const Node* child : children) {
      if (child->id.text.empty()) {
        out.SetU32(entry, child->id.number);
      } else {
        fixups.names.emplace_back(entry, child->id.text);
      }
      if (child->data != nullptr) {
        fixups.data.emplace_back(entry + 4, child->data);
      } else {
        out.SetU32(entry + 4, 0x80000000u | static_cast<std::uint32_t>(out.Size()));
        Directory(out, *child, fixups);
      }
      entry += 8;
    }
  }

  bool m_is64Bit;
  std::uint32_t m_codeSize = 0x1000;
  std::vector<Resource> m_resources;
};

}  // namespace hearthmake::test
