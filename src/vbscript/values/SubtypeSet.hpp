#pragma once

#include <cstdint>
#include <initializer_list>

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// The subtypes that two operands have, as bits: the rules of the operators rarely care which side has which.
class SubtypeSet {
 public:
  using Subtype = automation::VariantType;

  constexpr SubtypeSet(std::initializer_list<Subtype> subtypes) {
    for (const Subtype subtype : subtypes) m_bits |= Bit(subtype);
  }
  constexpr SubtypeSet(Subtype left, Subtype right) : m_bits(Bit(left) | Bit(right)) {}

  constexpr bool Has(Subtype subtype) const { return (m_bits & Bit(subtype)) != 0; }
  constexpr bool HasAny(SubtypeSet subtypes) const { return (m_bits & subtypes.m_bits) != 0; }
  // Whether there is nothing else than these.
  constexpr bool IsOf(SubtypeSet subtypes) const { return (m_bits & ~subtypes.m_bits) == 0; }

 private:
  // Numbers up to 17 are bits of their own; that of an array ends in 12, which no other subtype has.
  static constexpr std::uint32_t Bit(Subtype subtype) {
    return std::uint32_t{1} << (static_cast<std::uint32_t>(subtype) & 31U);
  }

  std::uint32_t m_bits = 0;
};

}  // namespace hearthmake::vbscript
