#include <cstdint>
#include <string_view>
#include <vector>

#include "vbscript/intrinsics/Intrinsics.hpp"

namespace hearthmake::vbscript {

using automation::Variant;

namespace {

template <class T>
struct Named {
  const char* name;
  T value;
};

constexpr Named<std::int16_t> kIntegers[] = {
    // Comparison
    {"vbBinaryCompare", 0},
    {"vbTextCompare", 1},
    {"vbDatabaseCompare", 2},
    // Days and weeks
    {"vbSunday", 1},
    {"vbMonday", 2},
    {"vbTuesday", 3},
    {"vbWednesday", 4},
    {"vbThursday", 5},
    {"vbFriday", 6},
    {"vbSaturday", 7},
    {"vbUseSystem", 0},
    {"vbUseSystemDayOfWeek", 0},
    {"vbFirstJan1", 1},
    {"vbFirstFourDays", 2},
    {"vbFirstFullWeek", 3},
    // Formats of dates
    {"vbGeneralDate", 0},
    {"vbLongDate", 1},
    {"vbShortDate", 2},
    {"vbLongTime", 3},
    {"vbShortTime", 4},
    // Message boxes
    {"vbOKOnly", 0},
    {"vbOKCancel", 1},
    {"vbAbortRetryIgnore", 2},
    {"vbYesNoCancel", 3},
    {"vbYesNo", 4},
    {"vbRetryCancel", 5},
    {"vbCritical", 16},
    {"vbQuestion", 32},
    {"vbExclamation", 48},
    {"vbInformation", 64},
    {"vbDefaultButton1", 0},
    {"vbDefaultButton2", 256},
    {"vbDefaultButton3", 512},
    {"vbDefaultButton4", 768},
    {"vbApplicationModal", 0},
    {"vbSystemModal", 4096},
    {"vbOK", 1},
    {"vbCancel", 2},
    {"vbAbort", 3},
    {"vbRetry", 4},
    {"vbIgnore", 5},
    {"vbYes", 6},
    {"vbNo", 7},
    // Truths of the format functions
    {"vbUseDefault", -2},
    {"vbTrue", -1},
    {"vbFalse", 0},
    // Subtypes
    {"vbEmpty", 0},
    {"vbNull", 1},
    {"vbInteger", 2},
    {"vbLong", 3},
    {"vbSingle", 4},
    {"vbDouble", 5},
    {"vbCurrency", 6},
    {"vbDate", 7},
    {"vbString", 8},
    {"vbObject", 9},
    {"vbError", 10},
    {"vbBoolean", 11},
    {"vbVariant", 12},
    {"vbDataObject", 13},
    {"vbDecimal", 14},
    {"vbByte", 17},
    {"vbArray", 8192},
};

constexpr Named<std::int32_t> kLongs[] = {
    // Colours
    {"vbBlack", 0x000000},
    {"vbRed", 0x0000FF},
    {"vbGreen", 0x00FF00},
    {"vbYellow", 0x00FFFF},
    {"vbBlue", 0xFF0000},
    {"vbMagenta", 0xFF00FF},
    {"vbCyan", 0xFFFF00},
    {"vbWhite", 0xFFFFFF},
    // Message boxes
    {"vbMsgBoxHelpButton", 16384},
    {"vbMsgBoxSetForeground", 65536},
    {"vbMsgBoxRight", 524288},
    {"vbMsgBoxRtlReading", 1048576},
    // The first number that objects may raise as their own
    {"vbObjectError", static_cast<std::int32_t>(0x80040000)},
};

constexpr Named<std::u16string_view> kTexts[] = {
    {"vbCr", u"\r"},  {"vbCrLf", u"\r\n"},      {"vbFormFeed", u"\f"},
    {"vbLf", u"\n"},  {"vbNewLine", u"\r\n"},   {"vbNullString", u""},
    {"vbTab", u"\t"}, {"vbVerticalTab", u"\v"}, {"vbNullChar", std::u16string_view(u"\0", 1)},
};

std::vector<IntrinsicConstant> MakeConstants() {
  std::vector<IntrinsicConstant> constants;
  for (const auto& [name, value] : kIntegers) constants.push_back({name, Variant::FromInteger(value)});
  for (const auto& [name, value] : kLongs) constants.push_back({name, Variant::FromLong(value)});
  for (const auto& [name, value] : kTexts) constants.push_back({name, Variant::FromUtf16(value)});
  return constants;
}

}  // namespace

std::span<const IntrinsicConstant> IntrinsicConstants() {
  // One list for each thread: texts count their references without locking.
  static thread_local const std::vector<IntrinsicConstant> constants = MakeConstants();
  return constants;
}

}  // namespace hearthmake::vbscript
