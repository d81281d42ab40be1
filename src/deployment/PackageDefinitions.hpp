#pragma once

#include <cstdint>
#include <vector>

#include "automation/Object.hpp"
#include "deployment/PackageDefinition.hpp"
#include "foundation/KeyedCollection.hpp"

namespace hearthmake {

// The rows of table MTSPackages that belong to a build, under the decimal text of their ids. The common part
// of MTSPackages and COMApplications; each has objects of its own for the same rows.
class PackageDefinitions : public automation::Object {
 public:
  std::int32_t Count() const { return static_cast<std::int32_t>(m_items.Count()); }
  automation::Ref<automation::Enumerator> NewEnum();
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }
  // Null once released.
  hearthmake::Build* Parent() const { return m_build; }
  // Brings each definition whose Skip is off into the catalog, in list order up to the first that fails, and
  // runs the script that follows on it. True when at least one was tried and none failed. What goes wrong
  // comes as the build's event MTSEvent; no error leaves it.
  bool CreateAllPackages();

  // For the build and the members.
  // Reads the rows that the list does not have yet.
  void Load();
  hearthmake::Build& ParentBuild() const;
  std::vector<automation::Ref<PackageDefinition>> All() const { return m_items.Snapshot(); }
  // Lists a definition that was stored, under its id; previousId is what it was listed under (0 for a new
  // one).
  void Stored(PackageDefinition& definition, std::int32_t previousId);
  void Remove(PackageDefinition& definition);
  void ReleaseMembers();

 protected:
  // itemSource is what errors of look-ups name as their source.
  PackageDefinitions(hearthmake::Build& build, const char* itemSource);
  ~PackageDefinitions() override;

  virtual automation::Ref<PackageDefinition> MakeDefinition() const = 0;
  // By position from 1 (error 9) or by id as text (error 5).
  PackageDefinition& Find(const automation::Variant& vIndex) const { return m_items.Item(vIndex); }
  // A new one with this parent, which is listed once it is saved.
  automation::Ref<PackageDefinition> CreateDefinition();

 private:
  bool CreateEach();

  hearthmake::Build* m_build;  // null once released
  KeyedCollection<PackageDefinition> m_items;
};

}  // namespace hearthmake
