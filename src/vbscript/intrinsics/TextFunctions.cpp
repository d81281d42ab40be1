#include "vbscript/intrinsics/TextFunctions.hpp"

#include <algorithm>
#include <cstring>
#include <limits>

#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Places.hpp"
#include "vbscript/intrinsics/TextSearch.hpp"
#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {

using automation::Variant;

namespace {

// The arguments of InStr and InStrB: with three or four, the first is the start.
struct SearchArguments {
  std::int32_t start = 1;
  Variant* text = nullptr;
  Variant* sought = nullptr;
  bool ignoreCase = false;
};

SearchArguments ReadSearch(Arguments arguments) {
  SearchArguments read;
  const std::size_t first = arguments.size() > 2 ? 1 : 0;
  if (first == 1) read.start = LongOr(arguments, 0, 1);
  read.ignoreCase = IsTextCompare(arguments, 3);
  if (read.start < 1) RaiseInvalidCall();
  read.text = &arguments[first];
  read.sought = &arguments[first + 1];
  return read;
}

Variant PlaceOrZero(std::size_t place) {
  return Variant::FromLong(place == TextSearch::kNotFound ? 0 : static_cast<std::int32_t>(place) + 1);
}

// A text as its bytes, low byte first, one to a unit: byte searches then work like others.
std::u16string BytesOf(Context& context, std::u16string_view text) {
  if (text.size() > kLongestText / 2) RaiseRuntime(number::kOutOfStringSpace);
  ChargeUnits(context, 2 * text.size());
  std::u16string bytes(2 * text.size(), u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) {
    bytes[2 * i] = text[i] & 0xFF;
    bytes[2 * i + 1] = static_cast<char16_t>(text[i] >> 8);
  }
  return bytes;
}

Variant FindIn(Context& context, const SearchArguments& read, std::u16string_view text,
               std::u16string_view sought) {
  const auto start = static_cast<std::size_t>(read.start) - 1;
  if (start >= text.size()) return Variant::FromLong(0);  // even when nothing is sought
  return PlaceOrZero(TextSearch(context, sought, read.ignoreCase).Find(text, start));
}

char16_t* PutText(char16_t* out, std::u16string_view text) {
  if (!text.empty()) std::memcpy(out, text.data(), text.size() * sizeof(char16_t));
  return out + text.size();
}

struct ReplaceArguments {
  const Variant* text = nullptr;
  std::u16string_view sought;
  std::u16string_view replacement;
  std::size_t start = 0;
  std::size_t count = 0;
  bool ignoreCase = false;
};

ReplaceArguments ReadReplace(Arguments arguments) {
  ReplaceArguments read;
  read.text = &AsText(arguments[0]);
  read.sought = AsText(arguments[1]).AsUtf16();
  read.replacement = AsText(arguments[2]).AsUtf16();
  const std::int32_t start = LongOr(arguments, 3, 1);
  const std::int32_t count = LongOr(arguments, 4, -1);
  read.ignoreCase = IsTextCompare(arguments, 5);
  if (start < 1 || count < -1) RaiseInvalidCall();
  read.start = static_cast<std::size_t>(start) - 1;
  read.count = count == -1 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(count);
  return read;
}

Places FindAll(Context& context, const ReplaceArguments& read) {
  Places places;
  const TextSearch search(context, read.sought, read.ignoreCase);
  for (std::size_t start = read.start; places.Count() < read.count;) {
    const std::size_t place = search.Find(read.text->AsUtf16(), start);
    if (place == TextSearch::kNotFound) break;
    context.budget.Charge(1);
    places.Add(place);
    start = place + read.sought.size();
  }
  return places;
}

bool StaysUnescaped(char16_t unit) {
  return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z') ||
         (unit != 0 && unit < 0x80 && std::strchr("@*_+-./", unit) != nullptr);
}

std::size_t EscapedLength(char16_t unit) { return StaysUnescaped(unit) ? 1 : unit < 0x100 ? 3 : 6; }

char16_t* PutEscaped(char16_t* out, char16_t unit) {
  if (StaysUnescaped(unit)) {
    *out = unit;
    return out + 1;
  }
  *out++ = u'%';
  if (unit >= 0x100) *out++ = u'u';
  for (int shift = unit < 0x100 ? 4 : 12; shift >= 0; shift -= 4)
    *out++ = static_cast<char16_t>("0123456789ABCDEF"[(unit >> shift) & 0xF]);
  return out;
}

// The value of a hexadecimal digit; -1 for what is none.
int DigitValue(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  const int letter = unit | 0x20;
  return letter >= 'a' && letter <= 'f' && unit < 0x80 ? letter - 'a' + 10 : -1;
}

// The number that so many hexadecimal digits behind a place make; -1 when they are not all there.
int HexAt(std::u16string_view text, std::size_t place, std::size_t count) {
  if (place + count > text.size()) return -1;
  int value = 0;
  for (std::size_t i = place; i < place + count; ++i) {
    const int digit = DigitValue(text[i]);
    if (digit < 0) return -1;
    value = value * 16 + digit;
  }
  return value;
}

}  // namespace

