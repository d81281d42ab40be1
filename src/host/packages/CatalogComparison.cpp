#include "host/packages/CatalogComparison.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <memory>

#include "adapters/catalog/CatalogFile.hpp"
#include "adapters/catalog/FileComPlusCatalogs.hpp"
#include "adapters/catalog/FileMtsCatalogs.hpp"
#include "automation/Text.hpp"
#include "deployment/COMApplications.hpp"
#include "deployment/MTSPackages.hpp"
#include "foundation/Apartment.hpp"
#include "host/run/SinkGuard.hpp"

namespace hearthmake::host {

namespace {

using catalog::Component;
using catalog::InstalledClass;
using catalog::PackageKind;
using catalog::Property;

// A catalog that nobody else sees.
class MemoryFile final : public platform::SharedFile {
 public:
  const std::string& Path() const override { return m_path; }
  std::string Read() override { return m_bytes; }
  void Replace(std::string_view bytes) override { m_bytes = bytes; }
  std::shared_ptr<void> Lock() override { return nullptr; }

 private:
  std::string m_path = "(memory)";
  std::string m_bytes;
};

// Hears what went wrong.
class LastMessage final : public BuildEvents {
 public:
  void MTSEvent(const std::string& strInfo, bool& /*Cancel*/) override { text = strInfo; }
  std::string text;
};

PackageDefinitions& Definitions(Build& build, PackageKind kind) {
  if (kind == PackageKind::Mts) return build.MTSPackages();
  return build.COMApplications();
}

// The ports of this thread with other catalogs.
platform::Platform PortsOver(const std::shared_ptr<const catalog::CatalogFile>& file) {
  platform::Platform ports = Ports();
  const auto components = std::make_shared<catalog::ComponentReader>(ports.files, ports.typeLibs);
  ports.mtsCatalogs = std::make_shared<catalog::FileMtsCatalogs>(file, components);
  ports.comPlusCatalogs = std::make_shared<catalog::FileComPlusCatalogs>(file, components);
  return ports;
}

const catalog::Package* FindByName(const std::vector<catalog::Package>& packages, const std::string& name) {
  const auto found = std::find_if(packages.begin(), packages.end(),
                                  [&](const catalog::Package& package) { return package.Name() == name; });
  return found == packages.end() ? nullptr : &*found;
}

const Component* FindByDll(const std::vector<Component>& components, const std::string& dll) {
  const auto found = std::find_if(components.begin(), components.end(), [&](const Component& component) {
    return automation::EqualsIgnoreCase(component.dll, dll);
  });
  return found == components.end() ? nullptr : &*found;
}

std::string ClassesText(const Component& component) {
  std::string text;
  for (const InstalledClass& item : component.classes)
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", item.progId, item.key);
  return text;
}

class Comparison {
 public:
  Comparison(const catalog::Package& expected, const catalog::Package& installed,
             std::vector<CatalogDifference>& differences)
      : m_expected(expected), m_installed(installed), m_differences(differences) {}

  void Run() {
    for (const Property& property : m_expected.properties.All()) CompareProperty(property);
    for (const Component& component : m_expected.components) CompareComponent(component);
    for (const Component& component : m_installed.components) {
      if (FindByDll(m_expected.components, component.dll) == nullptr)
        Note("component extra", component.dll, "", ClassesText(component));
    }
  }

 private:
  void Note(std::string kind, std::string what, std::string expected, std::string found) {
    m_differences.push_back(
        {m_expected.Name(), std::move(kind), std::move(what), std::move(expected), std::move(found)});
  }
  void CompareProperty(const Property& property) {
    const Property* installed = m_installed.properties.Find(property.name);
    if (installed != nullptr && IsSame(*installed, property)) return;
    Note("property", property.name, CatalogValueText(property),
         installed == nullptr ? "" : CatalogValueText(*installed));
  }
  void CompareComponent(const Component& component) {
    const Component* installed = FindByDll(m_installed.components, component.dll);
    if (installed == nullptr) return Note("component missing", component.dll, ClassesText(component), "");
    const std::string expected = ClassesText(component);
    const std::string found = ClassesText(*installed);
    if (expected != found) Note("classes", component.dll, expected, found);
  }

  const catalog::Package& m_expected;
  const catalog::Package& m_installed;
  std::vector<CatalogDifference>& m_differences;
};

}  // namespace

ExpectedCatalog Expect(Build& build, PackageKind kind) {
  PackageDefinitions& definitions = Definitions(build, kind);
  AllProjects(build);  // before the ports change: they stay with the build
  const auto file = std::make_shared<catalog::CatalogFile>(std::make_shared<MemoryFile>());
  ExpectedCatalog expected;
  LastMessage message;
  const SinkGuard sink(build, message);
  const Apartment standIn(PortsOver(file));
  for (const auto& definition : definitions.All()) {
    definition->SetExportPath("");  // here only: it is never stored
    if (!definition->CreatePackage()) expected.failures.push_back({definition->Name(), message.text});
  }
  expected.packages = file->Read().Of(kind);
  return expected;
}

std::vector<CatalogDifference> Compare(const ExpectedCatalog& expected,
                                       const std::vector<catalog::Package>& installed) {
  std::vector<CatalogDifference> differences;
  for (const auto& failure : expected.failures)
    differences.push_back({failure.package, "unknown", "", "", failure.reason});
  for (const catalog::Package& package : expected.packages) {
    const std::string name = package.Name();
    const bool isUnknown = std::any_of(expected.failures.begin(), expected.failures.end(),
                                       [&](const auto& failure) { return failure.package == name; });
    if (isUnknown) continue;
    if (const catalog::Package* found = FindByName(installed, name)) {
      Comparison(package, *found, differences).Run();
    } else {
      differences.push_back({name, "missing", "", "", ""});
    }
  }
  return differences;
}

std::string CatalogValueText(const Property& property) {
  using automation::VariantType;
  if (property.isSecret) return property.value.AsBoolean() ? "(set)" : "";
  switch (property.value.Type()) {
    case VariantType::Empty:
    case VariantType::Null: return "";
    case VariantType::Error: return automation::Decimal(property.value.AsErrorCode());
    default: return automation::ToText(property.value);
  }
}

}  // namespace hearthmake::host
