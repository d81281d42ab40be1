#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <iterator>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "foundation/Apartment.hpp"
#include "host/commands/Commands.hpp"
#include "host/scripting/ScriptText.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

struct Event {
  BuildScripts value;
  const char* name;  // of the member of Scripts, which is what people type
};

constexpr std::array<Event, 7> kEvents = {{
    {BuildScripts::BS_BEFORESOURCESAFE, "BeforeSourceSafe"},
    {BuildScripts::BS_BEFORECOMPILE, "BeforeComplie"},
    {BuildScripts::BS_BEFORE_PROJECT_COMPILE, "BeforeProjectComplie"},
    {BuildScripts::BS_AFTER_PROJECT_COMPILE, "AfterProjectCompile"},
    {BuildScripts::BS_BUILDFAILED, "BuildFailed"},
    {BuildScripts::BS_BUILDCOMPLETE, "CompileComplete"},
    {BuildScripts::BS_AFTERMTS, "AfterMTSpackage"},
}};

// By the name of the member, the name in messages ("Before Compile"), the enumeration's or the number.
const Event& FindEvent(const std::string& typed) {
  const auto& names = DescribeEnumeration(BuildScripts{}).members;
  for (const Event& event : kEvents) {
    const auto number = static_cast<std::size_t>(event.value);
    const std::string forms[] = {event.name, EventName(event.value), names[number].first,
                                 std::to_string(number)};
    for (const std::string& form : forms) {
      if (automation::EqualsIgnoreCaseAscii(form, typed)) return event;
    }
  }
  std::string known;
  for (const Event& event : kEvents) known += fmt::format("{}{}", known.empty() ? "" : ", ", event.name);
  throw HostError(fmt::format("There is no event {}.", Printable(typed)), "There are: " + known);
}

// Text on standard input is UTF-8 like all that comes from a terminal; a file is what a script file is.
std::string ReadScriptText(Session& session, const std::string& typed) {
  if (typed != "-") return automation::Utf16ToUtf8(DecodeScript(Ports().files->Read(session.DosPath(typed))));
  std::string bytes(std::istreambuf_iterator<char>(std::cin), {});
  return HasMark(bytes) ? automation::Utf16ToUtf8(DecodeScript(bytes)) : bytes;
}

std::size_t CountLines(const std::string& text) {
  const auto ends = std::count(text.begin(), text.end(), '\n');
  return static_cast<std::size_t>(ends) + (text.empty() || text.ends_with('\n') ? 0 : 1);
}

ExitStatus List(Session& session, Scripts& scripts) {
  std::string text;
  for (const Event& event : kEvents) {
    const std::size_t lines = CountLines(scripts.Text(event.value));
    text += fmt::format("{}  {:<20}  {:<22}  {}\n", static_cast<int>(event.value), event.name,
                        EventName(event.value), lines == 0 ? "-" : Counted(lines, "line"));
  }
  session.Out().Out(text);
  return ExitStatus::Done;
}

void Store(Session& session, Scripts& scripts, const Event& event, const std::string& text) {
  scripts.SetText(event.value, text);
  scripts.Save();
  session.Out().Out(fmt::format("{}: {}\n", event.name, Counted(CountLines(text), "line")));
}

// Tells on standard error what does not compile.
bool IsSound(Session& session, Scripts& scripts, const Event& event) {
  try {
    scripts.Check(event.value);
    session.Out().Out(fmt::format("{}: sound\n", event.name));
    return true;
  } catch (const automation::Error& error) {
    const platform::ScriptFault fault = scripts.Fault();
    const bool isOfText = fault.line > 0;
    const std::string place = isOfText ? fmt::format("({}, {})", fault.line, fault.column) : "";
    session.Out().Err(fmt::format("{}{}: {}\n", event.name, place, Printable(error.Description())));
    if (isOfText) session.Out().Err(fmt::format("    {}\n", Printable(fault.text)));
    return false;
  }
}

ExitStatus Check(Session& session, Scripts& scripts, const std::string& only) {
  bool areSound = true;
  for (const Event& event : kEvents) {
    const bool isWanted = only.empty() ? !scripts.Text(event.value).empty() : &event == &FindEvent(only);
    if (isWanted && !IsSound(session, scripts, event)) areSound = false;
  }
  return areSound ? ExitStatus::Done : ExitStatus::WrongInput;
}

}  // namespace

ExitStatus ScriptsCommand(Session& session, const ScriptsArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  Scripts& scripts = build->Scripts();
  const bool changes = arguments.clear || !arguments.setFrom.empty();
  if (changes && arguments.event.empty())
    throw HostError("Which of the seven scripts?", "hearthmake scripts BUILD lists them.");
  if (changes)
    Store(session, scripts, FindEvent(arguments.event),
          arguments.clear ? "" : ReadScriptText(session, arguments.setFrom));
  if (arguments.check) {
    const ExitStatus status = Check(session, scripts, arguments.event);
    build->Kill();
    return status;
  }
  if (changes) return ExitStatus::Done;
  if (arguments.event.empty()) return List(session, scripts);
  session.Out().Out(scripts.Text(FindEvent(arguments.event).value));
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
