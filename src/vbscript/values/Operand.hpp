#pragma once

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// The value that an operand stands for, without a copy where it is there already: references are followed,
// an object gives its default member. Lives no longer than the operand.
class Operand {
 public:
  explicit Operand(const automation::Variant& operand) : m_value(&operand.Target()) {
    if (m_value->IsObject()) [[unlikely]]
      ReadDefaultMember();
  }
  Operand(const Operand&) = delete;
  Operand& operator=(const Operand&) = delete;

  const automation::Variant& Value() const { return *m_value; }
  automation::VariantType Type() const { return m_value->Type(); }
  const automation::Variant* operator->() const { return m_value; }

 private:
  void ReadDefaultMember();

  const automation::Variant* m_value;
  automation::Variant m_read;
};

// Error 13, naming the value where it is a text, as the engine words it.
[[noreturn]] void RaiseTypeMismatch(const automation::Variant& value);
// Error 13 or 94 for a value that is no number, text or date: an array, an error, Null.
[[noreturn]] void RaiseNoConversion(const automation::Variant& value);

}  // namespace hearthmake::vbscript
