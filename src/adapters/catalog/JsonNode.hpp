#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace hearthmake::catalog {

// What does not stand where a document has it, by the JSON pointer of its place (names unescaped, as
// LineOfPlace takes it).
struct JsonMisfit {
  std::string place;
  std::string what;
};

// A value of a JSON document that remembers the way to it, so that a refusal can tell where. The document
// must outlive it.
class JsonNode {
 public:
  explicit JsonNode(const nlohmann::ordered_json& root, std::string place = {})
      : m_value(root), m_place(std::move(place)) {}

  const nlohmann::ordered_json& Json() const { return m_value; }
  bool IsNull() const;
  [[noreturn]] void Refuse(const std::string& what) const { throw JsonMisfit{m_place, what}; }

  // All below throw JsonMisfit for a value of another kind.

  const JsonNode& RequireObject() const;
  bool Has(const std::string& name) const;
  // JsonMisfit for a member that is missing.
  JsonNode Member(const std::string& name) const;
  // In the order of the document.
  std::vector<std::pair<std::string, JsonNode>> Members() const;
  std::vector<JsonNode> Items() const;
  std::string Text() const;
  bool YesNo() const;
  double Number() const;
  // Nothing for what is no whole number from least to most; the words for that are the caller's.
  std::optional<std::int64_t> Whole(std::int64_t least, std::int64_t most) const;

 private:
  const nlohmann::ordered_json& m_value;
  std::string m_place;
};

}  // namespace hearthmake::catalog
