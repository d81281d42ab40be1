#pragma once

#include <cstdint>

namespace hearthmake::vbscript {

// Thrown through the machine when a script ends itself (WScript.Quit). Not an automation::Error on purpose:
// no On Error Resume Next may catch it.
struct Quit {
  std::int32_t code = 0;
};

}  // namespace hearthmake::vbscript
