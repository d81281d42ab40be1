#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace hearthmake::automation {

// Texts one behind the other, in one allocation.
inline std::string Joined(std::initializer_list<std::string_view> texts) {
  std::size_t size = 0;
  for (const std::string_view text : texts) size += text.size();
  std::string whole;
  whole.reserve(size);
  for (const std::string_view text : texts) whole.append(text);
  return whole;
}

}  // namespace hearthmake::automation
