#pragma once

#include <windows.h>

namespace hearthmake::vb6::stub {

// What a component does for regsvr32, or for /RegServer: registers the type library that the image of this
// code carries and each class of it that can be created, as Visual Basic's own components do. False when
// something of it failed.
bool Register();
bool Unregister();

}  // namespace hearthmake::vb6::stub
