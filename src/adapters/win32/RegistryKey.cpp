#include "adapters/win32/RegistryKey.hpp"

#include <algorithm>

#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"

namespace hearthmake::win32 {

using automation::RuntimeError;
using platform::RegistryType;
using platform::RegistryValue;

namespace {

// What the system allows.
constexpr std::size_t kDeepest = 512;
constexpr std::size_t kLongestValueName = 16'383;

[[noreturn]] void Fail(LSTATUS error, std::string_view path) {
  const RuntimeError number = error == ERROR_ACCESS_DENIED ? RuntimeError::PermissionDenied
                              : error == ERROR_FILE_NOT_FOUND || error == ERROR_INVALID_PARAMETER
                                  ? RuntimeError::InvalidProcedureCall
                                  : RuntimeError::DeviceIoError;
  automation::Raise(number, "Registry", std::string(path));
}

// The system folds away backslashes too many in some calls and refuses them in others.
std::wstring ToSystemKey(std::string_view path) {
  std::wstring key;
  std::size_t depth = 0;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('\\'), path.size());
    if (end > 0) {
      if (!key.empty()) key += L'\\';
      key += ToWide(path.substr(0, end));
      ++depth;
    }
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  if (depth > kDeepest)
    automation::Raise(RuntimeError::InvalidProcedureCall, "Registry", "a key lies too deep");
  return key;
}

bool IsText(RegistryType type) {
  return type == RegistryType::String || type == RegistryType::ExpandString ||
         type == RegistryType::MultiString;
}

std::wstring_view UnitsOf(const std::vector<BYTE>& bytes) {
  return {reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t)};
}

RegistryValue FromSystem(DWORD type, const std::vector<BYTE>& bytes) {
  RegistryValue value{static_cast<RegistryType>(type), {}};
  if (!IsText(value.type)) {
    value.data.assign(bytes.begin(), bytes.end());
    return value;
  }
  std::wstring_view text = UnitsOf(bytes);
  // The final zero, which some writers forget.
  if (text.ends_with(L'\0')) text.remove_suffix(1);
  value.data = ToUtf8(text);
  return value;
}

std::vector<BYTE> ToSystem(const RegistryValue& value) {
  if (!IsText(value.type)) return {value.data.begin(), value.data.end()};
  const std::wstring text = ToWide(value.data);
  const auto* begin = reinterpret_cast<const BYTE*>(text.c_str());
  return {begin, begin + (text.size() + 1) * sizeof(wchar_t)};
}

}  // namespace

RegistryKey::~RegistryKey() {
  if (m_key != nullptr) RegCloseKey(m_key);
}

RegistryKey RegistryKey::Open(HKEY root, std::string_view path, REGSAM access, REGSAM view) {
  HKEY key = nullptr;
  const LSTATUS result = RegOpenKeyExW(root, ToSystemKey(path).c_str(), 0, access | view, &key);
  return result == ERROR_SUCCESS ? RegistryKey(key, path) : RegistryKey();
}

RegistryKey RegistryKey::Create(HKEY root, std::string_view path, REGSAM view) {
  HKEY key = nullptr;
  const LSTATUS result = RegCreateKeyExW(root, ToSystemKey(path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                         KEY_READ | KEY_WRITE | view, nullptr, &key, nullptr);
  if (result != ERROR_SUCCESS) Fail(result, path);
  return {key, path};
}

void RegistryKey::Remove(HKEY root, std::string_view path, REGSAM view) {
  // First what is below it: the call that takes a whole tree knows no view.
  const RegistryKey key = Open(root, path, KEY_READ, view);
  if (!key) return;
  for (const std::string& name : key.SubKeys()) Remove(root, std::string(path) + '\\' + name, view);
  const LSTATUS result = RegDeleteKeyExW(root, ToSystemKey(path).c_str(), view, 0);
  if (result != ERROR_SUCCESS && result != ERROR_FILE_NOT_FOUND) Fail(result, path);
}

std::optional<RegistryValue> RegistryKey::Query(std::string_view name) const {
  const std::wstring systemName = ToWide(name);
  std::vector<BYTE> bytes(256);
  while (true) {
    DWORD type = 0;
    auto size = static_cast<DWORD>(bytes.size());
    const LSTATUS result = RegQueryValueExW(m_key, systemName.c_str(), nullptr, &type, bytes.data(), &size);
    if (result == ERROR_MORE_DATA) {
      // Another process may let it grow meanwhile.
      bytes.resize(std::max<std::size_t>(size, bytes.size() * 2));
      continue;
    }
    if (result != ERROR_SUCCESS) return std::nullopt;
    bytes.resize(size);
    return FromSystem(type, bytes);
  }
}

std::vector<std::string> RegistryKey::SubKeys() const {
  std::vector<std::string> names;
  std::wstring name(256, L'\0');  // a key's name has at most 255 units
  for (DWORD i = 0;; ++i) {
    auto length = static_cast<DWORD>(name.size());
    const LSTATUS result = RegEnumKeyExW(m_key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (result != ERROR_SUCCESS) return names;
    names.push_back(ToUtf8(std::wstring_view(name).substr(0, length)));
  }
}

std::vector<std::string> RegistryKey::ValueNames() const {
  std::vector<std::string> names;
  std::wstring name(kLongestValueName + 1, L'\0');
  for (DWORD i = 0;; ++i) {
    auto length = static_cast<DWORD>(name.size());
    const LSTATUS result = RegEnumValueW(m_key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (result != ERROR_SUCCESS) return names;
    names.push_back(ToUtf8(std::wstring_view(name).substr(0, length)));
  }
}

void RegistryKey::Set(std::string_view name, const RegistryValue& value) const {
  const std::vector<BYTE> bytes = ToSystem(value);
  const LSTATUS result = RegSetValueExW(m_key, ToWide(name).c_str(), 0, static_cast<DWORD>(value.type),
                                        bytes.data(), static_cast<DWORD>(bytes.size()));
  if (result != ERROR_SUCCESS) Fail(result, m_path);
}

void RegistryKey::RemoveValue(std::string_view name) const {
  const LSTATUS result = RegDeleteValueW(m_key, ToWide(name).c_str());
  if (result != ERROR_SUCCESS && result != ERROR_FILE_NOT_FOUND) Fail(result, m_path);
}

}  // namespace hearthmake::win32
