#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

#include "automation/Error.hpp"

namespace hearthmake::support {

// Feeds a reader with a text cut off at every place and with bits flipped and bytes put in here and
// there, the same ones in every run. The reader must return or throw automation::Error.
inline void FeedDamaged(const std::string& text, const std::function<void(const std::string&)>& reader) {
  const auto feed = [&](const std::string& damaged) {
    try {
      reader(damaged);
    } catch (const automation::Error& error) {
      EXPECT_FALSE(error.Description().empty());
    }
  };
  for (std::size_t length = 0; length <= text.size(); ++length) feed(text.substr(0, length));
  std::uint32_t random = 12345;
  const auto next = [&](std::size_t limit) {
    random = random * 1664525 + 1013904223;
    return static_cast<std::size_t>(random >> 8) % limit;
  };
  for (int round = 0; round < 4000; ++round) {
    std::string damaged = text;
    for (std::size_t changes = 1 + next(4); changes > 0; --changes) {
      const std::size_t place = next(damaged.size());
      if (next(2) == 0) {
        damaged[place] = static_cast<char>(damaged[place] ^ 1 << next(8));
      } else {
        constexpr char special[] = "\"\\[]=:;,@#-x0\n\r\0\x80\xFF";
        damaged.insert(place, 1, special[next(sizeof special - 1)]);
      }
    }
    feed(damaged);
  }
}

}  // namespace hearthmake::support
