#include "adapters/posix/RegistryStore.hpp"

#include <algorithm>
#include <map>
#include <optional>
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

// Plain text, as nearly all values are, comes back from the file as it went.
bool IsStoredAsItIs(const RegistryValue& value) {
  return (value.type == RegistryType::String || value.type == RegistryType::ExpandString) &&
         automation::IsAscii(value.data);
}

// What another value will be once it has been written and read again.
RegistryValue AsStored(const RegistryValue& value) {
  return DecodeRegistryValue(static_cast<std::uint32_t>(value.type), EncodeRegistryValue(value));
}

// What ClassesRoot stands for.
constexpr std::string_view kUserClasses = "HKEY_CURRENT_USER\\Software\\Classes";
constexpr std::string_view kMachineClasses = "HKEY_LOCAL_MACHINE\\Software\\Classes";

bool Has(const RegistryTree::Value& known, const RegistryValue& value) {
  if (known.type != value.type) return false;
  return IsStoredAsItIs(value) ? known.data == value.data : known.data == AsStored(value).data;
}

// The names themselves, in the order of their folded forms.
std::vector<std::string> Spellings(const std::map<std::string, std::string_view>& names) {
  std::vector<std::string> result;
  result.reserve(names.size());
  for (const auto& [folded, name] : names) result.emplace_back(name);
  return result;
}

}  // namespace

RegistryStore::RegistryStore(std::string path) : m_file(std::move(path), kLargestFile) {}

bool RegistryStore::KeyExists(RegistryRoot root, std::string_view key) {
  return IsReadable() && !Find(root, key).empty();
}

std::optional<RegistryValue> RegistryStore::Query(RegistryRoot root, std::string_view key,
                                                  std::string_view name) {
  if (!IsReadable()) return std::nullopt;
  for (const Key* place : Find(root, key)) {
    if (const Value* const value = m_tree->Find(*place, name); value != nullptr)
      return RegistryValue{value->type, std::string(value->data)};
  }
  return std::nullopt;
}

std::vector<std::string> RegistryStore::SubKeys(RegistryRoot root, std::string_view key) {
  if (!IsReadable()) return {};
  std::map<std::string, std::string_view> names;
  for (const Key* place : Find(root, key)) {
    for (const Key* child = place->children.first; child != nullptr; child = child->next)
      names.emplace(FoldCase(child->name), child->name);
  }
  return Spellings(names);
}

std::vector<std::string> RegistryStore::ValueNames(RegistryRoot root, std::string_view key) {
  if (!IsReadable()) return {};
  std::map<std::string, std::string_view> names;
  for (const Key* place : Find(root, key)) {
    for (const Value* value = place->content.first; value != nullptr; value = value->next)
      names.emplace(FoldCase(value->name), value->name);
  }
  return Spellings(names);
}

void RegistryStore::Set(RegistryRoot root, std::string_view key, std::string_view name,
                        const RegistryValue& value) {
  const platform::RegistryEntry entry{std::string(key), std::string(name), value};
  SetAll(root, {&entry, 1});
}

void RegistryStore::SetAll(RegistryRoot root, std::span<const platform::RegistryEntry> entries) {
  // Without the lock: whoever changes the file from here on might as well have done so right behind us.
  if (m_file.HasChanged()) Load();
  std::vector<Trail> trails = Trails(root);
  const auto isSet = [&](const platform::RegistryEntry& entry) { return IsSet(trails, entry); };
  if (std::all_of(entries.begin(), entries.end(), isSet)) return;
  // Only now: what is set already has names that can be.
  for (const platform::RegistryEntry& entry : entries) RequireNames(entry.key, entry.name);
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
  m_tree = std::make_unique<RegistryTree>();
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
  Key* open = nullptr;  // the key that the text names, where it is plain which one that is
  std::optional<Trail> trail;
  RegistryRoot root{};  // of the trail
  RegText::Parse(std::move(bytes), m_file.Path(), [&](const RegistryChange& change) {
    ++m_records;
    const bool isPlain = change.root != RegistryRoot::ClassesRoot;
    if (isPlain && change.kind == RegistryChange::Kind::MakeKey) {
      if (!trail || root != change.root) trail.emplace(Keys(), Keys().Make(RegText::RootName(change.root)));
      root = change.root;
      open = &trail->Make(change.key);
      return;
    }
    if (isPlain && change.kind == RegistryChange::Kind::SetValue && open != nullptr) {
      SetStored(*open, change.name, change.value);
      return;
    }
    if (change.kind != RegistryChange::Kind::RemoveValue) open = nullptr;
    if (change.kind == RegistryChange::Kind::RemoveKey) trail.reset();
    Apply(change);
    m_notes.clear();  // the file has it
  });
}

