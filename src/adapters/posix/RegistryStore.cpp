#include "adapters/posix/RegistryStore.hpp"

#include <algorithm>
#include <utility>

#include "adapters/posix/RegistryData.hpp"
#include "adapters/posix/TextEncoding.hpp"
#include "automation/Error.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::posix {

using automation::RuntimeError;
using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

namespace {

constexpr std::int64_t kLargestFile = std::int64_t{1} << 30;
constexpr std::string_view kMark =
    "; Kept by hearthmake: changes are added at the end, where a later line wins over an earlier one.\n";
constexpr std::string_view kClasses = "\\Software\\Classes\\";
// So many outdated records are not worth a thought.
constexpr std::size_t kSlack = 1000;

std::string FileStart() { return RegText::Header() + std::string(kMark); }

std::string FullPath(RegistryRoot root, std::string_view separator, std::string_view key) {
  std::string path(RegText::RootName(root));
  path += separator;
  for (std::string_view name = KeyTree<int>::TakeName(key); !name.empty();
       name = KeyTree<int>::TakeName(key)) {
    if (!path.ends_with('\\')) path += '\\';
    path += name;
  }
  if (path.ends_with('\\')) path.pop_back();
  return path;
}

// The full paths that a key stands for, in the order of a look-up.
std::vector<std::string> Views(RegistryRoot root, std::string_view key) {
  if (root != RegistryRoot::ClassesRoot) return {FullPath(root, "\\", key)};
  return {FullPath(RegistryRoot::CurrentUser, kClasses, key),
          FullPath(RegistryRoot::LocalMachine, kClasses, key)};
}

[[noreturn]] void RaiseInvalid(const std::string& what) {
  automation::Raise(RuntimeError::InvalidProcedureCall, "Registry", what);
}

void RequireNames(std::string_view key, std::string_view name) {
  if (!RegText::IsName(key) || !RegText::IsName(name))
    RaiseInvalid("the name of a key or value is UTF-8 text without control characters");
}

// What the value will be once it has been written and read again.
RegistryValue AsStored(const RegistryValue& value) {
  // Plain text, as nearly all values are, comes back as it went.
  const bool isText = value.type == RegistryType::String || value.type == RegistryType::ExpandString;
  if (isText && automation::IsAscii(value.data)) return value;
  return DecodeRegistryValue(static_cast<std::uint32_t>(value.type), EncodeRegistryValue(value));
}

// What ClassesRoot stands for, in FoldCase.
constexpr std::string_view kFoldedUserClasses = "HKEY_CURRENT_USER\\SOFTWARE\\CLASSES";
constexpr std::string_view kFoldedMachineClasses = "HKEY_LOCAL_MACHINE\\SOFTWARE\\CLASSES";

bool IsSame(const RegistryValue& left, const RegistryValue& right) {
  return left.type == right.type && left.data == right.data;
}

// The names themselves, in the order of their folded forms.
std::vector<std::string> Spellings(const std::map<std::string_view, std::string_view>& names) {
  std::vector<std::string> result;
  result.reserve(names.size());
  for (const auto& [folded, name] : names) result.emplace_back(name);
  return result;
}

}  // namespace

RegistryStore::RegistryStore(std::string path) : m_file(std::move(path), kLargestFile) {}

bool RegistryStore::KeyExists(RegistryRoot root, std::string_view key) {
  return IsReadable() && Find(root, key)[0] != nullptr;
}

std::optional<RegistryValue> RegistryStore::Query(RegistryRoot root, std::string_view key,
                                                  std::string_view name) {
  if (!IsReadable()) return std::nullopt;
  const std::string folded = FoldCase(name);
  for (const Tree::Key* place : Find(root, key)) {
    if (place == nullptr) break;
    if (const auto value = place->content.find(folded); value != place->content.end())
      return value->second.value;
  }
  return std::nullopt;
}

std::vector<std::string> RegistryStore::SubKeys(RegistryRoot root, std::string_view key) {
  if (!IsReadable()) return {};
  std::map<std::string_view, std::string_view> names;
  for (const Tree::Key* place : Find(root, key)) {
    if (place == nullptr) break;
    for (const auto& [folded, child] : place->children) names.emplace(folded, child->name);
  }
  return Spellings(names);
}

std::vector<std::string> RegistryStore::ValueNames(RegistryRoot root, std::string_view key) {
  if (!IsReadable()) return {};
  std::map<std::string_view, std::string_view> names;
  for (const Tree::Key* place : Find(root, key)) {
    if (place == nullptr) break;
    for (const auto& [folded, value] : place->content) names.emplace(folded, value.name);
  }
  return Spellings(names);
}

