#include "vbscript/objects/StandardObjects.hpp"

#include <array>

#include "automation/Text.hpp"

namespace hearthmake::vbscript {

namespace {

struct StandardClass {
  std::string_view progId;
  automation::Ref<automation::Object> (*create)(Context& context);
};

constexpr std::array<StandardClass, 5> kClasses = {{
    {"VBScript.RegExp", &CreateRegExp},
    {"Scripting.Dictionary", &CreateDictionary},
    {"Scripting.FileSystemObject", &CreateFileSystemObject},
    {"WScript.Shell", &CreateShell},
    {"WScript.Network", &CreateNetwork},
}};

// The ProgID without a version behind it: ".1", ".55".
std::string_view WithoutVersion(std::string_view progId) {
  const std::size_t dot = progId.rfind('.');
  const bool isVersion = dot != std::string_view::npos && dot + 1 < progId.size() &&
                         progId.find_first_not_of("0123456789", dot + 1) == std::string_view::npos;
  return isVersion ? progId.substr(0, dot) : progId;
}

}  // namespace

automation::Ref<automation::Object> CreateStandardObject(std::string_view progId, Context& context) {
  const std::string_view name = WithoutVersion(progId);
  for (const StandardClass& known : kClasses) {
    if (automation::EqualsIgnoreCaseAscii(name, known.progId)) return known.create(context);
  }
  return nullptr;
}

}  // namespace hearthmake::vbscript
