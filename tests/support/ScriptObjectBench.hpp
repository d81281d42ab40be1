#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "automation/Object.hpp"
#include "automation/Utf.hpp"
#include "support/ScriptHost.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// What a test of the engine's objects works with.
struct ScriptObjectBench {
  ScriptHost host;
  Context context{host, {}, {}};
};

inline automation::Variant Text(std::u16string_view text) { return automation::Variant::FromUtf16(text); }
inline automation::Variant Number(std::int32_t number) { return automation::Variant::FromLong(number); }
inline std::u16string Units(const automation::Variant& text) { return std::u16string(text.AsUtf16()); }

// What a walk over a collection gives.
inline std::vector<automation::Variant> WalkOver(automation::Object& collection) {
  std::vector<automation::Variant> items;
  const auto enumerator = collection.Enumerate();
  automation::Variant item;
  while (enumerator->Next(item)) items.push_back(item);
  return items;
}

// The number of the error that an action raises, 0 for none.
template <class Action>
std::int32_t ErrorOf(Action action) {
  try {
    action();
    return 0;
  } catch (const automation::Error& error) {
    return error.Number();
  }
}

}  // namespace hearthmake::vbscript