void RegistryStore::Set(RegistryRoot root, std::string_view key, std::string_view name,
                        const RegistryValue& value) {
  RequireNames(key, name);
  // Without the lock: whoever changes the file from here on might as well have done so right behind us.
  if (!m_file.HasChanged() && IsSet(root, key, name, value)) return;
  Change([&] { Apply({RegistryChange::Kind::SetValue, root, std::string(key), std::string(name), value}); });
}

void RegistryStore::SetAll(RegistryRoot root, std::span<const platform::RegistryEntry> entries) {
  for (const platform::RegistryEntry& entry : entries) RequireNames(entry.key, entry.name);
  const auto isSet = [&](const platform::RegistryEntry& entry) {
    return IsSet(root, entry.key, entry.name, entry.value);
  };
  if (!m_file.HasChanged() && std::all_of(entries.begin(), entries.end(), isSet)) return;
  Change([&] {
    for (const platform::RegistryEntry& entry : entries)
      Apply({RegistryChange::Kind::SetValue, root, entry.key, entry.name, entry.value});
  });
}

void RegistryStore::RemoveValue(RegistryRoot root, std::string_view key, std::string_view name) {
  RequireNames(key, name);
  Change([&] { Apply({RegistryChange::Kind::RemoveValue, root, std::string(key), std::string(name), {}}); });
}

void RegistryStore::RemoveKey(RegistryRoot root, std::string_view key) {
  if (key.find_first_not_of('\\') == std::string_view::npos) RaiseInvalid("a root key can't be removed");
  RequireNames(key, {});
  Change([&] { Apply({RegistryChange::Kind::RemoveKey, root, std::string(key), {}, {}}); });
}

void RegistryStore::Import(std::string bytes, const std::string& name) {
  std::vector<RegistryChange> changes;
  RegText::Parse(std::move(bytes), name, [&](const RegistryChange& change) { changes.push_back(change); });
  Change([&] {
    for (const RegistryChange& change : changes) Apply(change);
  });
}

void RegistryStore::Load() {
  m_tree = Tree();
  m_openKey.clear();
  m_records = 0;
  m_nextCount = kSlack;
  try {
    std::string bytes = m_file.Read();
    m_isForeign = !bytes.starts_with(FileStart());
    if (!m_isForeign && !bytes.ends_with('\n')) {
      bytes.resize(bytes.rfind('\n') + 1);
      m_isForeign = true;  // what was cut off must not meet what is added
    }
    LoadChanges(std::move(bytes));
  } catch (...) {
    m_file.Forget();
    m_notes.clear();
    throw;
  }
  m_openKey.clear();
}

void RegistryStore::LoadChanges(std::string bytes) {
  Tree::Key* open = nullptr;  // the key that the text names, where it is plain which one that is
  RegText::Parse(std::move(bytes), m_file.Path(), [&](const RegistryChange& change) {
    ++m_records;
    const bool isPlain = change.root != RegistryRoot::ClassesRoot;
    if (isPlain && change.kind == RegistryChange::Kind::MakeKey) {
      open = &m_tree.MakeBelow(m_tree.Make(RegText::RootName(change.root)), 1, change.key);
      return;
    }
    if (isPlain && change.kind == RegistryChange::Kind::SetValue && open != nullptr) {
      const auto place = open->content.try_emplace(FoldCase(change.name), Value{change.name, {}}).first;
      place->second.value = AsStored(change.value);
      return;
    }
    if (change.kind != RegistryChange::Kind::RemoveValue) open = nullptr;
    Apply(change);
    m_notes.clear();  // the file has it
  });
}

// Whether a Set would change nothing.
bool RegistryStore::IsSet(RegistryRoot root, std::string_view key, std::string_view name,
                          const RegistryValue& value) {
  const Places places = Find(root, key);
  if (places[0] == nullptr) return false;
  const auto known = places[0]->content.find(FoldCase(name));
  return known != places[0]->content.end() && IsSame(known->second.value, AsStored(value));
}

bool RegistryStore::IsReadable() {
  if (!m_file.HasChanged()) return true;
  try {
    Load();
    return true;
  } catch (const automation::Error&) {
    return false;
  }
}

