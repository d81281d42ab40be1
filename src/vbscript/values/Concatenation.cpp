#include <array>
#include <charconv>
#include <string_view>

#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Operand.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {

using automation::VariantType;

namespace {

// The text of an operand, without a copy of one that is there, and without the heap for a whole number.
class Piece {
 public:
  explicit Piece(const Variant& value) {
    switch (value.Type()) {
      case VariantType::String: m_view = value.AsUtf16(); break;
      case VariantType::Null:
      case VariantType::Empty: break;
      case VariantType::Error: RaiseTypeMismatch(value);
      case VariantType::Byte: SetWhole(value.AsByte()); break;
      case VariantType::Integer: SetWhole(value.AsInteger()); break;
      case VariantType::Long: SetWhole(value.AsLong()); break;
      default: m_view = m_text = ToText16(value);
    }
  }
  Piece(const Piece&) = delete;
  Piece& operator=(const Piece&) = delete;

  std::u16string_view View() const { return m_view; }

 private:
  void SetWhole(std::int32_t value) {
    std::array<char, 12> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    std::size_t length = 0;
    for (const char* digit = digits.data(); digit != end; ++digit)
      m_digits[length++] = static_cast<char16_t>(*digit);
    m_view = {m_digits.data(), length};
  }

  std::array<char16_t, 12> m_digits;
  std::u16string m_text;
  std::u16string_view m_view;
};

}  // namespace

Variant Concatenate(const Variant& left, const Variant& right) {
  const Operand a(left);
  const Operand b(right);
  if (a->IsNull() && b->IsNull()) return Variant::Null();
  if (b->IsEmpty() && a.Type() == VariantType::String) return a.Value();
  if (a->IsEmpty() && b.Type() == VariantType::String) return b.Value();
  const Piece first(a.Value());
  const Piece second(b.Value());
  return Variant::FromUtf16(first.View(), second.View());
}

}  // namespace hearthmake::vbscript
