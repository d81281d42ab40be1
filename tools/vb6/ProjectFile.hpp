#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::vb6 {

enum class ProjectKind : std::uint8_t { StandardExe, ActiveXExe, ActiveXDll, UserControl };

enum class ComponentKind : std::uint8_t { Class, Module, Form, UserControl, PropertyPage, Designer };

// A source file that a project names.
struct Component {
  ComponentKind kind = ComponentKind::Module;
  std::string name;  // empty where the row has only a file
  std::string file;  // as in the row
};

enum class ReferenceKind : std::uint8_t { TypeLibrary, Control, Project };

// A row that names another component: Reference=*\G…, Object=… or Reference=*\A….
struct ReferenceRow {
  ReferenceKind kind = ReferenceKind::TypeLibrary;
  std::string guid;
  std::string version;
  std::string file;
  std::string description;
};

// A project file as the compiler reads it: the rows before the first section, keys without regard to case,
// the last row of a key counting. Texts are UTF-8.
class ProjectFile {
 public:
  // Reads the bytes of a project file. Error 45, source "vb6", when there is no Type row or its kind is
  // unknown, or when a reference or component row can't be read; the text names the row and its line.
  static ProjectFile Parse(std::string_view bytes);

  ProjectKind Kind() const { return m_kind; }
  bool IsActiveX() const { return m_kind != ProjectKind::StandardExe; }
  bool IsInProcess() const { return m_kind == ProjectKind::ActiveXDll || m_kind == ProjectKind::UserControl; }

  // The value of a key without its quotes; empty when there is none.
  std::string_view Value(std::string_view key) const;
  // The number of a key; the default when there is none or it is not one.
  unsigned Number(std::string_view key, unsigned defaultValue = 0) const;

  const std::vector<Component>& Components() const { return m_components; }
  const std::vector<ReferenceRow>& References() const { return m_references; }

  // "exe", "dll" or "ocx".
  std::string_view Extension() const;

  // The bytes with RevisionVer counted up by one; the same bytes when AutoIncrementVer is off or the number
  // has reached its end, 9999.
  static std::string WithNextRevision(std::string_view bytes);

 private:
  struct Setting {
    std::string key;
    std::string value;
  };

  void AddRow(std::string_view row, unsigned line);
  void AddReference(std::string_view value, unsigned line);
  void AddControl(std::string_view value, unsigned line);
  bool AddComponent(std::string_view key, std::string_view value, unsigned line);

  ProjectKind m_kind = ProjectKind::StandardExe;
  std::vector<Setting> m_settings;
  std::vector<Component> m_components;
  std::vector<ReferenceRow> m_references;
};

}  // namespace hearthmake::vb6
