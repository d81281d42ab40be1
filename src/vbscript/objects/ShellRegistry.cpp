#include "vbscript/objects/ShellRegistry.hpp"

#include <algorithm>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/EnvironmentText.hpp"
#include "vbscript/objects/SystemError.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;
using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

namespace {

constexpr const char* kRead = "WshShell.RegRead";
constexpr const char* kWrite = "WshShell.RegWrite";
constexpr const char* kDelete = "WshShell.RegDelete";

struct RootName {
  const char* shortName;
  const char* longName;
  RegistryRoot root;
};

constexpr RootName kRoots[] = {
    {"HKCU", "HKEY_CURRENT_USER", RegistryRoot::CurrentUser},
    {"HKLM", "HKEY_LOCAL_MACHINE", RegistryRoot::LocalMachine},
    {"HKCR", "HKEY_CLASSES_ROOT", RegistryRoot::ClassesRoot},
    {"HKEY_USERS", "HKEY_USERS", RegistryRoot::Users},
};

[[noreturn]] void Fail(const char* source, const std::string& what, const std::string& name,
                       const std::string& why = {}) {
  automation::Raise(kSystemFileNotFound, source, what + " registry key \"" + name + "\"" + why + ".");
}

std::int32_t LongOf(std::string_view bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = std::min<std::size_t>(bytes.size(), 4); i > 0; --i) {
    number = number << 8U | static_cast<unsigned char>(bytes[i - 1]);
  }
  return static_cast<std::int32_t>(number);
}

std::string BytesOf(std::int32_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes += static_cast<char>(static_cast<std::uint32_t>(number) >> shift & 0xFFU);
  }
  return bytes;
}

Variant ArrayOf(const std::vector<Variant>& elements) {
  automation::Ref<automation::ArrayBuffer> array(
      new automation::ArrayBuffer({{0, static_cast<std::int32_t>(elements.size())}}));
  std::copy(elements.begin(), elements.end(), array->Elements().begin());
  return Variant::FromArray(std::move(array));
}

Variant TextsOf(std::string_view parts) {
  std::vector<Variant> texts;
  while (!parts.empty()) {
    const std::size_t end = std::min(parts.find('\0'), parts.size());
    if (end > 0) texts.push_back(Variant::FromText(parts.substr(0, end)));
    parts.remove_prefix(std::min(end + 1, parts.size()));
  }
  return ArrayOf(texts);
}

bool IsWholeNumber(const Variant& value) {
  const VariantType type = value.Target().Type();
  return type == VariantType::Integer || type == VariantType::Long || type == VariantType::Byte ||
         type == VariantType::Boolean;
}

RegistryType TypeOf(const Variant& value, const std::optional<std::string>& type, const std::string& name) {
  if (!type || type->empty()) return IsWholeNumber(value) ? RegistryType::DWord : RegistryType::String;
  if (automation::EqualsIgnoreCaseAscii(*type, "REG_SZ")) return RegistryType::String;
  if (automation::EqualsIgnoreCaseAscii(*type, "REG_EXPAND_SZ")) return RegistryType::ExpandString;
  if (automation::EqualsIgnoreCaseAscii(*type, "REG_DWORD")) return RegistryType::DWord;
  if (automation::EqualsIgnoreCaseAscii(*type, "REG_BINARY")) return RegistryType::Binary;
  automation::Raise(kSystemFileNotFound, kWrite,
                    "Invalid type \"" + *type + "\" for registry value \"" + name + "\".");
}

}  // namespace

Variant ShellRegistry::Read(const std::string& name) {
  const Place place = Parse(name, kRead);
  const auto value = m_ports.registry->Query(place.root, place.key, place.name);
  if (!value) Fail(kRead, "Unable to open", name, " for reading");
  return ValueOf(*value);
}

Variant ShellRegistry::ValueOf(const RegistryValue& value) {
  switch (value.type) {
    case RegistryType::DWord: return Variant::FromLong(LongOf(value.data));
    case RegistryType::ExpandString: return Variant::FromText(ExpandEnvironment(*m_ports.system, value.data));
    case RegistryType::MultiString: return TextsOf(value.data);
    case RegistryType::String: return Variant::FromText(value.data);
    case RegistryType::QWord: RaiseRuntime(number::kTypeMismatch);
    default: {
      std::vector<Variant> bytes;
      for (const char byte : value.data) {
        bytes.push_back(Variant::FromByte(static_cast<std::uint8_t>(byte)));
      }
      return ArrayOf(bytes);
    }
  }
}

void ShellRegistry::Write(const std::string& name, const Variant& value,
                          const std::optional<std::string>& type) {
  const Place place = Parse(name, kWrite);
  RegistryValue stored{TypeOf(value, type, name), ""};
  const bool isNumber = stored.type == RegistryType::DWord || stored.type == RegistryType::Binary;
  stored.data = isNumber ? BytesOf(ToLong32(value)) : automation::Utf16ToUtf8(ToText16(value));
  try {
    m_ports.registry->Set(place.root, place.key, place.name, stored);
  } catch (const automation::Error& error) {
    automation::Raise(kSystemAccessDenied, kWrite,
                      "Invalid root in registry key \"" + name + "\": " + error.Description());
  }
}

void ShellRegistry::Delete(const std::string& name) {
  const Place place = Parse(name, kDelete);
  platform::Registry& registry = *m_ports.registry;
  const bool isThere = place.isKey ? registry.KeyExists(place.root, place.key)
                                   : registry.Query(place.root, place.key, place.name).has_value();
  const bool hasKeys = isThere && place.isKey && !registry.SubKeys(place.root, place.key).empty();
  if (!isThere || hasKeys) Fail(kDelete, "Unable to remove", name);
  try {
    if (place.isKey) {
      registry.RemoveKey(place.root, place.key);
    } else {
      registry.RemoveValue(place.root, place.key, place.name);
    }
  } catch (const automation::Error&) {
    Fail(kDelete, "Unable to remove", name);
  }
}

ShellRegistry::Place ShellRegistry::Parse(const std::string& name, const char* source) {
  const std::size_t rootEnd = name.find('\\');
  const std::string_view root = std::string_view(name).substr(0, rootEnd);
  for (const RootName& known : kRoots) {
    const bool isThis = automation::EqualsIgnoreCaseAscii(root, known.shortName) ||
                        automation::EqualsIgnoreCaseAscii(root, known.longName);
    if (!isThis || rootEnd == std::string::npos) continue;
    const std::string rest = name.substr(rootEnd + 1);
    const std::size_t keyEnd = rest.rfind('\\');
    Place place;
    place.root = known.root;
    place.isKey = keyEnd != std::string::npos && keyEnd + 1 == rest.size();
    place.key = keyEnd == std::string::npos ? "" : rest.substr(0, keyEnd);
    place.name = keyEnd == std::string::npos ? rest : rest.substr(keyEnd + 1);
    return place;
  }
  Fail(source, "Invalid root in", name);
}

}  // namespace hearthmake::vbscript
