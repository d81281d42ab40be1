#include "vbscript/machine/Values.hpp"

#include <algorithm>
#include <vector>

#include "vbscript/Errors.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {

using automation::ArrayBuffer;
using automation::Ref;
using automation::StringBuffer;
using automation::Variant;
using automation::VariantType;

namespace {

constexpr std::size_t kLongestText = std::size_t{1} << 30;

// What is assigned last goes last: the end of the old value may run code that looks at the new one.
void Replace(Variant& variable, Variant&& value) {
  Variant old(std::move(variable));
  variable.OverwriteWith(value);
}

}  // namespace

Variant CopyOf(const Variant& value) {
  const Variant& source = value.Target();
  if (source.Type() == VariantType::Array && source.AsArray()->IsLocked())
    return Variant::FromArray(source.AsArray()->Clone());
  return source;
}

void LetVariable(Variant& variable, Variant& value, bool isTemporary) {
  if (variable.Mark() == kFixedArray) RaiseRuntime(number::kTypeMismatch);
  const Variant& source = value.Target();
  if (source.IsObject()) {
    Variant result = CopyOf(ValueOf(source));
    if (isTemporary) value = Variant();
    Replace(variable, std::move(result));
  } else if (isTemporary && &source == &value && value.Mark() == 0) {
    Replace(variable, std::move(value));
  } else {
    Replace(variable, CopyOf(source));
  }
}

void SetVariable(Variant& variable, const Variant& value) {
  const Variant& source = value.Target();
  if (!source.IsObject()) RaiseRuntime(number::kObjectRequired);
  if (variable.Mark() == kFixedArray) RaiseRuntime(number::kTypeMismatch);
  Replace(variable, Variant(source));
}

ArrayBuffer& OwnArray(Variant& variable) {
  ArrayBuffer* array = variable.AsArray();
  if (array->IsShared()) {
    Replace(variable, Variant::FromArray(array->Clone()));
    array = variable.AsArray();
  }
  return *array;
}

std::int32_t ToIndex(const Variant& index) {
  if (index.Type() == VariantType::Integer || index.Type() == VariantType::Long) return index.AsLong();
  return ToLong32(index);
}

void ResolveIndices(std::span<Variant> indices) {
  for (Variant& index : indices) {
    if (index.Target().IsObject()) index = Variant::FromLong(ToIndex(index.Target()));
  }
}

Variant& Element(ArrayBuffer& array, std::span<const Variant> indices) {
  const auto bounds = array.Bounds();
  if (indices.size() != bounds.size() || bounds.empty()) RaiseRuntime(number::kSubscriptOutOfRange);
  std::size_t place = 0;
  for (std::size_t i = bounds.size(); i-- > 0;) {
    const std::int64_t offset = std::int64_t{ToIndex(indices[i])} - bounds[i].lower;
    if (offset < 0 || offset >= bounds[i].count) RaiseRuntime(number::kSubscriptOutOfRange);
    place = place * static_cast<std::size_t>(bounds[i].count) + static_cast<std::size_t>(offset);
  }
  return array.Elements()[place];
}

void MakeArray(Variant& variable, std::span<const ArrayBuffer::Bound> bounds, bool isFixed) {
  Replace(variable, Variant::FromArray(Ref<ArrayBuffer>(new ArrayBuffer(bounds))));
  variable.SetMark(isFixed ? kFixedArray : 0);
}

void ReDimArray(Variant& variable, std::span<const Variant> upperBounds, bool isPreserving) {
  const bool isArray = variable.Type() == VariantType::Array;
  if (isArray && (variable.Mark() == kFixedArray || variable.AsArray()->IsLocked()))
    RaiseRuntime(number::kArrayLocked);
  std::vector<ArrayBuffer::Bound> bounds;
  for (const Variant& upper : upperBounds) {
    const std::int64_t count = std::int64_t{ToIndex(upper)} + 1;
    if (count < 0) RaiseRuntime(number::kSubscriptOutOfRange);
    if (count > std::int64_t{ArrayBuffer::kMostElements}) RaiseRuntime(number::kOutOfMemory);
    bounds.push_back({0, static_cast<std::int32_t>(count)});
  }
  const bool isMade = isArray && !variable.AsArray()->Bounds().empty();
  if (!isPreserving || (!isMade && (isArray || variable.IsEmpty()))) {
    MakeArray(variable, bounds, false);
    return;
  }
  if (!isArray) RaiseRuntime(number::kTypeMismatch);
  const auto before = variable.AsArray()->Bounds();
  if (before.size() != bounds.size()) RaiseRuntime(number::kSubscriptOutOfRange);
  for (std::size_t i = 0; i + 1 < bounds.size(); ++i) {
    if (before[i].count != bounds[i].count || before[i].lower != 0)
      RaiseRuntime(number::kSubscriptOutOfRange);
  }
  OwnArray(variable).ResizeLast(bounds.back().count);
}

void EraseArray(Variant& variable) {
  if (variable.Type() != VariantType::Array) RaiseRuntime(number::kTypeMismatch);
  if (variable.AsArray()->IsLocked()) RaiseRuntime(number::kArrayLocked);
  if (variable.Mark() != kFixedArray) {
    MakeArray(variable, {}, false);
    return;
  }
  const auto bounds = variable.AsArray()->Bounds();
  const std::vector<ArrayBuffer::Bound> kept(bounds.begin(), bounds.end());
  MakeArray(variable, kept, true);
}

void AppendText(Variant& variable, const Variant& text) {
  const Variant& right = text.Target();
  if (variable.Type() == VariantType::String && !variable.AsStringBuffer()->IsShared()) {
    const Variant converted = right.Type() == VariantType::String ? Variant()
                              : right.IsNull()                    ? Variant::FromUtf16({})
                                                                  : ToTextVariant(right);
    const std::u16string_view added = converted.IsEmpty() ? right.AsUtf16() : converted.AsUtf16();
    // The conversion may have run code.
    if (variable.Type() == VariantType::String && !variable.AsStringBuffer()->IsShared()) {
      StringBuffer* buffer = variable.AsStringBuffer();
      if (buffer->Append(added)) return;
      const std::size_t length = buffer->View().size() + added.size();
      if (length > kLongestText) RaiseRuntime(number::kOutOfMemory);
      StringBuffer* grown =
          StringBuffer::New(buffer->View(), std::min(length + length / 2 + 16, kLongestText));
      Variant result = Variant::FromStringBuffer(grown);
      grown->Append(added);
      Replace(variable, std::move(result));
      return;
    }
  }
  Replace(variable, Concatenate(variable, right));
}

}  // namespace hearthmake::vbscript
