#pragma once

#include <functional>

#include "adapters/win32/LateObject.hpp"

namespace hearthmake::componentservices {

// Makes a call that works on several objects at once. Where it fails, its own error says little more than
// that it did; the collection ErrorInfo, which is to be had until the next call, names the objects: they are
// added to the description. Without the collection the error stays as it is.
void CallExplained(const std::function<void()>& call, const std::function<win32::LateObject()>& errorInfo);

}  // namespace hearthmake::componentservices
