#pragma once

#include <memory>
#include <string_view>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// The objects that scripts rely on and that come with the engine: "VBScript.RegExp" (and New RegExp),
// "Scripting.Dictionary", "Scripting.FileSystemObject", "WScript.Shell", "WScript.Network".

// Of the class of a ProgID, with or without a version behind it (".1"), in any case; null for one that is
// not known here or whose port the host lacks. The context outlives the object.
automation::Ref<automation::Object> CreateStandardObject(std::string_view progId, Context& context);

// Whether CreateStandardObject makes the class itself. Where the system's own regular expressions are used,
// "VBScript.RegExp" is none.
bool ComesWithEngine(std::string_view progId);

// Whether CreateRegExp makes an object of the engine, or asks the host for the system's.
bool BringsRegExp();
automation::Ref<automation::Object> CreateRegExp(Context& context);
automation::Ref<automation::Object> CreateDictionary(Context& context);
automation::Ref<automation::Object> CreateFileSystemObject(Context& context);
automation::Ref<automation::Object> CreateShell(Context& context);
automation::Ref<automation::Object> CreateNetwork(Context& context);

}  // namespace hearthmake::vbscript
