#pragma once

#include "adapters/win32/ObjectBorder.hpp"

namespace hearthmake::com {

// Objects cross as the state of the calling thread knows them: one of ours that comes back is itself, one of
// the host's is wrapped and given back as it was. Error 91 on a thread without state.
win32::ObjectBorder& ThreadBorder();

}  // namespace hearthmake::com
