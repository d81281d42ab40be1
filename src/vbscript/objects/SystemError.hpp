#pragma once

#include <cstdint>
#include <string>

namespace hearthmake::vbscript {

// Result codes of the system that scripts see as error numbers.
inline constexpr std::int32_t kSystemFileNotFound = static_cast<std::int32_t>(0x80070002);
inline constexpr std::int32_t kSystemAccessDenied = static_cast<std::int32_t>(0x80070005);
inline constexpr std::int32_t kExceptionInMember = static_cast<std::int32_t>(0x80020009);

}  // namespace hearthmake::vbscript
