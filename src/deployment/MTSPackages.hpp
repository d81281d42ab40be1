#pragma once

#include <cstdint>

#include "automation/Object.hpp"

namespace hearthmake {

class Build;

// The MTS packages of a build. None can be kept yet: the collection is empty.
class MTSPackages final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit MTSPackages(hearthmake::Build& build);

  // Error 9 for every position and 5 for every key: there are no members.
  automation::Variant Item(const automation::Variant& vIndex) const;
  std::int32_t Count() const { return 0; }
  automation::Ref<automation::Enumerator> NewEnum();
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }
  hearthmake::Build* Parent() const { return m_build; }

  void ReleaseMembers() { m_build = nullptr; }

 private:
  hearthmake::Build* m_build;  // null once released
};

}  // namespace hearthmake
