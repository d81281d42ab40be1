#include "vbscript/values/Text16.hpp"

#include <algorithm>
#include <array>

namespace hearthmake::vbscript {

namespace {

using CaseTable = std::array<char16_t, 0x10000>;

bool IsEvenLower(unsigned unit) {  // pairs of an even capital and the odd small letter behind it
  return (unit >= 0x100 && unit <= 0x137 && unit != 0x130 && unit != 0x131) ||
         (unit >= 0x14A && unit <= 0x177) || (unit >= 0x1DE && unit <= 0x1EF) ||
         (unit >= 0x1F8 && unit <= 0x21F) || (unit >= 0x222 && unit <= 0x233) ||
         (unit >= 0x370 && unit <= 0x373) || (unit >= 0x3D8 && unit <= 0x3EF) ||
         (unit >= 0x460 && unit <= 0x481) || (unit >= 0x48A && unit <= 0x4BF) ||
         (unit >= 0x4D0 && unit <= 0x52F) || (unit >= 0x1E00 && unit <= 0x1E95) ||
         (unit >= 0x1EA0 && unit <= 0x1EFF);
}

bool IsOddLower(unsigned unit) {  // pairs of an odd capital and the even small letter behind it
  return (unit >= 0x139 && unit <= 0x148) || (unit >= 0x179 && unit <= 0x17E) ||
         (unit >= 0x1CD && unit <= 0x1DC) || (unit >= 0x4C1 && unit <= 0x4CE);
}

void PairRange(CaseTable& lower, unsigned first, unsigned last, unsigned distance) {
  for (unsigned unit = first; unit <= last; ++unit) lower[unit] = static_cast<char16_t>(unit + distance);
}

CaseTable MakeLower() {
  CaseTable lower{};
  for (unsigned unit = 0; unit < lower.size(); ++unit) {
    const bool isCapital = (IsEvenLower(unit) && unit % 2 == 0) || (IsOddLower(unit) && unit % 2 == 1);
    lower[unit] = static_cast<char16_t>(isCapital ? unit + 1 : unit);
  }
  PairRange(lower, 'A', 'Z', 32);
  PairRange(lower, 0xC0, 0xDE, 32);
  lower[0xD7] = 0xD7;
  lower[0x178] = 0xFF;
  lower[0x386] = 0x3AC;
  PairRange(lower, 0x388, 0x38A, 37);
  lower[0x38C] = 0x3CC;
  PairRange(lower, 0x38E, 0x38F, 63);
  PairRange(lower, 0x391, 0x3AB, 32);
  lower[0x3A2] = 0x3A2;
  PairRange(lower, 0x400, 0x40F, 80);
  PairRange(lower, 0x410, 0x42F, 32);
  lower[0x4C0] = 0x4CF;
  PairRange(lower, 0x531, 0x556, 48);
  PairRange(lower, 0x2160, 0x216F, 16);
  PairRange(lower, 0x24B6, 0x24CF, 26);
  PairRange(lower, 0xFF21, 0xFF3A, 32);
  return lower;
}

const CaseTable& LowerTable() {
  static const CaseTable kTable = MakeLower();
  return kTable;
}

const CaseTable& UpperTable() {
  static const CaseTable kTable = [] {
    CaseTable upper{};
    for (unsigned unit = 0; unit < upper.size(); ++unit) upper[unit] = static_cast<char16_t>(unit);
    for (unsigned unit = 0; unit < upper.size(); ++unit) {
      const char16_t small = LowerTable()[unit];
      if (small != unit) upper[small] = static_cast<char16_t>(unit);
    }
    return upper;
  }();
  return kTable;
}

std::u16string Fold(std::u16string_view text, const CaseTable& table) {
  std::u16string result(text.size(), u'\0');
  std::transform(text.begin(), text.end(), result.begin(), [&](char16_t unit) { return table[unit]; });
  return result;
}

}  // namespace

char16_t LowerUnit(char16_t unit) { return LowerTable()[unit]; }
char16_t UpperUnit(char16_t unit) { return UpperTable()[unit]; }
std::u16string Lower(std::u16string_view text) { return Fold(text, LowerTable()); }
std::u16string Upper(std::u16string_view text) { return Fold(text, UpperTable()); }

bool EqualsIgnoreCase(std::u16string_view left, std::u16string_view right) {
  return left.size() == right.size() && CompareIgnoreCase(left, right) == 0;
}

int CompareIgnoreCase(std::u16string_view left, std::u16string_view right) {
  const CaseTable& table = LowerTable();
  const std::size_t common = std::min(left.size(), right.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (const int difference = table[left[i]] - table[right[i]]; difference != 0) return difference;
  }
  return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
}

std::size_t FindIgnoreCase(std::u16string_view text, std::u16string_view sought, std::size_t start) {
  if (start > text.size()) return std::u16string_view::npos;
  const CaseTable& table = LowerTable();
  const auto place =
      std::search(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), sought.begin(), sought.end(),
                  [&](char16_t a, char16_t b) { return table[a] == table[b]; });
  if (place == text.end() && !sought.empty()) return std::u16string_view::npos;
  return static_cast<std::size_t>(place - text.begin());
}

}  // namespace hearthmake::vbscript
