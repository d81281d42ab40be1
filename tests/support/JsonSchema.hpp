#pragma once

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <stdexcept>
#include <string>

namespace hearthmake::support {

// Checks JSON by a JSON Schema (2020-12), as far as our own schemas go: $ref, oneOf, type, const, enum,
// pattern, minimum, items, properties and required. Stricter than the standard: a member that no schema names
// is wrong, and so is a keyword that is not known here.
class JsonSchema {
 public:
  explicit JsonSchema(const std::string& file) {
    std::ifstream stream(file);
    m_root = nlohmann::json::parse(stream);
  }

  const nlohmann::json& Root() const { return m_root; }
  // What is wrong; empty when nothing is.
  std::string Check(const nlohmann::json& value) const { return Check(value, m_root, "$"); }

 private:
  using json = nlohmann::json;

  std::string Check(const json& value, const json& schema, const std::string& place) const {
    for (const auto& [keyword, rule] : schema.items()) {
      const std::string problem = CheckKeyword(value, schema, keyword, rule, place);
      if (!problem.empty()) return problem;
    }
    return {};
  }

  std::string CheckKeyword(const json& value, const json& schema, const std::string& keyword,
                           const json& rule, const std::string& place) const {
    if (keyword.starts_with("$") && keyword != "$ref") return {};
    if (keyword == "description" || keyword == "title" || keyword == "required")
      return Missing(value, schema, place);
    if (keyword == "$ref") return Check(value, Referenced(rule.get<std::string>()), place);
    if (keyword == "oneOf") return CheckOneOf(value, rule, place);
    if (keyword == "type") return HasType(value, rule) ? "" : place + " is no " + rule.dump();
    if (keyword == "const") return value == rule ? "" : place + " is not " + rule.dump();
    if (keyword == "enum") {
      return std::find(rule.begin(), rule.end(), value) != rule.end() ? ""
                                                                      : place + " is none of " + rule.dump();
    }
    if (keyword == "pattern") {
      const bool fits = std::regex_search(value.get<std::string>(), std::regex(rule.get<std::string>()));
      return fits ? "" : place + " does not match " + rule.dump();
    }
    if (keyword == "minimum") return value >= rule ? "" : place + " is less than " + rule.dump();
    if (keyword == "items") return CheckItems(value, rule, place);
    if (keyword == "properties") return CheckProperties(value, rule, place);
    throw std::logic_error("a keyword that is not known: " + keyword);
  }

  const json& Referenced(const std::string& reference) const {
    return m_root.at(json::json_pointer(reference.substr(1)));
  }

  static std::string Missing(const json& value, const json& schema, const std::string& place) {
    for (const json& name : schema.value("required", json::array())) {
      if (!value.contains(name.get<std::string>())) return place + " lacks " + name.dump();
    }
    return {};
  }

  std::string CheckOneOf(const json& value, const json& schemas, const std::string& place) const {
    std::string problems;
    std::size_t count = 0;
    for (const json& schema : schemas) {
      const std::string problem = Check(value, schema, place);
      count += problem.empty() ? 1 : 0;
      // That it is another event says nothing.
      if (!problem.starts_with(place + ".event ")) problems += problem + "; ";
    }
    if (count == 1) return {};
    return place + " is one of " + std::to_string(count) + ": " + problems;
  }

  static bool HasType(const json& value, const json& type) {
    if (type.is_array()) {
      return std::any_of(type.begin(), type.end(), [&](const json& one) { return HasType(value, one); });
    }
    if (type == "object") return value.is_object();
    if (type == "array") return value.is_array();
    if (type == "string") return value.is_string();
    if (type == "integer") return value.is_number_integer();
    if (type == "number") return value.is_number();
    if (type == "boolean") return value.is_boolean();
    if (type == "null") return value.is_null();
    throw std::logic_error("a type that is not known: " + type.dump());
  }

  std::string CheckItems(const json& value, const json& schema, const std::string& place) const {
    for (std::size_t i = 0; i < value.size(); ++i) {
      const std::string problem = Check(value[i], schema, place + "[" + std::to_string(i) + "]");
      if (!problem.empty()) return problem;
    }
    return {};
  }

  std::string CheckProperties(const json& value, const json& schemas, const std::string& place) const {
    // The event first: it tells which schema is meant.
    for (const bool ofEvent : {true, false}) {
      for (const auto& [name, member] : value.items()) {
        if ((name == "event") != ofEvent) continue;
        if (!schemas.contains(name)) return place + "." + name + " is not described";
        const std::string problem = Check(member, schemas[name], place + "." + name);
        if (!problem.empty()) return problem;
      }
    }
    return {};
  }

  nlohmann::json m_root;
};

}  // namespace hearthmake::support
