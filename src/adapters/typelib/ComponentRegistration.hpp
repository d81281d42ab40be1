#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Registry.hpp"
#include "platform/TypeLibReader.hpp"

namespace hearthmake::typelib {

// Does to a registry what an ActiveX component does to it when it registers itself: the type library in its
// binary tells which keys there are (the library, its interfaces, its classes with their ProgIDs).
//
// Where a key names another binary already, the last registration wins, as on Windows; unregistering takes
// only keys that are this library's.
class ComponentRegistration {
 public:
  ComponentRegistration(platform::Registry& registry, platform::TypeLibReader& reader)
      : m_registry(registry), m_reader(reader) {}

  // path: DOS path of the binary. Errors of the reader and of the registry.
  void Register(std::string_view path);
  void Unregister(std::string_view path);

 private:
  struct Component {
    std::string path;
    std::string version;
    platform::TypeLibInfo library;
    std::vector<platform::TypeDescription> types;
  };

  // The texts of one component. They keep their memory from one component to the next: a registration
  // that changes nothing consists of little more than them.
  class Entries {
   public:
    void Clear() { m_count = 0; }
    // The parts of the key are put together.
    void Add(std::initializer_list<std::string_view> key, std::string_view name, std::string_view text);
    std::span<const platform::RegistryEntry> All() const { return {m_entries.data(), m_count}; }

   private:
    std::vector<platform::RegistryEntry> m_entries;
    std::size_t m_count = 0;
  };

  Component Read(std::string_view path) const;
  void AddLibrary(const Component& component);
  void AddInterface(const Component& component, const platform::TypeDescription& type);
  void AddClass(const Component& component, const platform::TypeDescription& type);
  void UnregisterLibrary(const Component& component);
  void UnregisterClass(const Component& component, const platform::TypeDescription& type);
  bool BelongsTo(const Component& component, const std::string& key);
  std::string Text(const std::string& key) const;
  void RemoveWhenEmpty(const std::string& key);

  platform::Registry& m_registry;
  platform::TypeLibReader& m_reader;
  Entries m_entries;
};

}  // namespace hearthmake::typelib
