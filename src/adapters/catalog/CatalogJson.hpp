#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "adapters/catalog/CatalogData.hpp"

namespace hearthmake::catalog {

// A catalog as JSON text, for people to read and to compare.
//
// Texts, Longs, Doubles, Booleans and Null are what they are in JSON; the other types stand as an object
// with the type's name: {"Date": 36975.5}. A password is {"Secret": true} when there is one.

std::string PrintCatalog(const CatalogData& data);

// An empty text is an empty catalog. Error 45, source "Catalog", with path and line, for what is no catalog.
CatalogData ParseCatalog(std::string_view text, const std::string& path);

// The parts, for other files that show them.
nlohmann::ordered_json PropertiesJson(const Properties& properties);
nlohmann::ordered_json ComponentsJson(const std::vector<Component>& components);
nlohmann::ordered_json RolesJson(const std::vector<Entry>& roles);
// Text in the layout of a catalog file. What is no character becomes U+FFFD.
std::string PrintJson(const nlohmann::ordered_json& json);

}  // namespace hearthmake::catalog
