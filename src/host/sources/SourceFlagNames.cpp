#include "host/sources/SourceFlagNames.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "automation/Text.hpp"
#include "host/HostError.hpp"
#include "host/text/Numbers.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::host {

namespace {

namespace bits = platform::SourceFlags;

struct Flag {
  const char* name;
  std::int32_t value;
  std::int32_t group;
};

constexpr std::array<Flag, 8> kFlags = {{
    {"readonly", bits::kReadOnlyYes, bits::kReadOnlyMask},
    {"writable", bits::kReadOnlyNo, bits::kReadOnlyMask},
    // A get adds kReplaceYes, and the two together are kReplaceSkip.
    {"keep", bits::kReplaceSkip - bits::kReplaceYes, bits::kReplaceMask},
    {"timenow", bits::kTimeNow, bits::kTimeMask},
    {"timemodified", bits::kTimeModified, bits::kTimeMask},
    {"timeupdated", bits::kTimeUpdated, bits::kTimeMask},
    {"flat", bits::kRecursiveNo, bits::kRecursiveMask},
    {"recursive", bits::kRecursiveYes, bits::kRecursiveMask},
}};

constexpr std::string_view kNone = "none";

const Flag& FindFlag(std::string_view name) {
  std::string known;
  for (const Flag& flag : kFlags) {
    if (automation::EqualsIgnoreCaseAscii(flag.name, name)) return flag;
    known += fmt::format("{}, ", flag.name);
  }
  throw HostError(fmt::format("There is no flag '{}'.", name),
                  fmt::format("There are: {}{}; or a number.", known, kNone));
}

bool IsNumber(std::string_view text) {
  return !text.empty() && std::string_view("-&0123456789").find(text.front()) != std::string_view::npos;
}

}  // namespace

std::int32_t ParseSourceFlags(std::string_view text) {
  if (IsNumber(text)) return ParseLong(text, "flags");
  if (automation::EqualsIgnoreCaseAscii(text, kNone)) return 0;
  std::int32_t flags = 0;
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t comma = std::min(text.find(',', start), text.size());
    const Flag& flag = FindFlag(automation::Trim(text.substr(start, comma - start)));
    const std::int32_t others = flags & flag.group;
    if (others != 0 && others != flag.value) {
      throw HostError(fmt::format("'{}' and '{}' exclude each other.", SourceFlagsText(others), flag.name));
    }
    flags |= flag.value;
    start = comma + 1;
  }
  return flags;
}

std::string SourceFlagsText(std::int32_t flags) {
  std::string text;
  for (const Flag& flag : kFlags) {
    if ((flags & flag.group) != flag.value) continue;
    text += fmt::format("{}{}", text.empty() ? "" : ",", flag.name);
    flags &= ~flag.group;
  }
  if (flags != 0) text += fmt::format("{}{}", text.empty() ? "" : "+", flags);
  return text.empty() ? std::string(kNone) : text;
}

}  // namespace hearthmake::host
