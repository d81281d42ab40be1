#include "host/Version.hpp"

namespace hearthmake::host {

const char* Version() { return HEARTHMAKE_VERSION; }

}  // namespace hearthmake::host
