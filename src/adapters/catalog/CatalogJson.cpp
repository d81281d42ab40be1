#include "adapters/catalog/CatalogJson.hpp"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

#include "adapters/catalog/JsonLine.hpp"
#include "automation/Error.hpp"

namespace hearthmake::catalog {

namespace {

using automation::Variant;
using automation::VariantType;
using nlohmann::ordered_json;

constexpr const char* kFormat = "hearthmake catalog";
constexpr std::int64_t kVersion = 1;
// Far more than a catalog has. The parsed values are copied by recursion.
constexpr std::size_t kDeepest = 64;

ordered_json ValueJson(const Variant& value) {
  switch (value.Type()) {
    case VariantType::Null: return nullptr;
    case VariantType::Boolean: return value.AsBoolean();
    case VariantType::Long: return value.AsLong();
    case VariantType::Double: return value.AsDouble();
    case VariantType::String: return automation::ToText(value);
    case VariantType::Integer: return {{"Integer", value.AsInteger()}};
    case VariantType::Byte: return {{"Byte", value.AsByte()}};
    case VariantType::Single: return {{"Single", value.AsSingle()}};
    case VariantType::Date: return {{"Date", value.AsDouble()}};
    case VariantType::Currency: return {{"Currency", value.AsCurrency()}};  // ten-thousandths
    case VariantType::Error: return {{"Error", value.AsErrorCode()}};
    default: return {{"Empty", nullptr}};
  }
}

ordered_json ClassesJson(const std::vector<InstalledClass>& classes) {
  auto list = ordered_json::array();
  for (const InstalledClass& item : classes) {
    ordered_json json = {{"clsid", item.key}, {"progId", item.progId}};
    if (!item.properties.IsEmpty()) json["properties"] = PropertiesJson(item.properties);
    list.push_back(std::move(json));
  }
  return list;
}

ordered_json ExportsJson(const std::vector<Export>& exports) {
  auto list = ordered_json::array();
  for (const Export& item : exports) list.push_back({{"file", item.file}, {"options", item.options}});
  return list;
}

ordered_json PackagesJson(const std::vector<Package>& packages) {
  auto list = ordered_json::array();
  for (const Package& package : packages) {
    list.push_back({{"key", package.key},
                    {"properties", PropertiesJson(package.properties)},
                    {"components", ComponentsJson(package.components)},
                    {"roles", RolesJson(package.roles)},
                    {"exports", ExportsJson(package.exports)}});
  }
  return list;
}

// What does not stand where a catalog has it, by the JSON pointer of its place.
struct Misfit {
  std::string place;
  std::string what;
};

// A value of the text, with the way to it.
class Node {
 public:
  Node(const ordered_json& value, std::string place) : m_value(value), m_place(std::move(place)) {}

  [[noreturn]] void Refuse(const std::string& what) const { throw Misfit{m_place, what}; }

  const ordered_json& Json() const { return m_value; }
  const Node& RequireObject() const {
    if (!m_value.is_object()) Refuse("an object ({...}) is expected");
    return *this;
  }
  Node Member(const std::string& name) const {
    RequireObject();
    const auto found = m_value.find(name);
    if (found == m_value.end()) Refuse("\"" + name + "\" is missing");
    return {*found, m_place + "/" + name};
  }
  bool Has(const std::string& name) const { return RequireObject().m_value.contains(name); }
  std::string Text() const {
    if (!m_value.is_string()) Refuse("a text is expected");
    return m_value.get<std::string>();
  }
  std::int32_t Long() const { return Whole<std::int32_t>(); }
  template <class Integer>
  Integer Whole() const {
    const bool isWhole = m_value.is_number_integer() && !IsAboveSigned();
    const auto number = isWhole ? m_value.get<std::int64_t>() : 0;
    if (!isWhole || number < std::numeric_limits<Integer>::min() ||
        number > std::numeric_limits<Integer>::max())
      Refuse("a smaller whole number is expected");
    return static_cast<Integer>(number);
  }
  double Number() const {
    if (!m_value.is_number()) Refuse("a number is expected");
    return m_value.get<double>();
  }
  template <class Item, class Read>
  std::vector<Item> List(const Read& read) const {
    if (!m_value.is_array()) Refuse("a list ([...]) is expected");
    std::vector<Item> items;
    items.reserve(m_value.size());
    for (std::size_t i = 0; i < m_value.size(); ++i)
      items.push_back(read(Node(m_value[i], m_place + "/" + std::to_string(i))));
    return items;
  }
  template <class Use>
  void ForEachMember(const Use& use) const {
    RequireObject();
    for (const auto& [name, value] : m_value.items()) use(name, Node(value, m_place + "/" + name));
  }

 private:
  bool IsAboveSigned() const {
    return m_value.is_number_unsigned() &&
           m_value.get<std::uint64_t>() >
               static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  }

