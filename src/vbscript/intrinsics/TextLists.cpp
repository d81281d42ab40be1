#include "vbscript/intrinsics/TextLists.hpp"

#include <cstring>
#include <limits>
#include <vector>

#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Places.hpp"
#include "vbscript/intrinsics/TextSearch.hpp"

namespace hearthmake::vbscript {

using automation::ArrayBuffer;
using automation::Ref;
using automation::Variant;
using automation::VariantType;

namespace {

Ref<ArrayBuffer> NewList(std::size_t count) {
  if (count > ArrayBuffer::kMostElements) RaiseRuntime(number::kOutOfMemory);
  return Ref<ArrayBuffer>(new ArrayBuffer({{0, static_cast<std::int32_t>(count)}}));
}

// How many parts Split makes at most.
std::size_t PartLimit(Arguments arguments) {
  const std::int32_t count = LongOr(arguments, 2, -1);
  if (count < -1) RaiseInvalidCall();
  return count == -1 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(count);
}

Places FindDelimiters(Context& context, const TextSearch& search, std::u16string_view text,
                      std::size_t delimiterLength, std::size_t limit) {
  Places places;
  for (std::size_t start = 0; places.Count() + 1 < limit;) {
    const std::size_t place = search.Find(text, start);
    if (place == TextSearch::kNotFound) break;
    if (places.Count() == ArrayBuffer::kMostElements) RaiseRuntime(number::kOutOfMemory);
    context.budget.Charge(1);
    places.Add(place);
    start = place + delimiterLength;
  }
  return places;
}

// The elements of an array of one dimension.
std::span<Variant> ListOf(Variant& argument, std::int32_t errorOfManyDimensions) {
  if (Resolve(argument).Type() != VariantType::Array) RaiseRuntime(number::kTypeMismatch);
  ArrayBuffer& array = *argument.AsArray();
  if (array.Bounds().size() > 1) RaiseRuntime(errorOfManyDimensions);
  return array.Elements();
}

// An element as text. Null is no text here: error 13.
Variant ElementText(const Variant& element) {
  Variant copy = element;
  if (IsNullArgument(copy)) RaiseRuntime(number::kTypeMismatch);
  return std::move(AsText(copy));
}

char16_t* PutText(char16_t* out, std::u16string_view text) {
  if (!text.empty()) std::memcpy(out, text.data(), text.size() * sizeof(char16_t));
  return out + text.size();
}

// The elements as texts; those that are texts already are only shared.
std::vector<Variant> TextsOf(Context& context, std::span<const Variant> elements) {
  std::vector<Variant> texts;
  texts.reserve(elements.size());
  for (const Variant& element : elements) {
    context.budget.Charge(1);
    texts.push_back(element.Type() == VariantType::String ? element : ElementText(element));
  }
  return texts;
}

bool AreAllTexts(std::span<const Variant> elements) {
  for (const Variant& element : elements) {
    if (element.Type() != VariantType::String) return false;
  }
  return true;
}

Variant JoinStrings(Context& context, std::span<const Variant> texts, std::u16string_view delimiter) {
  if (texts.empty()) return context.texts.Empty();
  if (texts.size() == 1) return texts[0];
  std::size_t length = delimiter.size() * (texts.size() - 1);
  for (const Variant& text : texts) length += text.AsUtf16().size();
  context.budget.Charge(static_cast<std::int64_t>(texts.size()));
  Variant result = NewText(context, length);
  char16_t* out = PutText(Characters(result), texts[0].AsUtf16());
  for (std::size_t i = 1; i < texts.size(); ++i) out = PutText(PutText(out, delimiter), texts[i].AsUtf16());
  return result;
}

}  // namespace

Variant ArrayOf(std::span<Variant> values) {
  const Ref<ArrayBuffer> array = NewList(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) array->Elements()[i] = std::move(values[i]);
  return Variant::FromArray(array);
}

// Split(expression, delimiter, count, compare): an empty text gives an array without elements, an empty
// delimiter the whole text as the only element; a count of 0 gives no elements either.
Variant SplitText(Context& context, Arguments arguments) {
  const Variant& expression = AsText(arguments[0]);
  const Variant blank = context.texts.Unit(u' ');
  const Variant& delimiter = IsGiven(arguments, 1) ? AsText(arguments[1]) : blank;
  const std::size_t limit = PartLimit(arguments);
  const bool ignoreCase = IsTextCompare(arguments, 3);
  const std::u16string_view text = expression.AsUtf16();
  if (text.empty() || limit == 0) return Variant::FromArray(NewList(0));
  const std::size_t delimiterLength = delimiter.AsUtf16().size();

  Places places;
  if (delimiterLength != 0) {
    const TextSearch search(context, delimiter.AsUtf16(), ignoreCase);
    places = FindDelimiters(context, search, text, delimiterLength, limit);
  }
  const Ref<ArrayBuffer> parts = NewList(places.Count() + 1);
  std::size_t start = 0;
  for (std::size_t i = 0; i < places.Count(); ++i) {
    parts->Elements()[i] = PartOf(context, expression, start, places[i] - start);
    start = places[i] + delimiterLength;
  }
  parts->Elements()[places.Count()] = PartOf(context, expression, start, text.size() - start);
  return Variant::FromArray(parts);
}

Variant JoinTexts(Context& context, Arguments arguments) {
  std::span<const Variant> elements = ListOf(arguments[0], number::kInvalidProcedureCall);
  const Variant blank = context.texts.Unit(u' ');
  const Variant& delimiter = IsGiven(arguments, 1) ? AsText(arguments[1]) : blank;
  if (AreAllTexts(elements)) return JoinStrings(context, elements, delimiter.AsUtf16());
  return JoinStrings(context, TextsOf(context, elements), delimiter.AsUtf16());
}

// Filter(strings, value, include, compare)
Variant FilterTexts(Context& context, Arguments arguments) {
  std::span<const Variant> elements = ListOf(arguments[0], number::kTypeMismatch);
  const Variant& value = AsText(arguments[1]);
  const bool include = BooleanOr(arguments, 2, true);
  const TextSearch search(context, value.AsUtf16(), IsTextCompare(arguments, 3));
  std::vector<Variant> found;
  for (const Variant& element : elements) {
    context.budget.Charge(1);
    Variant text = ElementText(element);
    if ((search.Find(text.AsUtf16(), 0) != TextSearch::kNotFound) == include)
      found.push_back(std::move(text));
  }
  return ArrayOf(found);
}

}  // namespace hearthmake::vbscript
