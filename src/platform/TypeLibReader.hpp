#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::platform {

// What identifies a type library.
struct TypeLibInfo {
  std::string guid;  // with braces, upper-case: {00020430-0000-0000-C000-000000000046}
  std::uint16_t majorVersion = 0;
  std::uint16_t minorVersion = 0;
  std::uint32_t locale = 0;
  std::uint16_t flags = 0;  // LIBFLAGS: 1 restricted, 2 control, 4 hidden, 8 has disk image
  std::string name;
  std::string helpString;
};

enum class TypeKind : std::uint8_t {
  Enum = 0,
  Record = 1,
  Module = 2,
  Interface = 3,
  Dispatch = 4,
  CoClass = 5,
  Alias = 6,
  Union = 7,
};

// One type of a library, in library order.
struct TypeDescription {
  TypeKind kind = TypeKind::Enum;
  std::string guid;  // as in TypeLibInfo; empty when it has none
  std::string name;
  std::string helpString;
  std::uint16_t flags = 0;  // TYPEFLAGS: 2 can create, 16 hidden, 32 control, 64 dual, …
  std::uint16_t majorVersion = 0;
  std::uint16_t minorVersion = 0;
};

// Reads type libraries out of stand-alone files (`.tlb`, `.olb`) and out of the resources of PE images
// (`.dll`, `.exe`, `.ocx`). A path may end in a backslash and a number, which names the resource
// (`C:\WINDOWS\system32\vbscript.dll\3`); otherwise the first one is taken.
//
// A file that is missing, is damaged or holds no type library throws automation::Error: the number 45,
// or that of the file system; source "TypeLibReader"; a text that says what is wrong with which file.
class TypeLibReader {
 public:
  TypeLibReader() = default;
  TypeLibReader(const TypeLibReader&) = delete;
  TypeLibReader& operator=(const TypeLibReader&) = delete;
  virtual ~TypeLibReader() = default;

  virtual TypeLibInfo Read(std::string_view path) = 0;
  virtual std::vector<TypeDescription> ReadTypes(std::string_view path) = 0;
};

}  // namespace hearthmake::platform
