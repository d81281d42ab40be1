#include "adapters/componentservices/AdminErrors.hpp"

#include <algorithm>
#include <cstdio>
#include <string>

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::componentservices {

namespace {

using automation::Error;
using automation::Variant;
using win32::LateObject;

constexpr std::int32_t kShown = 10;  // a longer list hides what went wrong

// Empty for a property that the object of this catalog doesn't have.
Variant ValueOf(const LateObject& object, const char* name) {
  try {
    return object.Call("Value", {name});
  } catch (const Error&) {
    return {};
  }
}

// COM+ gives a text, MTS a number.
std::string CodeOf(const LateObject& object) {
  const Variant code = ValueOf(object, "ErrorCode");
  if (code.Type() != automation::VariantType::Long) return automation::ToText(code);
  char text[16];
  std::snprintf(text, sizeof text, "&H%08X", static_cast<unsigned>(automation::ToLong(code)));
  return text;
}

// "Orders, Identity: &H80110414"
std::string Described(const LateObject& object) {
  std::string text = automation::ToText(object.Call("Name"));
  const std::string place = automation::ToText(ValueOf(object, "MinorRef"));
  if (!place.empty() && place != "<Invalid>") text += ", " + place;
  return text + ": " + CodeOf(object);
}

std::string Details(const std::function<LateObject()>& errorInfo) {
  try {
    const LateObject errors = errorInfo();
    errors.Call("Populate");
    const std::int32_t count = automation::ToLong(errors.Call("Count"));
    std::string text;
    for (std::int32_t i = 0; i < std::min(count, kShown); ++i)
      text += (text.empty() ? "" : "; ") + Described(errors.Object("Item", {i}));
    return text;
  } catch (const Error&) {
    return {};
  }
}

}  // namespace

void CallExplained(const std::function<void()>& call, const std::function<LateObject()>& errorInfo) {
  try {
    call();
  } catch (const Error& error) {
    const std::string details = Details(errorInfo);
    if (details.empty()) throw;
    throw Error(error.Number(), error.Source(), error.Description() + " (" + details + ")");
  }
}

}  // namespace hearthmake::componentservices
