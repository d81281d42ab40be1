#pragma once

#include <cstdint>
#include <string>

#include "automation/FixedText.hpp"
#include "automation/Object.hpp"
#include "platform/Database.hpp"
#include "project/Enumerations.hpp"

namespace hearthmake {

// One dependency of a project: another project of the build (internal), or a library or control that the
// build does not make (external). A row of a project file that can't be taken apart is an external
// reference without GUID whose path is the row's text behind the equals sign.
class Reference final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  // The key inside the collection, as decimal text.
  std::string Id() const;
  // Of the type library, with braces; up to 50 characters.
  std::string GUID() const { return m_guid.Get(); }
  void SetGUID(const std::string& value) { m_guid = value; }
  // Major and minor version in hexadecimal, joined by a full stop; up to 10 characters.
  std::string BinaryVersion() const { return m_binaryVersion.Get(); }
  void SetBinaryVersion(const std::string& value) { m_binaryVersion = value; }
  // Up to 255 characters. An external reference without one reads the library's registered name.
  std::string Description() const;
  void SetDescription(const std::string& value) { m_description = value; }
  // File of the library or control; up to 255 characters.
  std::string Path() const { return m_path.Get(); }
  void SetPath(const std::string& value) { m_path = value; }
  // Id of the project of the build; 0 for an external reference.
  std::int32_t ReferencedProject() const { return m_referencedProject; }
  bool IsExternal() const { return m_isExternal; }
  // The row of a project file.
  std::string ReferenceString() const;
  // By the type, and where that is undefined by the file's extension: ocx or oca.
  bool IsUserControl() const;
  ReferenceTypes ReferenceType() const;

  // For the owning collection.
  void SetId(std::int32_t id) { m_id = id; }
  void SetReferencedProject(std::int32_t idProject);
  void MarkExternal() { m_isExternal = true; }
  void SetReferenceType(ReferenceTypes type);
  // "O", "R", "U", or empty while none was set.
  std::string TypeCode() const;
  void LoadExternal(const platform::Recordset& row);

 private:
  // Held raw: see the class. Nothing but a path, also when it comes back from the database.
  bool IsRaw() const { return m_isExternal && m_guid.IsEmpty() && m_binaryVersion.IsEmpty(); }

  bool HasOwnDescription() const { return !m_isExternal || !m_description.IsEmpty() || m_guid.IsEmpty(); }
  std::string RegisteredDescription() const;

  automation::FixedText<50> m_guid;
  automation::FixedText<10> m_binaryVersion;
  automation::FixedText<255> m_path;
  automation::FixedText<255> m_description;
  std::int32_t m_id = 0;
  std::int32_t m_referencedProject = 0;
  bool m_isExternal = false;
  char m_type = ' ';
};

}  // namespace hearthmake
