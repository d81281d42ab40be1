#include "vbscript/objects/StandardObjects.hpp"

#include <algorithm>

#include "automation/Text.hpp"

namespace hearthmake::vbscript {

using automation::Object;
using automation::Ref;

namespace {

struct StandardClass {
  std::string_view progId;
  Ref<Object> (*create)(Context& context);
};

constexpr StandardClass kClasses[] = {
    {"Scripting.Dictionary", CreateDictionary},
    {"Scripting.FileSystemObject", CreateFileSystemObject},
    {"VBScript.RegExp", CreateRegExp},
    {"WScript.Network", CreateNetwork},
    {"WScript.Shell", CreateShell},
};

// The ProgID without a version behind it: "VBScript.RegExp.55" and "WScript.Shell.1" name the class too.
std::string_view WithoutVersion(std::string_view progId) {
  const std::size_t point = progId.rfind('.');
  if (point == std::string_view::npos || point + 1 == progId.size()) return progId;
  const std::string_view version = progId.substr(point + 1);
  const bool isNumber = version.find_first_not_of("0123456789") == std::string_view::npos;
  return isNumber ? progId.substr(0, point) : progId;
}

const StandardClass* Find(std::string_view progId) {
  const std::string_view name = WithoutVersion(progId);
  const auto found =
      std::find_if(std::begin(kClasses), std::end(kClasses), [&](const StandardClass& standard) {
        return automation::EqualsIgnoreCaseAscii(standard.progId, name);
      });
  return found == std::end(kClasses) ? nullptr : found;
}

}  // namespace

Ref<Object> CreateStandardObject(std::string_view progId, Context& context) {
  const StandardClass* found = Find(progId);
  return found == nullptr ? nullptr : found->create(context);
}

bool ComesWithEngine(std::string_view progId) {
  const StandardClass* found = Find(progId);
  return found != nullptr && (found->create != CreateRegExp || BringsRegExp());
}

}  // namespace hearthmake::vbscript