  const ordered_json& m_value;
  std::string m_place;
};

Variant ReadNumber(const Node& node) {
  const ordered_json& json = node.Json();
  const double number = json.get<double>();
  const bool isLong = json.is_number_integer() && number >= std::numeric_limits<std::int32_t>::min() &&
                      number <= std::numeric_limits<std::int32_t>::max();
  return isLong ? Variant::FromLong(json.get<std::int32_t>()) : Variant::FromDouble(number);
}

Variant ReadTagged(const std::string& type, const Node& value) {
  if (type == "Integer") return Variant::FromInteger(value.Whole<std::int16_t>());
  if (type == "Byte") return Variant::FromByte(value.Whole<std::uint8_t>());
  if (type == "Single") return Variant::FromSingle(static_cast<float>(value.Number()));
  if (type == "Date") return Variant::FromDate(value.Number());
  if (type == "Currency") return Variant::FromCurrency(value.Whole<std::int64_t>());
  if (type == "Error") return Variant::FromErrorCode(value.Long());
  if (type == "Empty") return {};
  value.Refuse("\"" + type + "\" is no type of a value");
}

Property ReadProperty(const std::string& name, const Node& node) {
  const ordered_json& json = node.Json();
  if (json.is_null()) return {name, Variant::Null(), false};
  if (json.is_boolean()) return {name, Variant::FromBoolean(json.get<bool>()), false};
  if (json.is_number()) return {name, ReadNumber(node), false};
  if (json.is_string()) return {name, Variant::FromText(node.Text()), false};
  if (!json.is_object() || json.size() != 1) node.Refuse("this is no value of a property");
  const std::string type = json.begin().key();
  const Node value = node.Member(type);
  if (type != "Secret") return {name, ReadTagged(type, value), false};
  if (!value.Json().is_boolean()) value.Refuse("true or false is expected");
  return {name, Variant::FromBoolean(value.Json().get<bool>()), true};
}

Properties ReadProperties(const Node& node) {
  Properties properties;
  node.ForEachMember(
      [&](const std::string& name, const Node& value) { properties.Put(ReadProperty(name, value)); });
  return properties;
}

InstalledClass ReadClass(const Node& node) {
  InstalledClass item;
  item.key = node.Member("clsid").Text();
  item.progId = node.Member("progId").Text();
  if (node.Has("properties")) item.properties = ReadProperties(node.Member("properties"));
  return item;
}

Component ReadComponent(const Node& node) {
  const Node library = node.Member("library");
  return {node.Member("dll").Text(),
          node.Member("typeLib").Text(),
          node.Member("proxyStub").Text(),
          library.Member("guid").Text(),
          library.Member("name").Text(),
          library.Member("version").Text(),
          node.Member("classes").List<InstalledClass>(&ReadClass)};
}

Entry ReadRole(const Node& node) {
  return {node.Member("key").Text(), ReadProperties(node.Member("properties"))};
}

Export ReadExport(const Node& node) { return {node.Member("file").Text(), node.Member("options").Long()}; }

Package ReadPackage(const Node& node) {
  Package package;
  package.key = node.Member("key").Text();
  package.properties = ReadProperties(node.Member("properties"));
  package.components = node.Member("components").List<Component>(&ReadComponent);
  package.roles = node.Member("roles").List<Entry>(&ReadRole);
  package.exports = node.Member("exports").List<Export>(&ReadExport);
  return package;
}

CatalogData ReadCatalog(const Node& root) {
  const bool isOurs =
      root.Json().is_object() && root.Has("format") && root.Member("format").Json() == kFormat;
  if (!isOurs) root.Refuse("this is another file, no catalog");
  const Node version = root.Member("version");
  if (version.Json() != kVersion) version.Refuse("a newer hearthmake has written this catalog");
  return {root.Member("packages").List<Package>(&ReadPackage),
          root.Member("applications").List<Package>(&ReadPackage)};
}

[[noreturn]] void RaiseDamaged(const std::string& path, std::size_t line, const std::string& what) {
  automation::Raise(automation::kInvalidValue, "Catalog",
                    path + ", line " + std::to_string(line) + ": " + what +
                        ". Nothing was changed; repair the file or move it away.");
}

}  // namespace

ordered_json PropertiesJson(const Properties& properties) {
  auto json = ordered_json::object();
  for (const Property& property : properties.All()) {
    json[property.name] =
        property.isSecret ? ordered_json{{"Secret", property.value.AsBoolean()}} : ValueJson(property.value);
  }
  return json;
}

ordered_json ComponentsJson(const std::vector<Component>& components) {
  auto list = ordered_json::array();
  for (const Component& component : components) {
    list.push_back({{"dll", component.dll},
                    {"typeLib", component.typeLib},
                    {"proxyStub", component.proxyStub},
                    {"library",
                     {{"guid", component.libraryId},
                      {"name", component.libraryName},
                      {"version", component.libraryVersion}}},
                    {"classes", ClassesJson(component.classes)}});
  }
  return list;
}

ordered_json RolesJson(const std::vector<Entry>& roles) {
  auto list = ordered_json::array();
  for (const Entry& role : roles)
    list.push_back({{"key", role.key}, {"properties", PropertiesJson(role.properties)}});
  return list;
}

std::string PrintJson(const ordered_json& json) {
  return json.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

std::string PrintCatalog(const CatalogData& data) {
  return PrintJson({{"format", kFormat},
                    {"version", kVersion},
                    {"packages", PackagesJson(data.packages)},
                    {"applications", PackagesJson(data.applications)}});
}

CatalogData ParseCatalog(std::string_view text, const std::string& path) {
  if (text.empty()) return {};
  if (const std::size_t byte = ByteTooDeep(text, kDeepest); byte != 0)
    RaiseDamaged(path, LineAt(text, byte), "this is nested deeper than any catalog");
  try {
    const auto root = ordered_json::parse(text);
    return ReadCatalog(Node(root, ""));
  } catch (const ordered_json::parse_error&) {
    RaiseDamaged(path, LineOfDamage(text), "this is damaged or no JSON");
  } catch (const ordered_json::out_of_range&) {
    RaiseDamaged(path, LineOfDamage(text), "the number is too large");
  } catch (const Misfit& misfit) {
    RaiseDamaged(path, LineOfPlace(text, misfit.place), misfit.what);
  }
}

}  // namespace hearthmake::catalog
