#pragma once

#include <span>
#include <string>
#include <vector>

#include "automation/Text.hpp"
#include "automation/Variant.hpp"

namespace hearthmake::doubles {

// What was asked of automation objects that stand in for those of a machine, a line a call, in order:
// `VSSItem.Get("C:\Src", 128)`.
class CallLog {
 public:
  void Note(const std::string& member, std::span<const automation::Variant> arguments) {
    std::string line = member;
    const char* separator = "(";
    for (const automation::Variant& argument : arguments) {
      line += separator + Shown(argument);
      separator = ", ";
    }
    calls.push_back(arguments.empty() ? line : line + ")");
  }

  std::vector<std::string> calls;

 private:
  // Texts in quotes: "1" is another value than 1. Other types that look alike are named.
  static std::string Shown(const automation::Variant& value) {
    switch (value.Type()) {
      case automation::VariantType::String: return '"' + automation::ToText(value) + '"';
      case automation::VariantType::Empty: return "Empty";
      case automation::VariantType::Null: return "Null";
      case automation::VariantType::Object: return "Object";
      case automation::VariantType::Long:
      case automation::VariantType::Boolean: return automation::ToText(value);
      case automation::VariantType::Date: return "Date " + automation::ToText(value);
      default: return "type " + std::to_string(static_cast<int>(value.Type()));
    }
  }
};

}  // namespace hearthmake::doubles