// Whether a Set would change nothing.
bool RegistryStore::IsSet(std::vector<Trail>& trails, const platform::RegistryEntry& entry) {
  for (Trail& trail : trails) {
    const Key* const key = trail.Find(entry.key);
    if (key == nullptr) continue;
    const Value* const known = m_tree->Find(*key, entry.name);
    return known != nullptr && Has(*known, entry.value);
  }
  return false;
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

std::vector<RegistryStore::Trail> RegistryStore::Trails(RegistryRoot root) {
  std::vector<Trail> trails;
  const auto add = [&](std::string_view path) {
    if (Key* const start = Keys().Find(path); start != nullptr) trails.emplace_back(Keys(), *start);
  };
  if (root == RegistryRoot::ClassesRoot) {
    add(kUserClasses);
    add(kMachineClasses);
  } else {
    add(RegText::RootName(root));
  }
  return trails;
}

std::vector<const RegistryStore::Key*> RegistryStore::Find(RegistryRoot root, std::string_view key) {
  std::vector<const Key*> places;
  for (Trail& trail : Trails(root))
    if (const Key* const place = trail.Find(key); place != nullptr) places.push_back(place);
  // The roots themselves are always there.
  if (places.empty() && key.find_first_not_of('\\') == std::string_view::npos)
    places.push_back(&Keys().Make(Views(root, key).back()));
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
      Rewrite();
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

void RegistryStore::Rewrite() {
  std::string text = PrintAll();
  m_file.Replace(text);
  m_isForeign = false;
  // So that memory is free of what is out of date too.
  m_tree = std::make_unique<RegistryTree>();
  m_records = 0;
  LoadChanges(std::move(text));
  m_openKey.clear();
}

void RegistryStore::Apply(const RegistryChange& change) {
  const std::vector<std::string> views = Views(change.root, change.key);
  const auto known = std::find_if(views.begin(), views.end(),
                                  [&](const std::string& path) { return Keys().Find(path) != nullptr; });
  const std::string& target = known == views.end() ? views.back() : *known;
  switch (change.kind) {
    case RegistryChange::Kind::MakeKey:
      if (known == views.end()) NoteKey(target);
      Keys().Make(target);
      break;
    case RegistryChange::Kind::SetValue: SetValue(target, change.name, change.value); break;
    case RegistryChange::Kind::RemoveValue:
      for (const std::string& path : views) RemoveValueFrom(path, change.name);
      break;
    case RegistryChange::Kind::RemoveKey:
      for (const std::string& path : views) {
        if (!Keys().Remove(path)) continue;
        RegText::AppendKeyRemoval(m_notes, path);
        m_openKey.clear();
      }
      break;
  }
}

void RegistryStore::SetValue(const std::string& path, const std::string& name, const RegistryValue& value) {
  Key& key = Keys().Make(path);
  if (!SetStored(key, name, value)) return;
  const Value& stored = *m_tree->Find(key, name);
  NoteKey(path);
  RegText::AppendValue(m_notes, stored.name, {stored.type, std::string(stored.data)});
}

bool RegistryStore::SetStored(Key& key, const std::string& name, const RegistryValue& value) {
  if (IsStoredAsItIs(value)) return m_tree->Set(key, name, value.type, value.data);
  const RegistryValue stored = AsStored(value);
  return m_tree->Set(key, name, stored.type, stored.data);
}

void RegistryStore::RemoveValueFrom(const std::string& path, const std::string& name) {
  Key* const key = Keys().Find(path);
  if (key == nullptr || !m_tree->Remove(*key, name)) return;
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
  const std::size_t inForce = m_tree->Count();
  m_nextCount = 2 * inForce + kSlack;
  if (m_records < m_nextCount) return false;
  m_records = inForce;
  return true;
}

std::string RegistryStore::PrintAll() {
  std::string text = FileStart();
  std::vector<std::pair<std::string, const Key*>> pending = {{"", &Keys().Root()}};
  while (!pending.empty()) {
    const auto [path, key] = std::move(pending.back());
    pending.pop_back();
    // A key with others below it is made with them.
    const bool isRoot = path.find('\\') == std::string::npos;
    if (key->content.first != nullptr || (key->children.first == nullptr && !isRoot)) {
      text += '\n';
      RegText::AppendKey(text, path);
      for (const Value* value : RegistryTree::Values(*key))
        RegText::AppendValue(text, value->name, {value->type, std::string(value->data)});
    }
    const std::vector<const Key*> children = RegistryTree::Keys::Children(*key);
    const std::string start = path.empty() ? path : path + '\\';
    for (auto child = children.rbegin(); child != children.rend(); ++child)
      pending.emplace_back(start + std::string((*child)->name), *child);
  }
  return text;
}

}  // namespace hearthmake::posix
