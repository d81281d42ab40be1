#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace hearthmake::host {

// The text of a value. Bytes that are no UTF-8 (a name from a damaged file) become replacement characters
// instead of a failure. An indent of -1 gives one line.
inline std::string JsonText(const nlohmann::ordered_json& value, int indent = -1) {
  return value.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace hearthmake::host
