#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "automation/Interface.hpp"

namespace hearthmake::host {

// Properties of a public object by name, as its declaration has them: what can be read, what can be set,
// and their values as people type and read them.

// The properties that hold a value (no objects), in interface order.
std::vector<const automation::Member*> ReadableProperties(const automation::Interface& declaration);
std::vector<const automation::Member*> SettableProperties(const automation::Interface& declaration);

// All that can be read without arguments, objects included.
std::vector<const automation::Member*> ShownProperties(const automation::Interface& declaration);

// The property, by name without regard to case. HostError that lists what there is.
const automation::Member& FindReadable(const automation::Interface& declaration, std::string_view name);
const automation::Member& FindSettable(const automation::Interface& declaration, std::string_view name);
const automation::Member& FindShown(const automation::Interface& declaration, std::string_view name);
// Their names with commas between them.
std::string NamesOf(const std::vector<const automation::Member*>& members);

// A typed value as the property takes it: enumerations by name or number, true and false in the usual
// words, numbers as ParseLong takes them. HostError that says what would do.
automation::Variant ParseValue(const automation::Member& property, const std::string& text);
// The other way: enumerations by name, dates as 2001-03-24 13:05:00 (nothing for none).
std::string ValueText(const automation::Member& property, const automation::Variant& value);

// What may be typed, for help: "true|false", the names of an enumeration, "NUMBER" or "TEXT".
std::string ChoicesText(const automation::Member& property);

// What kind of path a property's text is, if it is one.
enum class PathKind {
  None,
  Absolute,
  OfProject,  // a relative one starts at the project's folder
};
PathKind PathKindOf(std::string_view property);

}  // namespace hearthmake::host
