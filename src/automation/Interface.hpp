#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "automation/Object.hpp"

namespace hearthmake::automation {

// A public enumeration, as declared: names and values in order.
struct Enumeration {
  std::string name;
  std::string guid;
  std::vector<std::pair<std::string, std::int32_t>> members;
};

enum class BuildErrors : std::int32_t;
const Enumeration& DescribeEnumeration(BuildErrors);

enum class ValueKind : std::uint8_t {
  Void,
  Integer,
  Long,
  Boolean,
  Double,
  Date,
  String,
  Variant,
  Object,
  Enum
};

// The type of a parameter or result, taken from the C++ signature of the member.
struct ValueType {
  ValueKind kind = ValueKind::Void;
  const Enumeration& (*enumeration)() = nullptr;  // of an Enum
  const Interface& (*object)() = nullptr;         // of an Object; null for any object
};

struct Parameter {
  std::string name;
  ValueType type;
  bool isInOut = false;
  bool isOptional = false;
};

enum class MemberKind : std::uint8_t { Method, Get, Let, Set };

// Ids that automation reserves: the member that stands for its object, and the enumerator.
inline constexpr std::int32_t kDefaultMember = 0;
inline constexpr std::int32_t kNewEnumMember = -4;

// One entry of an interface, in interface order. A property that can be read and written has two
// entries with the same id.
struct Member {
  std::string name;
  MemberKind kind = MemberKind::Method;
  std::int32_t id = 0;
  std::vector<Parameter> parameters;  // of a Let or Set without the value
  ValueType value;                    // the result, or the value of a Let or Set
  std::string help;
  bool isRestricted = false;  // not for people: the enumerator
  Variant (*invoke)(Object& self, std::span<Variant> arguments) = nullptr;
  void (*vtableEntry)() = nullptr;  // see automation/Vtable.hpp; null for events

  std::size_t RequiredArguments() const;
  std::size_t ArgumentCount() const;
};

// The declaration of a public class: the one table from which late-bound dispatch, the type library and the
// vtable of the COM face come. Made by Declare, see automation/Declare.hpp.
class Interface {
 public:
  Interface(std::string name, std::string interfaceName, std::string iid, std::string clsid);

  const std::string& Name() const { return m_name; }                    // Build
  const std::string& InterfaceName() const { return m_interfaceName; }  // _Build
  const std::string& InterfaceId() const { return m_iid; }
  // Empty for a class that a host can't create.
  const std::string& ClassId() const { return m_clsid; }
  const std::vector<Member>& Members() const { return m_members; }
  // The further interfaces of the class.
  using Described = const Interface& (*)();
  const std::vector<Described>& Implemented() const { return m_implemented; }
  // The events of the class, each a member of its own; null for a class without.
  const Interface* Source() const { return m_source == nullptr ? nullptr : &m_source(); }

  // The id of a member, by name without regard to case.
  std::optional<std::int32_t> Find(std::string_view name) const;
  // The entry that answers an id and a kind of call; null when there is none.
  const Member* Find(std::int32_t id, InvokeKind kind) const;

  // See Object::Invoke.
  Variant Invoke(Object& self, std::int32_t id, InvokeKind kind, std::span<Variant> arguments) const;

  void Add(Member member);
  void Implement(Described further) { m_implemented.push_back(further); }
  void SetSource(Described events) { m_source = events; }

 private:
  Variant InvokeWithSurplus(Object& self, const Member& member, std::span<Variant> arguments) const;

  std::string m_name;
  std::string m_interfaceName;
  std::string m_iid;
  std::string m_clsid;
  std::vector<Member> m_members;
  std::vector<Described> m_implemented;
  Described m_source = nullptr;
  std::unordered_map<std::string, std::int32_t> m_ids;  // by lower-case name
  // By id and kind, a place for each: 0 for none, else the index of the member and 1. Looked at in every
  // late-bound call.
  std::vector<std::uint32_t> m_entries;
  std::int32_t m_nextId = 1;
};

}  // namespace hearthmake::automation
