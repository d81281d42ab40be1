#pragma once

#include <string>
#include <utility>

#include "automation/Error.hpp"

namespace hearthmake::jet {

// The source of every error of this adapter.
inline constexpr const char* kSource = "Jet";

// The numbers that DAO has for them.
inline constexpr std::int32_t kCantOpen = 3051;
inline constexpr std::int32_t kForeignFormat = 3343;
inline constexpr std::int32_t kLocked = 3031;  // behind a password or encrypted
inline constexpr std::int32_t kDamaged = 3049;
inline constexpr std::int32_t kCancelled = 3059;

[[noreturn]] inline void RaiseDamaged(std::string what) {
  automation::Raise(kDamaged, kSource, "The database is damaged: " + std::move(what));
}

}  // namespace hearthmake::jet
