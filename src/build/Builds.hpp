#pragma once

#include <cstdint>

#include "automation/Object.hpp"
#include "build/Build.hpp"
#include "foundation/KeyedCollection.hpp"

namespace hearthmake {

// The list of all builds in the database. Each has its id and name only, until it is loaded.
class Builds final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  Builds() = default;

  automation::Ref<automation::Enumerator> NewEnum();
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }
  // By position from 1 (error 9) or by id as text (error 5).
  automation::Ref<Build> Item(const automation::Variant& vIndex) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(m_items.Count()); }
  // Reads the list anew and closes the database.
  automation::Variant LoadAll();

 protected:
  ~Builds() override;

 private:
  void ReleaseMembers();

  KeyedCollection<Build> m_items{"Builds.item"};
};

}  // namespace hearthmake
