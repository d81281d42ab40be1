// Stand-ins for objects that are built elsewhere; weak, so that the real ones take their place.
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbscript {

using automation::Object;
using automation::Ref;

__attribute__((weak)) Ref<Object> CreateFileSystemObject(Context&) { return nullptr; }
__attribute__((weak)) Ref<Object> CreateShell(Context&) { return nullptr; }
__attribute__((weak)) Ref<Object> CreateNetwork(Context&) { return nullptr; }

}  // namespace hearthmake::vbscript
