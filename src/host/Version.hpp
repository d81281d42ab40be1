#pragma once

namespace hearthmake::host {

// Of the command and its library: 0.1.0
const char* Version();

}  // namespace hearthmake::host
