#include <fmt/format.h>

#include "adapters/catalog/CatalogJson.hpp"
#include "adapters/catalog/OpenCatalog.hpp"
#include "foundation/Settings.hpp"
#include "host/commands/Commands.hpp"
#include "host/packages/CatalogComparison.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

namespace {

using catalog::Component;
using catalog::PackageKind;
using catalog::Property;
using nlohmann::ordered_json;

ordered_json ValueOf(const Property& property) {
  if (property.isSecret) return property.value.AsBoolean() ? "(set)" : "";
  catalog::Properties one;
  one.Put(property);
  return catalog::PropertiesJson(one).begin().value();
}

ordered_json PackageJson(const catalog::Package& package) {
  auto properties = ordered_json::object();
  for (const Property& property : package.properties.All()) properties[property.name] = ValueOf(property);
  auto exports = ordered_json::array();
  for (const catalog::Export& item : package.exports)
    exports.push_back({{"file", item.file}, {"options", item.options}});
  return {{"name", package.Name()},
          {"key", package.key},
          {"properties", std::move(properties)},
          {"components", catalog::ComponentsJson(package.components)},
          {"roles", catalog::RolesJson(package.roles)},
          {"exports", std::move(exports)}};
}

std::string ComponentText(const Component& component) {
  std::string text = fmt::format("  component {}\n", Printable(component.dll));
  if (!component.typeLib.empty()) text += fmt::format("    type library {}\n", Printable(component.typeLib));
  for (const catalog::InstalledClass& item : component.classes)
    text += fmt::format("    {:<32} {}\n", Printable(item.progId), item.key);
  return text;
}

std::string NameOf(const catalog::Package& package) {
  return package.Name().empty() ? "(no name)" : Printable(package.Name());
}

std::string PackageText(const catalog::Package& package) {
  std::string text = fmt::format("{}  {}\n", NameOf(package), package.key);
  for (const Property& property : package.properties.All()) {
    if (property.name == "Name") continue;
    text += fmt::format("  {:<32} {}\n", Printable(property.name), Printable(CatalogValueText(property)));
  }
  for (const Component& component : package.components) text += ComponentText(component);
  for (const catalog::Entry& role : package.roles)
    text += fmt::format("  role {}\n", Printable(automation::ToText(role.properties.Value("Name"))));
  for (const catalog::Export& item : package.exports)
    text += fmt::format("  exported to {}\n", Printable(item.file));
  return text;
}

ExitStatus ShowInstalled(Session& session, PackageKind kind, bool asJson) {
  const auto packages = session.Library().Catalog().Read().Of(kind);
  auto json = ordered_json::array();
  std::string text;
  for (const catalog::Package& package : packages) {
    json.push_back(PackageJson(package));
    text += PackageText(package);
  }
  if (text.empty()) text = fmt::format("No {} is installed.\n", catalog::WordFor(kind));
  session.Out().Out(asJson ? JsonText(json, 2) + "\n" : text);
  return ExitStatus::Done;
}

std::string DifferenceText(const CatalogDifference& difference, PackageKind kind) {
  const std::string name = Printable(difference.package);
  const std::string what = Printable(difference.what);
  const std::string expected = Printable(difference.expected);
  const std::string found = Printable(difference.found);
  if (difference.kind == "missing")
    return fmt::format("{}: the {} is missing\n", name, catalog::WordFor(kind));
  if (difference.kind == "unknown") return fmt::format("{}: can't be compared. {}\n", name, found);
  if (difference.kind == "property")
    return fmt::format("{}: {} is '{}', the build has '{}'\n", name, what, found, expected);
  if (difference.kind == "classes")
    return fmt::format("{}: classes of {} differ\n  installed: {}\n  binary:    {}\n", name, what, found,
                       expected);
  return fmt::format("{}: {} {}\n", name, difference.kind, what);
}

ExitStatus ShowDifferences(Session& session, PackageKind kind, const CatalogArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  session.LibrarySettings();
  const auto differences = Compare(Expect(*build, kind), session.Library().Catalog().Read().Of(kind));
  auto json = ordered_json::array();
  std::string text;
  for (const CatalogDifference& difference : differences) {
    json.push_back({{"package", difference.package},
                    {"kind", difference.kind},
                    {"what", difference.what},
                    {"expected", difference.expected},
                    {"found", difference.found}});
    text += DifferenceText(difference, kind);
  }
  if (text.empty()) text = fmt::format("The catalog is as {} has it.\n", Printable(build->Name()));
  session.Out().Out(arguments.json ? JsonText(json, 2) + "\n" : text);
  return differences.empty() ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace

ExitStatus CatalogCommand(Session& session, const CatalogArguments& arguments) {
  const PackageKind kind = arguments.mts ? PackageKind::Mts : PackageKind::ComPlus;
  const bool changes = !arguments.unprotect.empty() || !arguments.remove.empty();
  if (changes && !arguments.build.empty())
    throw HostError("The catalog is changed or compared, not both.", "Leave BUILD out.");
  if (!arguments.unprotect.empty()) {
    catalog::Unprotect(session.Library().Catalog(), kind, arguments.unprotect);
    session.Out().Out(fmt::format("{} can be changed and removed.\n", Printable(arguments.unprotect)));
    return ExitStatus::Done;
  }
  if (!arguments.remove.empty()) {
    catalog::RemovePackage(session.Library().Catalog(), kind, arguments.remove);
    session.Out().Out(fmt::format("Removed {}.\n", Printable(arguments.remove)));
    return ExitStatus::Done;
  }
  return arguments.build.empty() ? ShowInstalled(session, kind, arguments.json)
                                 : ShowDifferences(session, kind, arguments);
}

}  // namespace hearthmake::host
