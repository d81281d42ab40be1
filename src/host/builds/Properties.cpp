#include "host/builds/Properties.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "automation/OleDate.hpp"
#include "automation/Text.hpp"
#include "automation/Variant.hpp"
#include "host/HostError.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using automation::Enumeration;
using automation::Interface;
using automation::Member;
using automation::MemberKind;
using automation::ValueKind;
using automation::Variant;

using Members = std::vector<const Member*>;

Members PropertiesOf(const Interface& declaration, MemberKind kind) {
  Members members;
  for (const Member& member : declaration.Members()) {
    const bool isValue = member.value.kind != ValueKind::Object && member.parameters.empty();
    if (member.kind == kind && isValue && !member.isRestricted) members.push_back(&member);
  }
  return members;
}

const Member* Find(const Members& members, std::string_view name) {
  const auto found = std::find_if(members.begin(), members.end(), [&](const Member* member) {
    return automation::EqualsIgnoreCaseAscii(member->name, name);
  });
  return found == members.end() ? nullptr : *found;
}

[[noreturn]] void RefuseValue(const Member& property, const std::string& text, const std::string& choices) {
  throw HostError(fmt::format("'{}' is no value for {}.", text, property.name), "It can be: " + choices);
}

bool ParseFlag(const Member& property, const std::string& text) {
  const std::string word = automation::Lower(automation::Trim(text));
  for (const char* yes : {"true", "yes", "on", "1", "-1"}) {
    if (word == yes) return true;
  }
  for (const char* no : {"false", "no", "off", "0"}) {
    if (word == no) return false;
  }
  RefuseValue(property, text, "true or false");
}

std::int32_t ParseChoice(const Member& property, const std::string& text) {
  const Enumeration& enumeration = property.value.enumeration();
  std::string choices;
  for (const auto& [name, value] : enumeration.members) {
    const bool isMeant = automation::EqualsIgnoreCaseAscii(name, text) || automation::Decimal(value) == text;
    if (isMeant) return value;
    choices += fmt::format("{}{} ({})", choices.empty() ? "" : ", ", name, value);
  }
  RefuseValue(property, text, choices);
}

std::string ChoiceName(const Enumeration& enumeration, std::int32_t value) {
  for (const auto& [name, number] : enumeration.members) {
    if (number == value) return name;
  }
  return automation::Decimal(value);
}

// The word for one of them in messages.
const char* WordFor(const Interface& declaration) {
  return declaration.Name() == "Settings" ? "setting" : "property";
}

const Member& FindAmong(const Interface& declaration, const Members& members, std::string_view name) {
  if (const Member* member = Find(members, name)) return *member;
  throw HostError(fmt::format("There is no {} '{}'.", WordFor(declaration), name),
                  "There are: " + NamesOf(members));
}

}  // namespace

std::string NamesOf(const Members& members) {
  std::string names;
  for (const Member* member : members) names += (names.empty() ? "" : ", ") + member->name;
  return names;
}

Members ShownProperties(const Interface& declaration) {
  Members members;
  for (const Member& member : declaration.Members()) {
    if (member.kind == MemberKind::Get && member.parameters.empty() && !member.isRestricted)
      members.push_back(&member);
  }
  return members;
}
Members ReadableProperties(const Interface& declaration) {
  return PropertiesOf(declaration, MemberKind::Get);
}
Members SettableProperties(const Interface& declaration) {
  return PropertiesOf(declaration, MemberKind::Let);
}

const Member& FindReadable(const Interface& declaration, std::string_view name) {
  return FindAmong(declaration, ReadableProperties(declaration), name);
}

const Member& FindShown(const Interface& declaration, std::string_view name) {
  return FindAmong(declaration, ShownProperties(declaration), name);
}

const Member& FindSettable(const Interface& declaration, std::string_view name) {
  const Members members = SettableProperties(declaration);
  if (const Member* member = Find(members, name)) return *member;
  const bool isReadOnly = Find(ReadableProperties(declaration), name) != nullptr;
  throw HostError(isReadOnly ? fmt::format("{} can be read only.", name)
                             : fmt::format("There is no {} '{}'.", WordFor(declaration), name),
                  "These can be set: " + NamesOf(members));
}

Variant ParseValue(const Member& property, const std::string& text) {
  switch (property.value.kind) {
    case ValueKind::Boolean: return Variant::FromBoolean(ParseFlag(property, text));
    case ValueKind::Enum: return Variant::FromLong(ParseChoice(property, text));
    case ValueKind::Integer:
    case ValueKind::Long: return Variant::FromLong(ParseLong(text, property.name));
    default: return Variant::FromText(text);
  }
}

std::string ValueText(const Member& property, const Variant& value) {
  switch (property.value.kind) {
    case ValueKind::Boolean: return automation::ToBoolean(value) ? "True" : "False";
    case ValueKind::Enum: return ChoiceName(property.value.enumeration(), automation::ToLong(value));
    case ValueKind::Date: {
      const double date = automation::ToDate(value);
      return date == 0 ? "" : automation::FormatIsoDate(date);
    }
    case ValueKind::Long:
      if (property.name.ends_with("BaseAddress")) return AddressText(automation::ToLong(value));
      [[fallthrough]];
    default: return automation::ToText(value);
  }
}

std::string ChoicesText(const Member& property) {
  switch (property.value.kind) {
    case ValueKind::Boolean: return "true|false";
    case ValueKind::Integer:
    case ValueKind::Long: return "NUMBER";
    case ValueKind::Enum: {
      std::string names;
      for (const auto& [name, value] : property.value.enumeration().members)
        names += (names.empty() ? "" : "|") + name;
      return names;
    }
    default: return "TEXT";
  }
}

PathKind PathKindOf(std::string_view property) {
  static constexpr std::array<std::string_view, 5> kAbsolute = {"ProjectPath", "CopyPath", "VBExe",
                                                                "BuildReport", "ExportPath"};
  static constexpr std::array<std::string_view, 3> kOfProject = {"Path32", "CompatibleEXE32", "HelpFile"};
  const auto isAmong = [&](const auto& names) {
    return std::find(names.begin(), names.end(), property) != names.end();
  };
  if (isAmong(kAbsolute)) return PathKind::Absolute;
  return isAmong(kOfProject) ? PathKind::OfProject : PathKind::None;
}

}  // namespace hearthmake::host
