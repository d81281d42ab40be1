#include <string>

#include "automation/Utf.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Arguments.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"
#include "vbscript/intrinsics/Locales.hpp"
#include "vbscript/objects/StandardObjects.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

using automation::Object;
using automation::Ref;
using automation::Variant;

namespace {

constexpr const char* kDefaultTitle = "VBScript";
constexpr std::int32_t kMajorVersion = 5;
constexpr std::int32_t kMinorVersion = 8;
constexpr std::int32_t kBuildVersion = 16384;
constexpr std::int32_t kNoServer = 462;
constexpr std::int32_t kLocaleNotSupported = 447;
constexpr std::int32_t kInvalidPicture = 481;

std::string Utf8(Variant& argument) { return automation::Utf16ToUtf8(AsText(argument).AsUtf16()); }

std::string Utf8Or(Arguments arguments, std::size_t place, const char* otherwise) {
  return IsGiven(arguments, place) ? Utf8(arguments[place]) : otherwise;
}

// A help file and the topic in it go together.
void CheckHelp(Arguments arguments, std::size_t helpFile) {
  if (IsGiven(arguments, helpFile) != IsGiven(arguments, helpFile + 1)) RaiseInvalidCall();
  if (!IsGiven(arguments, helpFile)) return;
  AsText(arguments[helpFile]);
  AsLong(arguments[helpFile + 1]);
}

// --- people

// MsgBox(prompt, buttons, title, helpfile, context)
Variant MsgBox(Context& context, Arguments arguments) {
  const std::string prompt = Utf8(arguments[0]);
  const std::int32_t buttons = LongOr(arguments, 1, 0);
  const std::string title = Utf8Or(arguments, 2, kDefaultTitle);
  CheckHelp(arguments, 3);
  return Variant::FromInteger(static_cast<std::int16_t>(context.host.ShowMessage(prompt, buttons, title)));
}

// InputBox(prompt, title, default, xpos, ypos, helpfile, context). Giving up is Empty, which is also what
// the host's empty answer is taken for: scripts that ask whether somebody gave up test with IsEmpty.
Variant InputBox(Context& context, Arguments arguments) {
  const std::string prompt = Utf8(arguments[0]);
  const std::string title = Utf8Or(arguments, 1, kDefaultTitle);
  const std::string defaultText = Utf8Or(arguments, 2, "");
  for (const std::size_t place : {3, 4}) LongOr(arguments, place, 0);
  CheckHelp(arguments, 5);
  const std::string answer = context.host.AskForText(prompt, title, defaultText);
  return answer.empty() ? Variant() : Variant::FromText(answer);
}

// --- objects

// The host knows its own classes best; the engine's own come behind them.
Variant Create(Context& context, const std::string& progId) {
  Ref<Object> object = context.host.CreateObject(progId);
  if (!object) object = CreateStandardObject(progId, context);
  if (!object) RaiseRuntime(number::kCantCreateObject, progId);
  return Variant::FromObject(std::move(object));
}

// CreateObject(class, server): there are no other computers here.
Variant CreateObject(Context& context, Arguments arguments) {
  const std::string progId = Utf8(arguments[0]);
  if (!Utf8Or(arguments, 1, "").empty()) RaiseRuntime(kNoServer);
  return Create(context, progId);
}

// GetObject(path, class): an empty path asks for a new object, none for a running one.
Variant GetObject(Context& context, Arguments arguments) {
  const bool hasPath = IsGiven(arguments, 0);
  if (!hasPath && !IsGiven(arguments, 1)) RaiseInvalidCall();
  const std::string path = Utf8Or(arguments, 0, "");
  const std::string progId = Utf8Or(arguments, 1, "");
  if (hasPath && path.empty() && !progId.empty()) return Create(context, progId);
  Ref<Object> object = context.host.GetObject(path, progId);
  if (!object) RaiseRuntime(hasPath ? number::kNoSuchAutomationClass : number::kCantCreateObject);
  return Variant::FromObject(std::move(object));
}

// There is nothing that could show a picture.
Variant LoadPicture(Context&, Arguments arguments) {
  AsText(arguments[0]);
  RaiseRuntime(kInvalidPicture);
}

// --- the engine

Variant ScriptEngine(Context&, Arguments) { return Variant::FromText("VBScript"); }

template <std::int32_t kValue>
Variant Constant(Context&, Arguments) {
  return Variant::FromLong(kValue);
}

Variant GetLocale(Context& context, Arguments) { return Variant::FromLong(context.locale); }

// An id or a name; 0, nothing and an empty name mean the system's own. A name that is not known is error 5,
// an id error 447.
std::int32_t ReadLocale(Arguments arguments) {
  if (!IsGiven(arguments, 0)) return kUsEnglish;
  Variant& argument = Resolve(arguments[0]);
  if (argument.Type() == automation::VariantType::String && !ParseNumber16(argument.AsUtf16())) {
    if (argument.AsUtf16().empty()) return kUsEnglish;
    const std::optional<std::int32_t> named = LocaleOfName(argument.AsUtf16());
    if (!named) RaiseInvalidCall();
    return *named;
  }
  const std::int32_t id = AsLong(argument);
  if (id == 0) return kUsEnglish;
  const std::optional<std::int32_t> known = LocaleOfId(id);
  if (!known) RaiseRuntime(kLocaleNotSupported);
  return *known;
}

// Gives the locale that was set before. It is remembered only: the engine reads and prints US English.
Variant SetLocale(Context& context, Arguments arguments) {
  return Variant::FromLong(std::exchange(context.locale, ReadLocale(arguments)));
}

constexpr Intrinsic kIntrinsics[] = {
    {"CreateObject", 1, 2, CreateObject},
    {"GetLocale", 0, 0, GetLocale},
    {"GetObject", 1, 2, GetObject},
    {"GetUILanguage", 0, 0, Constant<kUsEnglish>},
    {"InputBox", 1, 7, InputBox},
    {"LoadPicture", 1, 1, LoadPicture},
    {"MsgBox", 1, 5, MsgBox},
    {"ScriptEngine", 0, 0, ScriptEngine},
    {"ScriptEngineBuildVersion", 0, 0, Constant<kBuildVersion>},
    {"ScriptEngineMajorVersion", 0, 0, Constant<kMajorVersion>},
    {"ScriptEngineMinorVersion", 0, 0, Constant<kMinorVersion>},
    {"SetLocale", 0, 1, SetLocale},
};

}  // namespace

std::span<const Intrinsic> HostIntrinsics() { return kIntrinsics; }

}  // namespace hearthmake::vbscript
