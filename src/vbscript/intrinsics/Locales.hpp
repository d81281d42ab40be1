#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace hearthmake::vbscript {

inline constexpr std::int32_t kUsEnglish = 1033;

// The id of a locale by its short name ("en-us", "de"), in any case; a language alone stands for its first
// country. Nothing for one that is not known.
std::optional<std::int32_t> LocaleOfName(std::u16string_view name);
// The full id of a locale by its id or by that of its language (7 is German, 1031 German in Germany);
// nothing for one that is not known.
std::optional<std::int32_t> LocaleOfId(std::int32_t id);

}  // namespace hearthmake::vbscript
