#include "adapters/typelib/ComponentRegistration.hpp"

#include <cstdio>
#include <utility>

#include "automation/Text.hpp"

namespace hearthmake::typelib {

namespace {

using platform::RegistryRoot;
using platform::TypeDescription;
using platform::TypeKind;

constexpr RegistryRoot kClasses = RegistryRoot::ClassesRoot;
constexpr const char* kAutomationProxy = "{00020424-0000-0000-C000-000000000046}";
constexpr std::uint16_t kCanCreate = 2;
constexpr std::uint16_t kControl = 32;

std::string Hexadecimal(std::uint32_t number) {
  char digits[16];
  std::snprintf(digits, sizeof digits, "%x", number);
  return digits;
}

std::string Version(const platform::TypeLibInfo& library) {
  return Hexadecimal(library.majorVersion) + "." + Hexadecimal(library.minorVersion);
}

std::string LibraryKey(const platform::TypeLibInfo& library) { return "TypeLib\\" + library.guid; }

std::string ProgId(const platform::TypeLibInfo& library, const TypeDescription& type) {
  return library.name + "." + type.name;
}

std::string_view FolderOf(std::string_view path) {
  const std::size_t backslash = path.rfind('\\');
  return backslash == std::string_view::npos ? std::string_view() : path.substr(0, backslash);
}

bool IsProgram(std::string_view path) {
  return path.size() >= 4 && automation::EqualsIgnoreCaseAscii(path.substr(path.size() - 4), ".exe");
}

bool IsInterface(const TypeDescription& type) {
  return (type.kind == TypeKind::Dispatch || type.kind == TypeKind::Interface) && !type.guid.empty();
}

bool IsClass(const TypeDescription& type) {
  return type.kind == TypeKind::CoClass && (type.flags & (kCanCreate | kControl)) != 0 && !type.guid.empty();
}

void AddText(std::vector<platform::RegistryEntry>& entries, std::string key, std::string_view name,
             std::string text) {
  entries.push_back({std::move(key), std::string(name), {platform::RegistryType::String, std::move(text)}});
}

}  // namespace

ComponentRegistration::Component ComponentRegistration::Read(std::string_view path) const {
  // The types first: reading them tells the reader of the library too.
  std::vector<TypeDescription> types = m_reader.ReadTypes(path);
  return {std::string(path), m_reader.Read(path), std::move(types)};
}

void ComponentRegistration::Register(std::string_view path) {
  const Component component = Read(path);
  Entries entries;
  AddLibrary(component, entries);
  for (const TypeDescription& type : component.types) {
    if (IsInterface(type)) AddInterface(component, type, entries);
    if (IsClass(type)) AddClass(component, type, entries);
  }
  m_registry.SetAll(kClasses, entries);
}

void ComponentRegistration::AddLibrary(const Component& component, Entries& entries) {
  const platform::TypeLibInfo& library = component.library;
  const std::string key = LibraryKey(library) + "\\" + Version(library);
  AddText(entries, key, "", library.helpString.empty() ? library.name : library.helpString);
  AddText(entries, key + "\\" + Hexadecimal(library.locale) + "\\win32", "", component.path);
  AddText(entries, key + "\\FLAGS", "", std::to_string(library.flags));
  AddText(entries, key + "\\HELPDIR", "", std::string(FolderOf(component.path)));
}

void ComponentRegistration::AddInterface(const Component& component, const TypeDescription& type,
                                         Entries& entries) {
  const std::string key = "Interface\\" + type.guid;
  AddText(entries, key, "", type.name);
  AddText(entries, key + "\\ProxyStubClsid32", "", kAutomationProxy);
  AddText(entries, key + "\\TypeLib", "", component.library.guid);
  AddText(entries, key + "\\TypeLib", "Version", Version(component.library));
}

void ComponentRegistration::AddClass(const Component& component, const TypeDescription& type,
                                     Entries& entries) {
  const std::string progId = ProgId(component.library, type);
  const std::string key = "CLSID\\" + type.guid;
  AddText(entries, key, "", progId);
  if (IsProgram(component.path)) {
    AddText(entries, key + "\\LocalServer32", "", component.path);
  } else {
    AddText(entries, key + "\\InprocServer32", "", component.path);
    AddText(entries, key + "\\InprocServer32", "ThreadingModel", "Apartment");
  }
  AddText(entries, key + "\\ProgID", "", progId);
  AddText(entries, key + "\\TypeLib", "", component.library.guid);
  AddText(entries, key + "\\VERSION", "", Version(component.library));
  AddText(entries, key + "\\Programmable", "", "");
  if ((type.flags & kControl) != 0) AddText(entries, key + "\\Control", "", "");
  AddText(entries, progId, "", progId);
  AddText(entries, progId + "\\Clsid", "", type.guid);
}

void ComponentRegistration::Unregister(std::string_view path) {
  const Component component = Read(path);
  for (const TypeDescription& type : component.types) {
    const std::string interfaceKey = "Interface\\" + type.guid;
    if (IsInterface(type) && BelongsTo(component, interfaceKey)) m_registry.RemoveKey(kClasses, interfaceKey);
    if (IsClass(type)) UnregisterClass(component, type);
  }
  UnregisterLibrary(component);
}

void ComponentRegistration::UnregisterClass(const Component& component, const TypeDescription& type) {
  const std::string key = "CLSID\\" + type.guid;
  if (!BelongsTo(component, key)) return;
  const std::string progId = ProgId(component.library, type);
  if (Text(progId + "\\Clsid") == type.guid) m_registry.RemoveKey(kClasses, progId);
  m_registry.RemoveKey(kClasses, key);
}

void ComponentRegistration::UnregisterLibrary(const Component& component) {
  const std::string key = LibraryKey(component.library);
  m_registry.RemoveKey(kClasses, key + "\\" + Version(component.library));
  RemoveWhenEmpty(key);
  for (const char* root : {"TypeLib", "Interface", "CLSID"}) RemoveWhenEmpty(root);
}

// Whether a class or interface is that of this library: a later component may have taken it over.
bool ComponentRegistration::BelongsTo(const Component& component, const std::string& key) {
  return Text(key + "\\TypeLib") == component.library.guid;
}

std::string ComponentRegistration::Text(const std::string& key) const {
  const auto value = m_registry.Query(kClasses, key, "");
  return value ? value->data : std::string();
}

void ComponentRegistration::RemoveWhenEmpty(const std::string& key) {
  if (m_registry.SubKeys(kClasses, key).empty() && m_registry.ValueNames(kClasses, key).empty())
    m_registry.RemoveKey(kClasses, key);
}

}  // namespace hearthmake::typelib
