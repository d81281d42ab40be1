#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "automation/Object.hpp"
#include "foundation/KeyedCollection.hpp"
#include "project/Reference.hpp"

namespace hearthmake {

class Project;

// The dependencies of one project, in the order in which they were added (after a load: internal ones
// first). They are stored with the project's edit cycle.
class References final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit References(Project& project);

  automation::Ref<automation::Enumerator> NewEnum();
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  // Adds another project of the build; an external reference to the same file name takes its place.
  // Errors: 45 "Project is not an ActiveX project" and "Reference already exists", beInvalidReference
  // "Project can't reference it self" and "Cross reference: …".
  void AddInternalReference(Project& objProject);
  // Adds a library or control, from the row of a project file or, when that is empty, from a file (a
  // leading %VARIABLE% is expanded). Nothing (null) for a row without "{". Errors:
  // be_InvalidReferenceString, 9 for a type-library row without a path, those of ValidateReference.
  automation::Ref<Reference> AddExternalReference(const std::string& strReferenceString,
                                                  const std::string& strFileName);
  // By position or key; only in edit mode (error 1004, "Project.CancelEdit", "Not in edit mode").
  void Remove(const automation::Variant& index);
  automation::Variant Count() const;
  automation::Ref<Reference> Item(const automation::Variant& vIndex) const;
  // GUID with braces, compared exactly.
  bool IsProjectReferencingExternal(const std::string& GUID) const;
  bool IsProjectReferencing(std::int32_t idProject) const;
  // True for a type library that the build does not make itself. Error 45: "This is not a valid
  // typelibrary!" (source "References.Validate"), "You should use the project … instead!" (no source).
  bool ValidateReference(const std::string& strPath);

  // For the owning project.
  void Load(std::int32_t idProject);
  void BeginEdit();
  void ApplyEdit();
  void CancelEdit();
  // The two halves of ApplyEdit, for a project that stores more in the same transaction: nothing is
  // forgotten before all of it is stored.
  void StoreChanges();
  void EndEdit();
  bool IsDirty() const { return m_dirty; }
  std::vector<automation::Ref<Reference>> Items() const { return m_items.Snapshot(); }
  const KeyedCollection<Reference>& List() const { return m_items; }
  // Replaces the content by the rows of the project's file; what was there stays when it fails.
  void Detect(const std::vector<std::string>& rows);
  void ReleaseMembers();

 protected:
  ~References() override;

 private:
  void DetectRow(const std::string& row);
  bool AddParsed(const std::string& row);
  void AddRaw(const std::string& row);
  void AddLibrary(const std::string& strFileName, Reference& reference);
  void Insert(Reference& reference);
  void AddItem(Reference& reference);
  void ClearItems();
  void RemoveExternalTwin(Project& objProject);
  void SaveReferences();
  void InsertRow(const Reference& reference, std::int32_t idOwner);

  Project& Owner() const;

  Project* m_project;  // null once released
  KeyedCollection<Reference> m_items{"References.item"};
  // The ids of the internal ones, side by side: in a large suite each reference looked at is a miss of the
  // processor's cache.
  std::vector<std::int32_t> m_referenced;
  std::vector<automation::Held<Reference>> m_snapshot;  // while editing
  std::int32_t m_counter = 0;
  bool m_editing = false;
  bool m_dirty = false;
};

}  // namespace hearthmake
