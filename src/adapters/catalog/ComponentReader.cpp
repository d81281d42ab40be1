#include "adapters/catalog/ComponentReader.hpp"

#include <algorithm>
#include <cstdio>
#include <string>

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::catalog {

namespace {

using platform::TypeDescription;
using platform::TypeKind;

constexpr std::uint16_t kCanCreate = 2;

bool IsClass(const TypeDescription& type) {
  return type.kind == TypeKind::CoClass && (type.flags & kCanCreate) != 0 && !type.guid.empty();
}

std::string VersionOf(const platform::TypeLibInfo& library) {
  char text[16];
  std::snprintf(text, sizeof text, "%x.%x", static_cast<unsigned>(library.majorVersion),
                static_cast<unsigned>(library.minorVersion));
  return text;
}

// The properties that the class of this id had.
Properties KeptProperties(const std::vector<InstalledClass>& before, const std::string& classId) {
  const auto found = std::find_if(before.begin(), before.end(),
                                  [&](const InstalledClass& item) { return item.key == classId; });
  return found == before.end() ? Properties() : found->properties;
}

}  // namespace

Component ComponentReader::Read(std::string_view dll, std::string_view typeLib,
                                std::string_view proxyStub) const {
  Component component;
  component.dll = dll;
  if (!automation::EqualsIgnoreCase(typeLib, dll)) component.typeLib = typeLib;
  component.proxyStub = proxyStub;
  Refresh(component);
  return component;
}

void ComponentReader::Refresh(Component& component) const {
  RequireFile(component.dll);
  if (!component.typeLib.empty()) RequireFile(component.typeLib);
  if (!component.proxyStub.empty()) RequireFile(component.proxyStub);
  ReadClasses(component);
}

void ComponentReader::RequireFile(std::string_view path) const {
  if (m_files->FileExists(path)) return;
  automation::Raise(automation::RuntimeError::FileNotFound, "Catalog", std::string(path));
}

void ComponentReader::ReadClasses(Component& component) const {
  const std::string& file = component.typeLib.empty() ? component.dll : component.typeLib;
  platform::TypeLibInfo library;
  std::vector<InstalledClass> classes;
  try {
    library = m_typeLibs->Read(file);
    for (const TypeDescription& type : m_typeLibs->ReadTypes(file)) {
      if (!IsClass(type)) continue;
      classes.push_back(
          {{type.guid, KeptProperties(component.classes, type.guid)}, library.name + "." + type.name});
    }
  } catch (const automation::Error& error) {
    automation::Raise(error.Number(), "Catalog", error.Description());
  }
  if (classes.empty())
    automation::Raise(automation::kInvalidValue, "Catalog",
                      file + ": there is no class in its type library that can be created.");
  component.libraryId = library.guid;
  component.libraryName = library.name;
  component.libraryVersion = VersionOf(library);
  component.classes = std::move(classes);
}

}  // namespace hearthmake::catalog
