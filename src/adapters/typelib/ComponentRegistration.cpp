#include "adapters/typelib/ComponentRegistration.hpp"

#include <charconv>
#include <utility>

#include "automation/Text.hpp"

namespace hearthmake::typelib {

namespace {

using platform::RegistryRoot;
using platform::TypeDescription;
using platform::TypeKind;

constexpr RegistryRoot kClasses = RegistryRoot::ClassesRoot;
constexpr std::string_view kAutomationProxy = "{00020424-0000-0000-C000-000000000046}";
constexpr std::string_view kInterfaces = "Interface\\";
constexpr std::string_view kClassIds = "CLSID\\";
constexpr std::uint16_t kCanCreate = 2;
constexpr std::uint16_t kControl = 32;

std::string Hexadecimal(std::uint32_t number) {
  char digits[8];
  return {digits, std::to_chars(digits, digits + sizeof digits, number, 16).ptr};
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

}  // namespace

void ComponentRegistration::Entries::Add(std::initializer_list<std::string_view> key, std::string_view name,
                                         std::string_view text) {
  if (m_count == m_entries.size()) m_entries.emplace_back().value.type = platform::RegistryType::String;
  platform::RegistryEntry& entry = m_entries[m_count++];
  entry.key.clear();
  for (const std::string_view part : key) entry.key += part;
  entry.name = name;
  entry.value.data = text;
}

ComponentRegistration::Component ComponentRegistration::Read(std::string_view path) const {
  // The types first: reading them tells the reader of the library too.
  std::vector<TypeDescription> types = m_reader.ReadTypes(path);
  platform::TypeLibInfo library = m_reader.Read(path);
  std::string version = Version(library);
  return {std::string(path), std::move(version), std::move(library), std::move(types)};
}

void ComponentRegistration::Register(std::string_view path) {
  const Component component = Read(path);
  m_entries.Clear();
  AddLibrary(component);
  for (const TypeDescription& type : component.types) {
    if (IsInterface(type)) AddInterface(component, type);
    if (IsClass(type)) AddClass(component, type);
  }
  m_registry.SetAll(kClasses, m_entries.All());
}

void ComponentRegistration::AddLibrary(const Component& component) {
  const platform::TypeLibInfo& library = component.library;
  const std::string key = LibraryKey(library) + "\\" + component.version;
  m_entries.Add({key}, "", library.helpString.empty() ? library.name : library.helpString);
  m_entries.Add({key, "\\", Hexadecimal(library.locale), "\\win32"}, "", component.path);
  m_entries.Add({key, "\\FLAGS"}, "", std::to_string(library.flags));
  m_entries.Add({key, "\\HELPDIR"}, "", FolderOf(component.path));
}

void ComponentRegistration::AddInterface(const Component& component, const TypeDescription& type) {
  const auto add = [&](std::string_view below, std::string_view name, std::string_view text) {
    m_entries.Add({kInterfaces, type.guid, below}, name, text);
  };
  add("", "", type.name);
  add("\\ProxyStubClsid32", "", kAutomationProxy);
  add("\\TypeLib", "", component.library.guid);
  add("\\TypeLib", "Version", component.version);
}

void ComponentRegistration::AddClass(const Component& component, const TypeDescription& type) {
  const std::string progId = ProgId(component.library, type);
  const auto add = [&](std::string_view below, std::string_view name, std::string_view text) {
    m_entries.Add({kClassIds, type.guid, below}, name, text);
  };
  add("", "", progId);
  if (IsProgram(component.path)) {
    add("\\LocalServer32", "", component.path);
  } else {
    add("\\InprocServer32", "", component.path);
    add("\\InprocServer32", "ThreadingModel", "Apartment");
  }
  add("\\ProgID", "", progId);
  add("\\TypeLib", "", component.library.guid);
  add("\\VERSION", "", component.version);
  add("\\Programmable", "", "");
  if ((type.flags & kControl) != 0) add("\\Control", "", "");
  m_entries.Add({progId}, "", progId);
  m_entries.Add({progId, "\\Clsid"}, "", type.guid);
}

void ComponentRegistration::Unregister(std::string_view path) {
  const Component component = Read(path);
  for (const TypeDescription& type : component.types) {
    const std::string interfaceKey = std::string(kInterfaces) + type.guid;
    if (IsInterface(type) && BelongsTo(component, interfaceKey)) m_registry.RemoveKey(kClasses, interfaceKey);
    if (IsClass(type)) UnregisterClass(component, type);
  }
  UnregisterLibrary(component);
}

void ComponentRegistration::UnregisterClass(const Component& component, const TypeDescription& type) {
  const std::string key = std::string(kClassIds) + type.guid;
  if (!BelongsTo(component, key)) return;
  const std::string progId = ProgId(component.library, type);
  if (Text(progId + "\\Clsid") == type.guid) m_registry.RemoveKey(kClasses, progId);
  m_registry.RemoveKey(kClasses, key);
}

void ComponentRegistration::UnregisterLibrary(const Component& component) {
  const std::string key = LibraryKey(component.library);
  m_registry.RemoveKey(kClasses, key + "\\" + component.version);
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