Variant CompareTexts(Context& context, Arguments arguments) {
  const bool ignoreCase = IsTextCompare(arguments, 2);
  if (IsNullArgument(arguments[0]) || IsNullArgument(arguments[1])) return Variant::Null();
  const std::u16string_view left = AsText(arguments[0]).AsUtf16();
  const std::u16string_view right = AsText(arguments[1]).AsUtf16();
  ChargeUnits(context, std::min(left.size(), right.size()));
  const int order = ignoreCase ? CompareIgnoreCase(left, right) : left.compare(right);
  return Variant::FromInteger(static_cast<std::int16_t>(order < 0 ? -1 : order > 0 ? 1 : 0));
}

Variant FindText(Context& context, Arguments arguments) {
  const SearchArguments read = ReadSearch(arguments);
  if (IsNullArgument(*read.text) || IsNullArgument(*read.sought)) return Variant::Null();
  return FindIn(context, read, AsText(*read.text).AsUtf16(), AsText(*read.sought).AsUtf16());
}

Variant FindBytes(Context& context, Arguments arguments) {
  const SearchArguments read = ReadSearch(arguments);
  if (IsNullArgument(*read.text) || IsNullArgument(*read.sought)) return Variant::Null();
  return FindIn(context, read, BytesOf(context, AsText(*read.text).AsUtf16()),
                BytesOf(context, AsText(*read.sought).AsUtf16()));
}

// InStrRev(text, sought, start, compare): what is found ends at the start or before it.
Variant FindLastText(Context& context, Arguments arguments) {
  const std::int32_t start = LongOr(arguments, 2, -1);
  const bool ignoreCase = IsTextCompare(arguments, 3);
  if (start < -1 || start == 0) RaiseInvalidCall();
  if (IsNullArgument(arguments[0]) || IsNullArgument(arguments[1])) return Variant::Null();
  std::u16string_view text = AsText(arguments[0]).AsUtf16();
  const std::u16string_view sought = AsText(arguments[1]).AsUtf16();
  if (text.empty()) return Variant::FromLong(0);
  const auto last = start == -1 ? text.size() : static_cast<std::size_t>(start);
  if (last > text.size()) return Variant::FromLong(0);
  if (sought.empty()) return Variant::FromLong(static_cast<std::int32_t>(last));
  return PlaceOrZero(TextSearch(context, sought, ignoreCase).FindLast(text.substr(0, last)));
}

// Replace(text, sought, replacement, start, count, compare): what stands before the start is left out.
Variant ReplaceText(Context& context, Arguments arguments) {
  const ReplaceArguments read = ReadReplace(arguments);
  const std::u16string_view text = read.text->AsUtf16();
  if (read.start >= text.size()) return context.texts.Empty();
  Places places;
  if (!read.sought.empty()) places = FindAll(context, read);
  if (places.Count() == 0) return PartOf(context, *read.text, read.start, text.size() - read.start);

  const std::size_t kept = text.size() - read.start - places.Count() * read.sought.size();
  if (read.replacement.size() > kLongestText / places.Count()) RaiseRuntime(number::kOutOfStringSpace);
  Variant result = NewText(context, kept + places.Count() * read.replacement.size());
  char16_t* out = Characters(result);
  std::size_t start = read.start;
  for (std::size_t i = 0; i < places.Count(); ++i) {
    out = PutText(PutText(out, text.substr(start, places[i] - start)), read.replacement);
    start = places[i] + read.sought.size();
  }
  PutText(out, text.substr(start));
  return result;
}

Variant EscapeText(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const Variant& source = AsText(arguments[0]);
  const std::u16string_view text = source.AsUtf16();
  std::size_t length = 0;
  for (const char16_t unit : text) length += EscapedLength(unit);
  if (length == text.size()) return source;
  Variant result = NewText(context, length);
  char16_t* out = Characters(result);
  for (const char16_t unit : text) out = PutEscaped(out, unit);
  return result;
}

// Reads %XX and %uXXXX; a percent sign that neither follows stays.
Variant UnescapeText(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const Variant& source = AsText(arguments[0]);
  const std::u16string_view text = source.AsUtf16();
  if (text.find(u'%') == std::u16string_view::npos) return source;
  ChargeUnits(context, text.size());
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isPercent = text[i] == u'%';
    const bool isLong = isPercent && i + 1 < text.size() && text[i + 1] == u'u';
    const int value = !isPercent ? -1 : isLong ? HexAt(text, i + 2, 4) : HexAt(text, i + 1, 2);
    result += value < 0 ? text[i] : static_cast<char16_t>(value);
    if (value >= 0) i += isLong ? 5 : 2;
  }
  return context.texts.Text(result);
}

}  // namespace hearthmake::vbscript
