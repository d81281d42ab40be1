#include "vbscript/values/Operand.hpp"

#include <string>
#include <utility>

#include "automation/Interface.hpp"
#include "automation/Object.hpp"
#include "automation/Utf.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {

namespace {

// How often a default member may be an object again. One that gives itself would never end.
constexpr int kMaximumDepth = 100;

// Of a text that an error names; more would bury the message.
constexpr std::size_t kMostUnitsNamed = 60;

Variant DefaultMemberOf(automation::Object* object) {
  if (object == nullptr) RaiseRuntime(number::kObjectNotSet);
  const automation::Ref<automation::Object> alive(object);  // the member may drop the last other reference
  return object->Invoke(automation::kDefaultMember, automation::InvokeKind::Get, {});
}

}  // namespace

void Operand::ReadDefaultMember() {
  for (int depth = 0; m_value->IsObject(); ++depth) {
    if (depth == kMaximumDepth) RaiseRuntime(number::kOutOfStackSpace);
    Variant read = DefaultMemberOf(m_value->AsObject());
    m_read = read.Type() == automation::VariantType::ByReference ? read.Target() : std::move(read);
    m_value = &m_read;
  }
}

Variant ValueOf(const Variant& operand) {
  const Operand value(operand);
  return value.Value();
}

void RaiseTypeMismatch(const Variant& value) {
  if (value.Type() != automation::VariantType::String) RaiseRuntime(number::kTypeMismatch);
  const std::u16string_view text = value.AsUtf16();
  std::string named = automation::Utf16ToUtf8(text.substr(0, kMostUnitsNamed));
  if (text.size() > kMostUnitsNamed) named += "...";
  RaiseRuntime(number::kTypeMismatch, "[string: \"" + named + "\"]");
}

void RaiseNoConversion(const Variant& value) {
  if (value.IsNull()) RaiseRuntime(number::kInvalidUseOfNull);
  RaiseTypeMismatch(value);
}

}  // namespace hearthmake::vbscript
