#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>

#include "automation/Text.hpp"
#include "deployment/COMApplications.hpp"
#include "deployment/MTSPackages.hpp"
#include "foundation/Settings.hpp"
#include "host/commands/Commands.hpp"
#include "host/display/JsonEvent.hpp"
#include "host/packages/Packages.hpp"
#include "host/run/SinkGuard.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;

// The words of the library in front of what went wrong.
constexpr std::string_view kError = "Error occured: ";

// Tells of a deployment as it goes, to people or to programs.
class DeployDisplay final : public BuildEvents {
 public:
  DeployDisplay(const Console& console, std::string buildName, std::string word, bool asJson)
      : m_console(console), m_buildName(std::move(buildName)), m_word(std::move(word)), m_asJson(asJson) {}

  void Start(std::size_t count) {
    m_count = count;
    if (m_asJson) Print("DeployStart", {{"build", m_buildName}, {"kind", m_word}, {"packages", count}});
  }
  void Finish(bool isDone) {
    const double seconds = std::chrono::duration<double>(Clock::now() - m_start).count();
    if (m_asJson) {
      Print(isDone ? "DeployComplete" : "DeployFailed", {{"seconds", RoundedSeconds(seconds)}});
    } else if (isDone) {
      m_console.Out(fmt::format("{} {}: {} deployed, {:.1f} s.\n", m_console.PaintOut(Colour::Green, "Done."),
                                Printable(m_buildName), Counted(m_count, m_word), seconds));
    } else {
      m_console.Err(fmt::format("{} {}. What was done before stays done.\n",
                                m_console.PaintErr(Colour::Red, "Deployment failed:"),
                                Printable(m_buildName)));
    }
  }

  void MTSEvent(const std::string& strInfo, bool& /*Cancel*/) override {
    const bool isError = strInfo.starts_with(kError);
    if (m_asJson) {
      Print("MTSEvent", {{"info", strInfo}, {"error", isError}});
    } else if (isError) {
      m_console.Err(fmt::format("{} {}\n", m_console.PaintErr(Colour::Red, "FAILED:"),
                                Printable(std::string_view(strInfo).substr(kError.size()))));
    } else {
      m_console.Out(Printable(strInfo) + "\n");
    }
  }
  void Error(const automation::Variant& strMessage) override {
    Tell("Error", automation::ToText(strMessage));
  }
  void ScriptNotify(const std::string& strMessage, automation::Variant& /*Cancel*/,
                    std::int32_t Progress) override {
    if (m_asJson) {
      Print("ScriptNotify", {{"message", strMessage}, {"progress", Progress}});
    } else {
      m_console.Out(Printable(strMessage) + "\n");
    }
  }

 private:
  using Clock = std::chrono::steady_clock;

  void Print(const char* event, const ordered_json& details) const { PrintEvent(m_console, event, details); }
  void Tell(const char* event, const std::string& message) const {
    if (m_asJson) {
      Print(event, {{"message", message}});
    } else {
      m_console.Out(Printable(message) + "\n");
    }
  }

  const Console& m_console;
  std::string m_buildName;
  std::string m_word;
  bool m_asJson;
  std::size_t m_count = 0;
  Clock::time_point m_start = Clock::now();
};

// Passes over what was not named; all when nothing was.
std::size_t Choose(PackageDefinitions& definitions, const std::vector<std::int32_t>& ids) {
  std::size_t count = 0;
  for (const auto& definition : definitions.All()) {
    const bool isMeant = ids.empty() || std::find(ids.begin(), ids.end(), definition->Id()) != ids.end();
    definition->SetSkip(!isMeant);
    count += isMeant ? 1 : 0;
  }
  return count;
}

std::vector<std::int32_t> Ids(Build& build, const std::vector<std::string>& names) {
  std::vector<std::int32_t> ids;
  for (const std::string& name : names) ids.push_back(FindPackage(build, name)->Id());
  return ids;
}

PackageDefinitions& Definitions(Build& build, bool ofMts) {
  if (ofMts) return build.MTSPackages();
  return build.COMApplications();
}

}  // namespace

ExitStatus DeployCommand(Session& session, const DeployArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  session.LibrarySettings();  // junk there is better told before anything runs
  PackageDefinitions& definitions = Definitions(*build, arguments.mts);
  if (definitions.Count() == 0)
    throw HostError(fmt::format("The build '{}' has no packages.", build->Name()),
                    fmt::format("Make one with: hearthmake packages '{}' add NAME", build->Name()));
  const std::size_t count = Choose(definitions, Ids(*build, arguments.packages));
  DeployDisplay display(session.Out(), build->Name(), arguments.mts ? "package" : "application",
                        arguments.json);
  const SinkGuard sink(*build, display);
  display.Start(count);
  const bool isDone = definitions.CreateAllPackages();
  EndReport(*build, isDone);
  display.Finish(isDone);
  return isDone ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace hearthmake::host
