#pragma once

#include <cstdint>
#include <memory>

#include "automation/Object.hpp"
#include "vbscript/objects/MatchTable.hpp"

namespace hearthmake::vbscript {

// Every place that a search found, in order.
class Matches final : public automation::Object {
 public:
  explicit Matches(std::shared_ptr<const MatchTable> matches) : m_matches(std::move(matches)) {}

  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  std::int32_t Count() const { return static_cast<std::int32_t>(m_matches->Count()); }
  // The match of a number from 0. Error 5 for a number without one.
  automation::Variant Item(std::int32_t index) const;
  automation::Ref<automation::Enumerator> NewEnum();

 private:
  std::shared_ptr<const MatchTable> m_matches;
};

}  // namespace hearthmake::vbscript
