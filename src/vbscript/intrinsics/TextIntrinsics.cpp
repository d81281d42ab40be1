#include <algorithm>
#include <cstring>
#include <limits>

#include "automation/Utf.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"
#include "vbscript/intrinsics/TextFunctions.hpp"
#include "vbscript/intrinsics/TextLists.hpp"
#include "vbscript/intrinsics/UnitCase.hpp"

namespace hearthmake::vbscript {

using automation::Variant;

namespace {

constexpr auto kToTheEnd = std::numeric_limits<std::size_t>::max();

// A count of characters; a negative one is error 5.
std::size_t AsCount(Variant& argument) {
  const std::int32_t count = AsLong(argument);
  if (count < 0) RaiseInvalidCall();
  return static_cast<std::size_t>(count);
}

// --- lengths and parts. A Null text gives Null.

Variant Len(Context&, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  return Variant::FromLong(static_cast<std::int32_t>(AsText(arguments[0]).AsUtf16().size()));
}

Variant LenB(Context&, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const std::size_t bytes = 2 * AsText(arguments[0]).AsUtf16().size();
  if (bytes > std::numeric_limits<std::int32_t>::max()) RaiseRuntime(number::kOverflow);
  return Variant::FromLong(static_cast<std::int32_t>(bytes));
}

Variant Left(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const std::size_t count = AsCount(arguments[1]);
  const Variant& text = AsText(arguments[0]);
  return PartOf(context, text, 0, std::min(count, text.AsUtf16().size()));
}

Variant Right(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const std::size_t count = AsCount(arguments[1]);
  const Variant& text = AsText(arguments[0]);
  const std::size_t length = text.AsUtf16().size();
  const std::size_t taken = std::min(count, length);
  return PartOf(context, text, length - taken, taken);
}

// Start, counted from 0, and length that the arguments of Mid and MidB name.
std::pair<std::size_t, std::size_t> ReadMid(Arguments arguments) {
  const std::int32_t start = AsLong(arguments[1]);
  const std::size_t count = IsGiven(arguments, 2) ? AsCount(arguments[2]) : kToTheEnd;
  if (start < 1) RaiseInvalidCall();
  return {static_cast<std::size_t>(start) - 1, count};
}

Variant Mid(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const auto [start, count] = ReadMid(arguments);
  const Variant& text = AsText(arguments[0]);
  const std::size_t length = text.AsUtf16().size();
  if (start >= length) return context.texts.Empty();
  return PartOf(context, text, start, std::min(count, length - start));
}

// --- the same by bytes. A text holds whole units here, so an odd number of bytes gets a zero byte behind it.

Variant BytesFrom(Context& context, std::u16string_view text, std::size_t start, std::size_t count) {
  const std::size_t length = 2 * text.size();
  start = std::min(start, length);
  count = std::min(count, length - start);
  Variant result = NewText(context, (count + 1) / 2);
  auto* out = reinterpret_cast<unsigned char*>(Characters(result));
  if (count != 0) std::memcpy(out, reinterpret_cast<const unsigned char*>(text.data()) + start, count);
  if (count % 2 == 1) out[count] = 0;
  return result;
}

Variant LeftB(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const std::size_t count = AsCount(arguments[1]);
  return BytesFrom(context, AsText(arguments[0]).AsUtf16(), 0, count);
}

Variant RightB(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const std::size_t count = AsCount(arguments[1]);
  const std::u16string_view text = AsText(arguments[0]).AsUtf16();
  const std::size_t taken = std::min(count, 2 * text.size());
  return BytesFrom(context, text, 2 * text.size() - taken, taken);
}

Variant MidB(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const auto [start, count] = ReadMid(arguments);
  return BytesFrom(context, AsText(arguments[0]).AsUtf16(), start, count);
}

// --- blanks, U+0020 only

Variant TrimSides(Context& context, Variant& argument, bool left, bool right) {
  if (IsNullArgument(argument)) return Variant::Null();
  const Variant& source = AsText(argument);
  const std::u16string_view text = source.AsUtf16();
  std::size_t start = 0;
  std::size_t end = text.size();
  while (left && start < end && text[start] == u' ') ++start;
  while (right && end > start && text[end - 1] == u' ') --end;
  ChargeUnits(context, text.size() - (end - start));
  return PartOf(context, source, start, end - start);
}

Variant LTrim(Context& context, Arguments arguments) { return TrimSides(context, arguments[0], true, false); }
Variant RTrim(Context& context, Arguments arguments) { return TrimSides(context, arguments[0], false, true); }
Variant Trim(Context& context, Arguments arguments) { return TrimSides(context, arguments[0], true, true); }

// --- case and order

using ChangeUnit = char16_t (*)(char16_t);

// Whole blocks of ASCII are changed without a look at each unit, which the compiler makes vectors of.
template <ChangeUnit kChangeAscii, ChangeUnit kChange>
void ChangeBlocks(std::u16string_view text, char16_t* out) {
  constexpr std::size_t kBlock = 32;
  while (!text.empty()) {
    const std::size_t length = std::min(text.size(), kBlock);
    unsigned allBits = 0;
    for (std::size_t i = 0; i < length; ++i) allBits |= text[i];
    if (allBits < 0x80) {
      for (std::size_t i = 0; i < length; ++i) out[i] = kChangeAscii(text[i]);
    } else {
      for (std::size_t i = 0; i < length; ++i) out[i] = kChange(text[i]);
    }
    text.remove_prefix(length);
    out += length;
  }
}

template <ChangeUnit kChangeAscii, ChangeUnit kChange>
Variant ChangeCase(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0])) return Variant::Null();
  const std::u16string_view text = AsText(arguments[0]).AsUtf16();
  if (text.size() == 1) return context.texts.Unit(kChange(text[0]));
  Variant result = NewText(context, text.size());
  ChangeBlocks<kChangeAscii, kChange>(text, Characters(result));
  return result;
}

