#pragma once

#include "platform/Platform.hpp"

namespace hearthmake::com {

// The composition root of the Windows library: the adapters that an apartment works with.
platform::Platform Compose();

}  // namespace hearthmake::com
