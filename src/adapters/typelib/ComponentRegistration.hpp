#pragma once

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
    platform::TypeLibInfo library;
    std::vector<platform::TypeDescription> types;
  };

  using Entries = std::vector<platform::RegistryEntry>;

  Component Read(std::string_view path) const;
  static void AddLibrary(const Component& component, Entries& entries);
  static void AddInterface(const Component& component, const platform::TypeDescription& type,
                           Entries& entries);
  static void AddClass(const Component& component, const platform::TypeDescription& type, Entries& entries);
  void UnregisterLibrary(const Component& component);
  void UnregisterClass(const Component& component, const platform::TypeDescription& type);
  bool BelongsTo(const Component& component, const std::string& key);
  std::string Text(const std::string& key) const;
  void RemoveWhenEmpty(const std::string& key);

  platform::Registry& m_registry;
  platform::TypeLibReader& m_reader;
};

}  // namespace hearthmake::typelib
