#include "vbscript/intrinsics/Arguments.hpp"

#include "vbscript/Errors.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;

Variant& Resolve(Variant& argument) {
  if (argument.IsObject() || argument.Type() == VariantType::ByReference) argument = ValueOf(argument);
  return argument;
}

Variant& ConvertToText(Variant& argument) {
  if (Resolve(argument).Type() != VariantType::String) argument = ToTextVariant(argument);
  return argument;
}

std::int32_t ConvertToLong(const Variant& argument) { return ToLong32(argument); }

std::int32_t LongOr(Arguments arguments, std::size_t place, std::int32_t otherwise) {
  return IsGiven(arguments, place) ? AsLong(arguments[place]) : otherwise;
}

bool BooleanOr(Arguments arguments, std::size_t place, bool otherwise) {
  return IsGiven(arguments, place) ? ToBoolean1(arguments[place]) : otherwise;
}

bool IsTextCompare(Arguments arguments, std::size_t place) {
  const std::int32_t mode = LongOr(arguments, place, 0);
  if (mode != 0 && mode != 1) RaiseInvalidCall();
  return mode == 1;
}

void RaiseInvalidCall() { RaiseRuntime(number::kInvalidProcedureCall); }

Variant NewText(Context& context, std::size_t length) {
  if (length > kLongestText) RaiseRuntime(number::kOutOfStringSpace);
  ChargeUnits(context, length);
  return Variant::FromStringBuffer(automation::StringBuffer::NewUnset(length));
}

Variant PartOf(Context& context, const Variant& text, std::size_t start, std::size_t length) {
  const std::u16string_view all = text.AsUtf16();
  if (length == all.size()) return text;
  ChargeUnits(context, length);
  return context.texts.Text(all.substr(start, length));
}

}  // namespace hearthmake::vbscript
