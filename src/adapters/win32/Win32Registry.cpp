#include "adapters/win32/Win32Registry.hpp"

#include <windows.h>

#include <algorithm>

#include "adapters/win32/RegistryKey.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::win32 {

using automation::RuntimeError;
using platform::RegistryRoot;
using platform::RegistryValue;

namespace {

// A key in one of the places that a root stands for.
struct Place {
  HKEY root;
  std::string key;
  REGSAM view;
};

HKEY SystemRoot(RegistryRoot root) {
  return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(root)));
}

std::string Below(std::string_view folder, std::string_view key) {
  return std::string(folder) + '\\' + std::string(key);
}

constexpr std::string_view kClasses = "Software\\Classes";

// The places in the order of a look-up; the first two are written to as well.
std::vector<Place> PlacesOf(RegistryRoot root, std::string_view key) {
  if (root != RegistryRoot::ClassesRoot) return {{SystemRoot(root), std::string(key), KEY_WOW64_32KEY}};
  const std::string path = Below(kClasses, key);
  return {{HKEY_CURRENT_USER, path, KEY_WOW64_32KEY},
          {HKEY_LOCAL_MACHINE, path, KEY_WOW64_32KEY},
          {HKEY_CURRENT_USER, path, KEY_WOW64_64KEY},
          {HKEY_LOCAL_MACHINE, path, KEY_WOW64_64KEY}};
}

RegistryKey OpenToRead(const Place& place) {
  return RegistryKey::Open(place.root, place.key, KEY_READ, place.view);
}

// One that is there, else that of the machine.
const Place& PlaceToWrite(const std::vector<Place>& places) {
  if (places.size() == 1 || OpenToRead(places[0])) return places[0];
  return places[1];
}

void RequireNames(std::string_view key, std::string_view name) {
  for (const std::string_view text : {key, name}) {
    std::string_view rest = text;
    while (!rest.empty()) {
      const char32_t character = automation::DecodeUtf8(rest);
      const std::size_t length = automation::Utf8SequenceLength(rest);
      const bool isStray = character == 0xFFFD && length == 1;
      if (isStray || character < 0x20 || character == 0x7F) {
        automation::Raise(RuntimeError::InvalidProcedureCall, "Registry",
                          "the name of a key or value is UTF-8 text without control characters");
      }
      rest.remove_prefix(length);
    }
  }
}

// The names of all places, each once.
template <class Listing>
std::vector<std::string> Merged(const std::vector<Place>& places, Listing listing) {
  std::vector<std::string> names;
  for (const Place& place : places) {
    const RegistryKey key = OpenToRead(place);
    if (!key) continue;
    for (std::string& name : listing(key)) {
      const bool isKnown = std::any_of(names.begin(), names.end(), [&](const std::string& other) {
        return automation::EqualsIgnoreCase(other, name);
      });
      if (!isKnown) names.push_back(std::move(name));
    }
  }
  return names;
}

}  // namespace

bool Win32Registry::KeyExists(RegistryRoot root, std::string_view key) {
  const std::vector<Place> places = PlacesOf(root, key);
  return std::any_of(places.begin(), places.end(),
                     [](const Place& place) { return static_cast<bool>(OpenToRead(place)); });
}

std::optional<RegistryValue> Win32Registry::Query(RegistryRoot root, std::string_view key,
                                                  std::string_view name) {
  for (const Place& place : PlacesOf(root, key)) {
    const RegistryKey found = OpenToRead(place);
    if (!found) continue;
    if (auto value = found.Query(name)) return value;
  }
  return std::nullopt;
}

std::vector<std::string> Win32Registry::SubKeys(RegistryRoot root, std::string_view key) {
  return Merged(PlacesOf(root, key), [](const RegistryKey& found) { return found.SubKeys(); });
}

std::vector<std::string> Win32Registry::ValueNames(RegistryRoot root, std::string_view key) {
  return Merged(PlacesOf(root, key), [](const RegistryKey& found) { return found.ValueNames(); });
}

void Win32Registry::Set(RegistryRoot root, std::string_view key, std::string_view name,
                        const RegistryValue& value) {
  RequireNames(key, name);
  const std::vector<Place> places = PlacesOf(root, key);
  const Place& place = PlaceToWrite(places);
  RegistryKey::Create(place.root, place.key, place.view).Set(name, value);
}

void Win32Registry::SetAll(RegistryRoot root, std::span<const platform::RegistryEntry> entries) {
  for (const platform::RegistryEntry& entry : entries) Set(root, entry.key, entry.name, entry.value);
}

void Win32Registry::RemoveValue(RegistryRoot root, std::string_view key, std::string_view name) {
  for (const Place& place : PlacesOf(root, key)) {
    const RegistryKey found = OpenToRead(place);
    if (!found || !found.Query(name)) continue;
    RegistryKey::Create(place.root, place.key, place.view).RemoveValue(name);
  }
}

void Win32Registry::RemoveKey(RegistryRoot root, std::string_view key) {
  if (key.find_first_not_of('\\') == std::string_view::npos) {
    automation::Raise(RuntimeError::InvalidProcedureCall, "Registry", "a root key can't be removed");
  }
  for (const Place& place : PlacesOf(root, key)) RegistryKey::Remove(place.root, place.key, place.view);
}

}  // namespace hearthmake::win32
