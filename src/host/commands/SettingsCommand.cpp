#include <fmt/format.h>

#include "foundation/Settings.hpp"
#include "host/builds/Properties.hpp"
#include "host/commands/Commands.hpp"

namespace hearthmake::host {

namespace {

std::string LineOf(hearthmake::Settings& settings, const automation::Member& key) {
  return fmt::format("{} = {}\n", key.name, Printable(ValueText(key, settings.Get(key.name))));
}

ExitStatus LibrarySettings(Session& session, const SettingsArguments& arguments) {
  const automation::Interface& declaration = hearthmake::Settings::Describe();
  const auto settings = session.LibrarySettings();
  std::string text;
  if (arguments.key.empty()) {
    for (const automation::Member* key : ReadableProperties(declaration)) text += LineOf(*settings, *key);
  } else if (!arguments.hasValue) {
    const automation::Member& key = FindReadable(declaration, arguments.key);
    text = Printable(ValueText(key, settings->Get(key.name))) + "\n";
  } else {
    const automation::Member& key = FindSettable(declaration, arguments.key);
    settings->BeginEdit();
    settings->Let(key.name, {ParseValue(key, session.PropertyValue(key.name, arguments.value))});
    settings->ApplyEdit();
    text = LineOf(*settings, FindReadable(declaration, key.name));
  }
  session.Out().Out(text);
  return ExitStatus::Done;
}

ExitStatus HostSettingsOf(Session& session, const SettingsArguments& arguments) {
  HostSettings& settings = session.Settings();
  std::string text;
  if (arguments.key.empty()) {
    for (const auto& [key, value] : settings.Stored())
      text += fmt::format("{} = {}\n", key, Printable(value));
    if (text.empty()) text = "Nothing is set. There are:\n";
    if (settings.Stored().empty()) {
      for (const HostSettings::Key& key : HostSettings::Keys()) {
        text += fmt::format("  {:<16} {}\n", key.name, key.meaning);
      }
      if (HostSettings::ChoosesDrives()) text += "  D: and so on     folder of a drive\n";
    }
  } else if (!arguments.hasValue) {
    text = Printable(settings.StoredValue(settings.KnownKey(arguments.key))) + "\n";
  } else {
    settings.Store(arguments.key, arguments.value);
    const std::string key = settings.KnownKey(arguments.key);
    text = fmt::format("{} = {}\n", key, Printable(settings.StoredValue(key)));
  }
  session.Out().Out(text);
  return ExitStatus::Done;
}

}  // namespace

ExitStatus SettingsCommand(Session& session, const SettingsArguments& arguments) {
  return arguments.host ? HostSettingsOf(session, arguments) : LibrarySettings(session, arguments);
}

}  // namespace hearthmake::host
