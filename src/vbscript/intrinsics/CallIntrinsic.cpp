#include "vbscript/intrinsics/CallIntrinsic.hpp"

#include <algorithm>

#include "automation/Text.hpp"
#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {

namespace {

// An error that this engine raised, with nothing behind its text yet, or with the text that could not be
// converted, which the function's name takes the place of. Automation's own conversions raise theirs without
// a source.
bool WantsName(const automation::Error& error) {
  if (error.Source() != kRuntimeErrorSource && !error.Source().empty()) return false;
  const std::string_view text = ErrorText(error.Number());
  const std::string_view description = error.Description();
  return description.starts_with(text) &&
         (description.size() == text.size() || description.substr(text.size()).starts_with(": '[string: "));
}

}  // namespace

automation::Variant CallIntrinsic(const Intrinsic& intrinsic, std::string_view spelling, Context& context,
                                  std::span<automation::Variant> arguments) {
  if (arguments.size() < intrinsic.minimumArguments ||
      (intrinsic.maximumArguments != kAnyNumberOfArguments && arguments.size() > intrinsic.maximumArguments))
    RaiseRuntime(number::kWrongNumberOfArguments, spelling);
  try {
    return intrinsic.call(context, arguments);
  } catch (const automation::Error& error) {
    if (WantsName(error)) RaiseRuntime(error.Number(), spelling);
    throw;
  }
}

const Intrinsic* FindIntrinsic(std::span<const Intrinsic> intrinsics, std::string_view name) {
  const auto found = std::find_if(intrinsics.begin(), intrinsics.end(), [&](const Intrinsic& intrinsic) {
    return automation::EqualsIgnoreCaseAscii(intrinsic.name, name);
  });
  return found == intrinsics.end() ? nullptr : &*found;
}

}  // namespace hearthmake::vbscript
