#pragma once

#include <string>
#include <string_view>

#include "host/moving/BuildDocument.hpp"

namespace hearthmake::host {

// An exported build as text: JSON, a key a line, long texts line by line. A document that is printed and
// parsed is the same.

// HostError for a value that JSON can't hold: bytes that are no UTF-8, a date that is no number.
std::string PrintBuild(const BuildDocument& document);

// HostError, with the line, for what is no exported build or refers to what is not there.
BuildDocument ParseBuild(std::string_view text);

}  // namespace hearthmake::host
