#pragma once

#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {

// LowerUnit and UpperUnit without the table for ASCII, which most texts are made of.
inline char16_t LowerAscii(char16_t unit) {
  return static_cast<char16_t>(unit + (static_cast<unsigned>(unit - u'A') < 26u ? 32 : 0));
}
inline char16_t UpperAscii(char16_t unit) {
  return static_cast<char16_t>(unit - (static_cast<unsigned>(unit - u'a') < 26u ? 32 : 0));
}
inline char16_t FoldUnit(char16_t unit) { return unit < 0x80 ? LowerAscii(unit) : LowerUnit(unit); }
inline char16_t RaiseUnit(char16_t unit) { return unit < 0x80 ? UpperAscii(unit) : UpperUnit(unit); }

}  // namespace hearthmake::vbscript
