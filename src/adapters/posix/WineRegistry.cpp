#include "adapters/posix/WineRegistry.hpp"

#include <map>
#include <utility>

#include "adapters/posix/RegText.hpp"
#include "adapters/posix/TextEncoding.hpp"
#include "automation/Error.hpp"

namespace hearthmake::posix {

using automation::RuntimeError;
using platform::RegistryRoot;
using platform::RegistryValue;

namespace {

constexpr std::int64_t kLargestFile = std::int64_t{1} << 30;
const std::string kClasses = "Software\\Classes\\";
const std::string kRedirected = "Wow6432Node\\";

using Names = KeyTree<int>;

std::string_view FirstName(std::string_view path) { return Names::TakeName(path); }

// What follows a beginning, which ends at the end of a name; nothing when the path does not begin so.
std::optional<std::string_view> Below(std::string_view path, std::string_view beginning) {
  for (std::string_view wanted = Names::TakeName(beginning); !wanted.empty();
       wanted = Names::TakeName(beginning))
    if (FoldCase(Names::TakeName(path)) != FoldCase(wanted)) return std::nullopt;
  path.remove_prefix(std::min(path.find_first_not_of('\\'), path.size()));
  return path;
}

bool IsRedirectedClass(std::string_view name) {
  const std::string folded = FoldCase(name);
  return folded == "CLSID" || folded == "INTERFACE";
}

void CheckNames(std::string_view key, std::string_view name) {
  if (!RegText::IsName(key) || !RegText::IsName(name))
    automation::Raise(RuntimeError::InvalidProcedureCall, "Registry",
                      "the name of a key or value is UTF-8 text without control characters");
}

}  // namespace

WineRegistry::HiveFile::HiveFile(const std::string& path) : file(path, kLargestFile) {}

WineRegistry::WineRegistry(std::string prefix, std::string serverRoot)
    : m_prefix(std::move(prefix)),
      m_serverRoot(std::move(serverRoot)),
      m_system(m_prefix + "/system.reg"),
      m_user(m_prefix + "/user.reg"),
      m_default(m_prefix + "/userdef.reg") {}

bool WineRegistry::KeyExists(RegistryRoot root, std::string_view key) {
  for (const View& view : Views(root, key))
    if (WineHive* hive = TryLoad(*view.file); hive != nullptr && hive->KeyExists(view.key)) return true;
  return false;
}

std::optional<RegistryValue> WineRegistry::Query(RegistryRoot root, std::string_view key,
                                                 std::string_view name) {
  for (const View& view : Views(root, key)) {
    WineHive* hive = TryLoad(*view.file);
    if (hive == nullptr) continue;
    if (auto value = hive->Query(view.key, name)) return value;
  }
  return std::nullopt;
}

std::vector<std::string> WineRegistry::SubKeys(RegistryRoot root, std::string_view key) {
  return List(root, key, &WineHive::SubKeys);
}

std::vector<std::string> WineRegistry::ValueNames(RegistryRoot root, std::string_view key) {
  return List(root, key, &WineHive::ValueNames);
}

void WineRegistry::Set(RegistryRoot root, std::string_view key, std::string_view name,
                       const RegistryValue& value) {
  CheckNames(key, name);
  for (const View& view : Views(root, key)) {
    WineHive* hive = Load(*view.file);
    const bool exists = hive != nullptr && hive->KeyExists(view.key);
    if (!exists && !view.takesNewKeys) continue;
    Change(*view.file, [&](WineHive& fresh) { return fresh.Set(view.key, name, value); });
    return;
  }
  automation::Raise(RuntimeError::PathNotFound, "Registry", m_prefix + " has no registry for this key");
}

void WineRegistry::SetAll(RegistryRoot root, std::span<const platform::RegistryEntry> entries) {
  for (const platform::RegistryEntry& entry : entries) Set(root, entry.key, entry.name, entry.value);
}

void WineRegistry::RemoveValue(RegistryRoot root, std::string_view key, std::string_view name) {
  CheckNames(key, name);
  for (const View& view : Views(root, key)) {
    WineHive* hive = Load(*view.file);
    if (hive != nullptr && hive->Query(view.key, name))
      Change(*view.file, [&](WineHive& fresh) { return fresh.RemoveValue(view.key, name); });
  }
}

void WineRegistry::RemoveKey(RegistryRoot root, std::string_view key) {
  if (FirstName(key).empty())
    automation::Raise(RuntimeError::InvalidProcedureCall, "Registry", "a root key can't be removed");
  CheckNames(key, {});
  for (const View& view : Views(root, key)) {
    WineHive* hive = Load(*view.file);
    if (hive != nullptr && hive->KeyExists(view.key))
      Change(*view.file, [&](WineHive& fresh) { return fresh.RemoveKey(view.key); });
  }
}

WineHive* WineRegistry::Load(HiveFile& file) {
  if (!file.file.HasChanged()) return file.hive.get();
  file.hive.reset();
  try {
    std::string text = file.file.Read();
    if (!text.empty()) file.hive = std::make_unique<WineHive>(std::move(text), file.file.Path());
  } catch (...) {
    file.file.Forget();
    throw;
  }
  return file.hive.get();
}

WineHive* WineRegistry::TryLoad(HiveFile& file) {
  try {
    return Load(file);
  } catch (const automation::Error&) {
    return nullptr;
  }
}

bool WineRegistry::Is64Bit() {
  const WineHive* hive = TryLoad(m_system);
  return hive != nullptr && hive->Is64Bit();
}

std::vector<WineRegistry::View> WineRegistry::Views(RegistryRoot root, std::string_view key) {
  switch (root) {
    case RegistryRoot::ClassesRoot: return ClassesViews(key);
    case RegistryRoot::LocalMachine: return MachineViews(key);
    case RegistryRoot::CurrentUser: return UserViews(key);
    case RegistryRoot::Users: return UsersViews(key);
  }
  return {};
}

std::vector<WineRegistry::View> WineRegistry::ClassesViews(std::string_view key) {
  std::vector<View> views = UserViews(kClasses + std::string(key));
  for (View& view : views) view.takesNewKeys = false;
  for (View& view : MachineViews(kClasses + std::string(key))) views.push_back(std::move(view));
  return views;
}

std::vector<WineRegistry::View> WineRegistry::MachineViews(std::string_view key) {
  const View shared{&m_system, std::string(key), true};
  const auto software = Is64Bit() ? Below(key, "Software") : std::nullopt;
  if (!software || FoldCase(FirstName(*software)) == "WOW6432NODE") return {shared};
  const auto classes = Below(key, kClasses);
  if (!classes) {
    if (software->empty()) return {shared};
    return {{&m_system, "Software\\" + kRedirected + std::string(*software), true}, shared};
  }
  const std::string_view first = FirstName(*classes);
  if (first.empty() || FoldCase(first) == "WOW6432NODE") return {shared};
  WineHive* hive = TryLoad(m_system);
  const bool isRedirected = IsRedirectedClass(first) ||
                            (hive != nullptr && hive->KeyExists(kClasses + kRedirected + std::string(first)));
  return {{&m_system, kClasses + kRedirected + std::string(*classes), isRedirected}, shared};
}

std::vector<WineRegistry::View> WineRegistry::UserViews(std::string_view key) {
  const View shared{&m_user, std::string(key), true};
  const auto classes = Is64Bit() ? Below(key, kClasses) : std::nullopt;
  if (!classes || classes->empty() || FoldCase(FirstName(*classes)) == "WOW6432NODE") return {shared};
  return {{&m_user, kClasses + kRedirected + std::string(*classes), IsRedirectedClass(FirstName(*classes))},
          shared};
}

// The users that a prefix has files for: `.Default`, and the current one by security id.
std::vector<WineRegistry::View> WineRegistry::UsersViews(std::string_view key) {
  const std::string_view user = FirstName(key);
  if (FoldCase(user) == ".DEFAULT") return {{&m_default, std::string(*Below(key, user)), true}};
  const WineHive* hive = TryLoad(m_user);
  const auto id = hive == nullptr ? std::nullopt : Below(hive->Base(), "User");
  if (!user.empty() && id && FoldCase(user) == FoldCase(*id)) return UserViews(*Below(key, user));
  return {};
}

std::vector<std::string> WineRegistry::List(RegistryRoot root, std::string_view key, Lister lister) {
  std::map<std::string, std::string> names;
  for (const View& view : Views(root, key)) {
    WineHive* hive = TryLoad(*view.file);
    if (hive == nullptr) continue;
    for (std::string& name : (hive->*lister)(view.key)) names.try_emplace(FoldCase(name), std::move(name));
  }
  std::vector<std::string> result;
  result.reserve(names.size());
  for (auto& [folded, name] : names) result.push_back(std::move(name));
  return result;
}

void WineRegistry::Change(HiveFile& file, const std::function<bool(WineHive&)>& change) {
  // The first lock is for other processes of ours, which wait; the second tells of a server.
  const FileDescriptor lock = file.file.Lock();
  const WineServerLock server(m_prefix, m_serverRoot);
  WineHive* hive = Load(file);
  if (hive == nullptr)
    automation::Raise(RuntimeError::PathNotFound, "Registry",
                      file.file.Path() + " is missing; make the prefix first (wineboot)");
  try {
    if (change(*hive)) file.file.Replace(hive->Print());
  } catch (...) {
    file.file.Forget();
    throw;
  }
}

}  // namespace hearthmake::posix
