#include "vbscript/objects/FileErrors.hpp"

#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {

void RaiseAsScriptError(const automation::Error& error) {
  if (error.Source() != "FileSystem") throw automation::Error(error);
  constexpr auto kPathFileAccess = static_cast<std::int32_t>(automation::RuntimeError::PathFileAccess);
  RaiseRuntime(error.Number() == kPathFileAccess ? number::kPermissionDenied : error.Number());
}

}  // namespace hearthmake::vbscript
