#include "adapters/catalog/CatalogJson.hpp"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

#include "adapters/catalog/JsonLine.hpp"
#include "adapters/catalog/JsonNode.hpp"
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

template <class Integer>
Integer ReadWhole(const JsonNode& node) {
  using Limits = std::numeric_limits<Integer>;
  const auto number = node.Whole(Limits::min(), Limits::max());
  if (!number) node.Refuse("a smaller whole number is expected");
  return static_cast<Integer>(*number);
}

template <class Item>
std::vector<Item> ReadList(const JsonNode& node, Item (*read)(const JsonNode&)) {
  std::vector<Item> list;
  for (const JsonNode& item : node.Items()) list.push_back(read(item));
  return list;
}

Variant ReadNumber(const JsonNode& node) {
  const ordered_json& json = node.Json();
  const double number = json.get<double>();
  const bool isLong = json.is_number_integer() && number >= std::numeric_limits<std::int32_t>::min() &&
                      number <= std::numeric_limits<std::int32_t>::max();
  return isLong ? Variant::FromLong(json.get<std::int32_t>()) : Variant::FromDouble(number);
}

Variant ReadTagged(const std::string& type, const JsonNode& value) {
  if (type == "Integer") return Variant::FromInteger(ReadWhole<std::int16_t>(value));
  if (type == "Byte") return Variant::FromByte(ReadWhole<std::uint8_t>(value));
  if (type == "Single") return Variant::FromSingle(static_cast<float>(value.Number()));
  if (type == "Date") return Variant::FromDate(value.Number());
  if (type == "Currency") return Variant::FromCurrency(ReadWhole<std::int64_t>(value));
  if (type == "Error") return Variant::FromErrorCode(ReadWhole<std::int32_t>(value));
  if (type == "Empty") return {};
  value.Refuse("\"" + type + "\" is no type of a value");
}

Property ReadProperty(const std::string& name, const JsonNode& node) {
  const ordered_json& json = node.Json();
  if (json.is_null()) return {name, Variant::Null(), false};
  if (json.is_boolean()) return {name, Variant::FromBoolean(json.get<bool>()), false};
  if (json.is_number()) return {name, ReadNumber(node), false};
  if (json.is_string()) return {name, Variant::FromText(node.Text()), false};
  if (!json.is_object() || json.size() != 1) node.Refuse("this is no value of a property");
  const std::string type = json.begin().key();
  const JsonNode value = node.Member(type);
  if (type != "Secret") return {name, ReadTagged(type, value), false};
  return {name, Variant::FromBoolean(value.YesNo()), true};
}

Properties ReadProperties(const JsonNode& node) {
  Properties properties;
  for (const auto& [name, value] : node.Members()) properties.Put(ReadProperty(name, value));
  return properties;
}

InstalledClass ReadClass(const JsonNode& node) {
  InstalledClass item;
  item.key = node.Member("clsid").Text();
  item.progId = node.Member("progId").Text();
  if (node.Has("properties")) item.properties = ReadProperties(node.Member("properties"));
  return item;
}

Component ReadComponent(const JsonNode& node) {
  const JsonNode library = node.Member("library");
  return {node.Member("dll").Text(),
          node.Member("typeLib").Text(),
          node.Member("proxyStub").Text(),
          library.Member("guid").Text(),
          library.Member("name").Text(),
          library.Member("version").Text(),
          ReadList(node.Member("classes"), &ReadClass)};
}

Entry ReadRole(const JsonNode& node) {
  return {node.Member("key").Text(), ReadProperties(node.Member("properties"))};
}

Export ReadExport(const JsonNode& node) {
  return {node.Member("file").Text(), ReadWhole<std::int32_t>(node.Member("options"))};
}

Package ReadPackage(const JsonNode& node) {
  Package package;
  package.key = node.Member("key").Text();
  package.properties = ReadProperties(node.Member("properties"));
  package.components = ReadList(node.Member("components"), &ReadComponent);
  package.roles = ReadList(node.Member("roles"), &ReadRole);
  package.exports = ReadList(node.Member("exports"), &ReadExport);
  return package;
}

CatalogData ReadCatalog(const JsonNode& root) {
  const bool isOurs =
      root.Json().is_object() && root.Has("format") && root.Member("format").Json() == kFormat;
  if (!isOurs) root.Refuse("this is another file, no catalog");
  const JsonNode version = root.Member("version");
  if (version.Json() != kVersion) version.Refuse("a newer hearthmake has written this catalog");
  return {ReadList(root.Member("packages"), &ReadPackage),
          ReadList(root.Member("applications"), &ReadPackage)};
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
    return ReadCatalog(JsonNode(root));
  } catch (const ordered_json::parse_error&) {
    RaiseDamaged(path, LineOfDamage(text), "this is damaged or no JSON");
  } catch (const ordered_json::out_of_range&) {
    RaiseDamaged(path, LineOfDamage(text), "the number is too large");
  } catch (const JsonMisfit& misfit) {
    RaiseDamaged(path, LineOfPlace(text, misfit.place), misfit.what);
  }
}

}  // namespace hearthmake::catalog
