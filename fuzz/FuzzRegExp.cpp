#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "automation/Error.hpp"
#include "support/ScriptHost.hpp"
#include "vbscript/intrinsics/Context.hpp"
#include "vbscript/objects/Match.hpp"
#include "vbscript/objects/RegExp.hpp"

using hearthmake::automation::Make;
using hearthmake::automation::Variant;
using namespace hearthmake::vbscript;

namespace {

constexpr std::int64_t kSteps = 20'000'000;

// UTF-8 where it is UTF-8, so that seeds can be read; any other byte is the unit of its number.
std::u16string UnitsOf(const std::uint8_t* data, std::size_t size) {
  std::u16string units;
  for (std::size_t i = 0; i < size; ++i) {
    const bool isPair = (data[i] & 0xE0) == 0xC0 && i + 1 < size && (data[i + 1] & 0xC0) == 0x80;
    const bool isTriple = (data[i] & 0xF0) == 0xE0 && i + 2 < size;
    if (isPair) {
      units.push_back(static_cast<char16_t>((data[i] & 0x1F) << 6 | (data[i + 1] & 0x3F)));
      i += 1;
    } else if (isTriple) {  // surrogates too
      units.push_back(
          static_cast<char16_t>((data[i] & 0x0F) << 12 | (data[i + 1] & 0x3F) << 6 | (data[i + 2] & 0x3F)));
      i += 2;
    } else {
      units.push_back(data[i]);
    }
  }
  return units;
}

void Check(bool holds) {
  if (!holds) std::abort();
}

void Use(RegExp& regExp, const Variant& subject) {
  const bool isFound = regExp.Test(subject);
  const auto matches = regExp.Execute(subject);
  Check((matches->Count() != 0) == isFound);
  std::int32_t end = 0;
  for (std::int32_t i = 0; i < matches->Count(); ++i) {
    const Variant item = matches->Item(i);
    auto& match = static_cast<Match&>(*item.AsObject());
    Check(match.FirstIndex() >= end);
    end = match.FirstIndex() + match.Length();
    for (std::int32_t group = 0; group < match.Groups()->Count(); ++group) match.Groups()->Item(group);
  }
  Check(end <= static_cast<std::int32_t>(subject.AsUtf16().size()));
  Check(regExp.Replace(subject, Variant::FromUtf16(u"$&")).AsUtf16() == subject.AsUtf16());
  regExp.Replace(subject, Variant::FromUtf16(u"$1$2$$$`"));
}

}  // namespace

// A byte of flags, a byte for the length of the pattern, the pattern, the subject.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::size_t patternSize = std::min<std::size_t>(data[1], size - 2);
  ScriptHost host;
  Context context{host, {}, {}};
  context.budget.LimitSteps(kSteps);
  try {
    const auto regExp = Make<RegExp>(context);
    regExp->SetIgnoreCase((data[0] & 1) != 0);
    regExp->SetMultiline((data[0] & 2) != 0);
    regExp->SetGlobal((data[0] & 4) != 0);
    regExp->SetPattern(Variant::FromUtf16(UnitsOf(data + 2, patternSize)));
    Use(*regExp, Variant::FromUtf16(UnitsOf(data + 2 + patternSize, size - 2 - patternSize)));
  } catch (const hearthmake::automation::Error&) {
  } catch (const Interrupted&) {
  }
  return 0;
}
