// Where the operating system has the class "VBScript.RegExp" it is the real one, and the engine brings none
// of its own.

#include "vbscript/Errors.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbscript {

bool BringsRegExp() { return false; }

automation::Ref<automation::Object> CreateRegExp(Context& context) {
  automation::Ref<automation::Object> object = context.host.CreateObject("VBScript.RegExp");
  if (!object) RaiseRuntime(number::kCantCreateObject);
  return object;
}

}  // namespace hearthmake::vbscript