Variant StrReverse(Context& context, Arguments arguments) {
  const std::u16string_view text = AsText(arguments[0]).AsUtf16();
  Variant result = NewText(context, text.size());
  std::reverse_copy(text.begin(), text.end(), Characters(result));
  return result;
}

// --- texts of one character

Variant Repeat(Context& context, std::size_t count, char16_t unit) {
  if (count == 1) return context.texts.Unit(unit);
  Variant result = NewText(context, count);
  std::fill_n(Characters(result), count, unit);
  return result;
}

Variant Space(Context& context, Arguments arguments) { return Repeat(context, AsCount(arguments[0]), u' '); }

// String(number, character): the first character of a text, or the character of a code modulo 256.
Variant String(Context& context, Arguments arguments) {
  if (IsNullArgument(arguments[0]) || IsNullArgument(arguments[1])) return Variant::Null();
  const std::size_t count = AsCount(arguments[0]);
  if (arguments[1].Type() == automation::VariantType::String) {
    const std::u16string_view text = arguments[1].AsUtf16();
    if (text.empty()) RaiseInvalidCall();
    return Repeat(context, count, text[0]);
  }
  const auto code = static_cast<unsigned char>(AsLong(arguments[1]) & 0xFF);
  return Repeat(context, count, automation::Windows1252Character(code));
}

constexpr Intrinsic kIntrinsics[] = {
    {"Escape", 1, 1, EscapeText},
    {"Filter", 2, 4, FilterTexts},
    {"InStr", 2, 4, FindText},
    {"InStrB", 2, 4, FindBytes},
    {"InStrRev", 2, 4, FindLastText},
    {"Join", 1, 2, JoinTexts},
    {"LCase", 1, 1, ChangeCase<LowerAscii, FoldUnit>},
    {"LTrim", 1, 1, LTrim},
    {"Left", 2, 2, Left},
    {"LeftB", 2, 2, LeftB},
    {"Len", 1, 1, Len},
    {"LenB", 1, 1, LenB},
    {"Mid", 2, 3, Mid},
    {"MidB", 2, 3, MidB},
    {"RTrim", 1, 1, RTrim},
    {"Replace", 3, 6, ReplaceText},
    {"Right", 2, 2, Right},
    {"RightB", 2, 2, RightB},
    {"Space", 1, 1, Space},
    {"Split", 1, 4, SplitText},
    {"StrComp", 2, 3, CompareTexts},
    {"StrReverse", 1, 1, StrReverse},
    {"String", 2, 2, String},
    {"Trim", 1, 1, Trim},
    {"UCase", 1, 1, ChangeCase<UpperAscii, RaiseUnit>},
    {"Unescape", 1, 1, UnescapeText},
};

}  // namespace

std::span<const Intrinsic> TextIntrinsics() { return kIntrinsics; }

}  // namespace hearthmake::vbscript
