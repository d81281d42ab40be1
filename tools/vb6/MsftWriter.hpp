#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vb6/ByteWriter.hpp"
#include "vb6/PublicInterface.hpp"

namespace hearthmake::vb6 {

// Writes a library in the MSFT format that LoadTypeLib reads, for 32-bit Windows. Each class becomes a
// hidden dual interface `_Name` over IDispatch with its members, a dispatch interface `__Name` when it has
// events, and the coclass.
class MsftWriter {
 public:
  // The library's identifiers and dispatch ids have been assigned. Names and help texts are UTF-8; the file
  // holds them in Windows-1252.
  static std::string Write(const PublicInterface& library);

  // The number by which names are found: that of LHashValOfNameSys for 32-bit Windows and English, its lower
  // half. The name is Windows-1252.
  static std::uint16_t NameHash(std::string_view name);

 private:
  MsftWriter();

  // How the types are numbered and where they stand in the table.
  struct Type {
    std::uint32_t number = 0;
    std::uint32_t offset = 0;
  };
  // The counted functions of a type, and the three lists that follow their records.
  struct Functions {
    ByteWriter records;
    ByteWriter ids;
    ByteWriter names;
    ByteWriter offsets;
    std::uint32_t count = 0;
    std::uint32_t memorySize = 0;  // what a loader needs for their descriptions
  };
  // What tells one kind of type from another in its table entry.
  struct TypeEntry {
    std::uint32_t kind = 0;
    std::uint32_t flags = 0;
    const Guid* guid = nullptr;
    std::string name;
    std::string help;
    std::uint32_t implementedTypes = 0;
    std::uint32_t vtableSize = 0;
    std::uint32_t dataType = 0xFFFFFFFF;
    std::uint32_t dataType2 = 0;
  };

  std::string Run(const PublicInterface& library);
  void ImportDispatch();
  void AddClass(const PublicClass& c);
  Type AddInterface(const PublicClass& c);
  Type AddEvents(const PublicClass& c);
  void AddCoClass(const PublicClass& c, const Type& main, const std::optional<Type>& events);

  Type AddType(const TypeEntry& entry, const Functions& functions);
  Functions DescribeMembers(const std::vector<Member>& members, std::uint32_t typeOffset, bool dual);
  void AddFunction(Functions& functions, const Member& member, std::uint32_t typeOffset, bool dual);
  std::uint32_t AddParameter(ByteWriter& arguments, const Parameter& parameter, bool named);

  std::uint32_t EncodeType(const DeclaredType& type, bool byReference, std::uint32_t& memorySize);
  std::uint32_t TypeDescription(std::uint32_t low, std::uint32_t high);
  std::uint32_t AddGuid(const Guid& guid, std::uint32_t owner);
  std::uint32_t AddName(std::string_view name, std::uint32_t owner);
  std::uint32_t AddTypeName(std::string_view name, std::uint32_t owner);
  std::optional<std::uint32_t> FindName(std::string_view name, std::uint16_t hash) const;
  // The offset of a help text, or -1 for an empty one.
  std::uint32_t AddString(std::string_view text);

  std::string Assemble(const PublicInterface& library, std::uint32_t libraryGuid, std::uint32_t libraryName,
                       std::uint32_t help);

  ByteWriter m_types;
  ByteWriter m_imports;
  ByteWriter m_importFiles;
  ByteWriter m_references;
  ByteWriter m_guids;
  std::array<std::uint32_t, 32> m_guidBuckets;
  ByteWriter m_names;
  std::array<std::uint32_t, 128> m_nameBuckets;
  std::uint32_t m_nameCount = 0;
  std::uint32_t m_nameCharacters = 0;
  ByteWriter m_strings;
  ByteWriter m_descriptions;
  ByteWriter m_members;  // the records of all types, behind the tables
  std::uint32_t m_typeCount = 0;
};

}  // namespace hearthmake::vb6
