#pragma once

#include <cstdint>
#include <string_view>

namespace hearthmake::vbscript {

// Names of the engine's locale, US English. The first three letters are the abbreviation.

// 1 to 12.
constexpr std::u16string_view EnglishMonth(std::int32_t month) {
  constexpr std::u16string_view kMonths[] = {u"January",   u"February", u"March",    u"April",
                                             u"May",       u"June",     u"July",     u"August",
                                             u"September", u"October",  u"November", u"December"};
  return kMonths[month - 1];
}

// 1 is Sunday, 7 Saturday.
constexpr std::u16string_view EnglishWeekday(std::int32_t weekday) {
  constexpr std::u16string_view kWeekdays[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                               u"Thursday", u"Friday", u"Saturday"};
  return kWeekdays[weekday - 1];
}

}  // namespace hearthmake::vbscript
