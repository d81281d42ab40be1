#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "vb6/Guid.hpp"

namespace hearthmake::vb6 {

// The variant types that a declaration can come to, with the numbers that a type library uses.
enum class VarType : std::uint16_t {
  Empty = 0,
  Integer = 2,
  Long = 3,
  Single = 4,
  Double = 5,
  Currency = 6,
  Date = 7,
  String = 8,
  Dispatch = 9,
  Boolean = 11,
  Variant = 12,
  Unknown = 13,
  Byte = 17,
};

struct DeclaredType {
  VarType type = VarType::Variant;
  bool array = false;
};

struct Parameter {
  std::string name;
  DeclaredType type;
  bool byReference = true;
  bool optional = false;
  bool list = false;  // a ParamArray
};

enum class MemberKind : std::uint8_t { Method, Get, Let, Set, Event };

// A public procedure, one half of a property, or an event of a class.
struct Member {
  MemberKind kind = MemberKind::Method;
  std::string name;
  std::vector<Parameter> parameters;
  std::optional<DeclaredType> result;
  // The declaration in one spelling, without parameter names: what has to stay for compatibility's sake.
  std::string signature;
  std::string help;
  bool hidden = false;
  std::optional<std::int32_t> dispatchId;
};

struct PublicClass {
  std::string name;
  bool creatable = true;
  bool control = false;
  std::vector<Member> members;
  std::vector<Member> events;
  Guid classId;
  Guid interfaceId;
  Guid eventsId;  // of use only when there are events
};

// What a component shows to others: the content of its type library.
struct PublicInterface {
  std::string name;
  std::string help;
  bool controls = false;
  Guid id;
  std::uint16_t majorVersion = 1;
  std::uint16_t minorVersion = 0;
  std::vector<PublicClass> classes;
};

}  // namespace hearthmake::vb6