RegistryStore::Places RegistryStore::Find(RegistryRoot root, std::string_view key) {
  const std::string folded = FoldCase(key);
  Places places{};
  std::size_t count = 0;
  const auto look = [&](std::string_view start) {
    Tree::Key* base = m_tree.Root().Below(start);
    Tree::Key* found = base == nullptr ? nullptr : base->Below(folded);
    if (found != nullptr) places[count++] = found;
  };
  if (root == RegistryRoot::ClassesRoot) {
    look(kFoldedUserClasses);
    look(kFoldedMachineClasses);
  } else {
    look(RegText::RootName(root));
  }
  // The roots themselves are always there.
  if (count == 0 && key.find_first_not_of('\\') == std::string_view::npos)
    places[0] = &m_tree.Make(Views(root, key).back());
  return places;
}

void RegistryStore::Change(const std::function<void()>& change) {
  const FileDescriptor lock = m_file.Lock();
  if (m_file.HasChanged()) Load();
  try {
    change();
    if (m_notes.empty()) return;
    m_records += static_cast<std::size_t>(std::count(m_notes.begin(), m_notes.end(), '\n'));
    if (m_isForeign || IsDue()) {
      m_file.Replace(PrintAll());
      m_isForeign = false;
      m_openKey.clear();
    } else {
      m_file.Append(m_notes);
    }
    m_notes.clear();
  } catch (...) {
    // The file has not got what memory has by now.
    m_file.Forget();
    m_notes.clear();
    throw;
  }
}

void RegistryStore::Apply(const RegistryChange& change) {
  const std::vector<std::string> views = Views(change.root, change.key);
  const auto known = std::find_if(views.begin(), views.end(),
                                  [&](const std::string& path) { return m_tree.Find(path) != nullptr; });
  const std::string& target = known == views.end() ? views.back() : *known;
  switch (change.kind) {
    case RegistryChange::Kind::MakeKey:
      if (known == views.end()) NoteKey(target);
      m_tree.Make(target);
      break;
    case RegistryChange::Kind::SetValue: SetValue(target, change.name, AsStored(change.value)); break;
    case RegistryChange::Kind::RemoveValue:
      for (const std::string& path : views) RemoveValueFrom(path, change.name);
      break;
    case RegistryChange::Kind::RemoveKey:
      for (const std::string& path : views) {
        if (!m_tree.Remove(path)) continue;
        RegText::AppendKeyRemoval(m_notes, path);
        m_openKey.clear();
      }
      break;
  }
}

void RegistryStore::SetValue(const std::string& path, const std::string& name, const RegistryValue& value) {
  const auto [place, isNew] = m_tree.Make(path).content.try_emplace(FoldCase(name), Value{name, value});
  if (!isNew && IsSame(place->second.value, value)) return;
  place->second.value = value;
  NoteKey(path);
  RegText::AppendValue(m_notes, place->second.name, value);
}

void RegistryStore::RemoveValueFrom(const std::string& path, const std::string& name) {
  Tree::Key* key = m_tree.Find(path);
  if (key == nullptr || key->content.erase(FoldCase(name)) == 0) return;
  NoteKey(path);
  RegText::AppendValueRemoval(m_notes, name);
}

void RegistryStore::NoteKey(const std::string& path) {
  if (path == m_openKey) return;
  m_notes += '\n';
  RegText::AppendKey(m_notes, path);
  m_openKey = path;
}

// Whether less than half of the file is still in force. Counting takes a walk over everything, so the
// next one comes only when the file has doubled.
bool RegistryStore::IsDue() {
  if (m_records < m_nextCount) return false;
  std::size_t inForce = 0;
  std::vector<const Tree::Key*> pending = {&m_tree.Root()};
  while (!pending.empty()) {
    const Tree::Key* key = pending.back();
    pending.pop_back();
    inForce += 1 + key->content.size();
    for (const auto& [folded, child] : key->children) pending.push_back(child.get());
  }
  m_nextCount = 2 * inForce + kSlack;
  if (m_records < m_nextCount) return false;
  m_records = inForce;
  return true;
}

std::string RegistryStore::PrintAll() {
  std::string text = FileStart();
  std::vector<std::pair<std::string, const Tree::Key*>> pending = {{"", &m_tree.Root()}};
  while (!pending.empty()) {
    const auto [path, key] = std::move(pending.back());
    pending.pop_back();
    // A key with others below it is made with them.
    const bool isRoot = path.find('\\') == std::string::npos;
    if (!key->content.empty() || (key->children.empty() && !isRoot)) {
      text += '\n';
      RegText::AppendKey(text, path);
      for (const auto& [folded, value] : key->content) RegText::AppendValue(text, value.name, value.value);
    }
    for (auto child = key->children.rbegin(); child != key->children.rend(); ++child)
      pending.emplace_back(path.empty() ? child->second->name : path + '\\' + child->second->name,
                           child->second.get());
  }
  return text;
}

}  // namespace hearthmake::posix
