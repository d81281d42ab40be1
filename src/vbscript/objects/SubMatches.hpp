#pragma once

#include <cstdint>
#include <memory>

#include "automation/Object.hpp"
#include "vbscript/objects/MatchTable.hpp"

namespace hearthmake::vbscript {

// What the groups of a pattern took in one match.
class SubMatches final : public automation::Object {
 public:
  SubMatches(std::shared_ptr<const MatchTable> matches, std::size_t index)
      : m_matches(std::move(matches)), m_index(index) {}

  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  std::int32_t Count() const { return static_cast<std::int32_t>(m_matches->GroupCount()); }
  // From 0; Empty for a group that took no part. Error 5 for a number without a group.
  automation::Variant Item(std::int32_t index) const;
  automation::Ref<automation::Enumerator> NewEnum();

 private:
  std::shared_ptr<const MatchTable> m_matches;
  std::size_t m_index;
};

}  // namespace hearthmake::vbscript
