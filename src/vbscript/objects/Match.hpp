#pragma once

#include <cstdint>
#include <memory>

#include "automation/Object.hpp"
#include "vbscript/objects/MatchTable.hpp"
#include "vbscript/objects/SubMatches.hpp"

namespace hearthmake::vbscript {

// One place where a pattern matches.
class Match final : public automation::Object {
 public:
  Match(std::shared_ptr<const MatchTable> matches, std::size_t index)
      : m_matches(std::move(matches)), m_index(index) {}

  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  automation::Variant Value() const { return automation::Variant::FromUtf16(m_matches->Text(m_index)); }
  // From 0, in UTF-16 units, as is the length.
  std::int32_t FirstIndex() const { return static_cast<std::int32_t>(m_matches->Begin(m_index)); }
  std::int32_t Length() const { return static_cast<std::int32_t>(m_matches->Text(m_index).size()); }
  automation::Ref<SubMatches> Groups() const { return automation::Make<SubMatches>(m_matches, m_index); }

 private:
  std::shared_ptr<const MatchTable> m_matches;
  std::size_t m_index;
};

}  // namespace hearthmake::vbscript
