#include "adapters/catalog/JsonNode.hpp"

#include <limits>
#include <nlohmann/json.hpp>

namespace hearthmake::catalog {

namespace {

using nlohmann::ordered_json;

// The parser keeps what is positive as unsigned: up to twice of what a signed number holds.
bool IsAboveSigned(const ordered_json& value) {
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  return value.is_number_unsigned() && value.get<std::uint64_t>() > kMost;
}

}  // namespace

bool JsonNode::IsNull() const { return m_value.is_null(); }

const JsonNode& JsonNode::RequireObject() const {
  if (!m_value.is_object()) Refuse("an object ({...}) is expected");
  return *this;
}

bool JsonNode::Has(const std::string& name) const { return RequireObject().m_value.contains(name); }

JsonNode JsonNode::Member(const std::string& name) const {
  RequireObject();
  const auto found = m_value.find(name);
  if (found == m_value.end()) Refuse("\"" + name + "\" is missing");
  return JsonNode(*found, m_place + "/" + name);
}

std::vector<std::pair<std::string, JsonNode>> JsonNode::Members() const {
  RequireObject();
  std::vector<std::pair<std::string, JsonNode>> members;
  members.reserve(m_value.size());
  for (const auto& [name, value] : m_value.items())
    members.emplace_back(name, JsonNode(value, m_place + "/" + name));
  return members;
}

std::vector<JsonNode> JsonNode::Items() const {
  if (!m_value.is_array()) Refuse("a list ([...]) is expected");
  std::vector<JsonNode> items;
  items.reserve(m_value.size());
  for (std::size_t i = 0; i < m_value.size(); ++i)
    items.emplace_back(m_value[i], m_place + "/" + std::to_string(i));
  return items;
}

std::string JsonNode::Text() const {
  if (!m_value.is_string()) Refuse("a text is expected");
  return m_value.get<std::string>();
}

bool JsonNode::YesNo() const {
  if (!m_value.is_boolean()) Refuse("true or false is expected");
  return m_value.get<bool>();
}

double JsonNode::Number() const {
  if (!m_value.is_number()) Refuse("a number is expected");
  return m_value.get<double>();
}

std::optional<std::int64_t> JsonNode::Whole(std::int64_t least, std::int64_t most) const {
  if (!m_value.is_number_integer() || IsAboveSigned(m_value)) return std::nullopt;
  const auto number = m_value.get<std::int64_t>();
  if (number < least || number > most) return std::nullopt;
  return number;
}

}  // namespace hearthmake::catalog
