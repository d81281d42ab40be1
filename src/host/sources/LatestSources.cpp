#include "host/sources/LatestSources.hpp"

#include <fmt/format.h>

#include <memory>

#include "automation/Error.hpp"
#include "host/HostError.hpp"
#include "host/display/JsonDisplay.hpp"
#include "host/display/TextDisplay.hpp"
#include "host/run/FailureAdvice.hpp"
#include "host/run/SinkGuard.hpp"
#include "host/system/Interrupt.hpp"

namespace hearthmake::host {

namespace {

std::unique_ptr<RunDisplay> MakeDisplay(Session& session, Build& build, const RunPlan& plan, bool asJson) {
  if (asJson) return std::make_unique<JsonDisplay>(session.Out(), build, plan);
  return std::make_unique<TextDisplay>(session, build, plan);
}

// Tells the display of each file for as long as it lives.
class FileProgress {
 public:
  FileProgress(Composition& library, RunDisplay& display) : m_library(library) {
    library.OnSourceFile([&display](const SourceFile& file) { display.TellFile(file); });
  }
  FileProgress(const FileProgress&) = delete;
  FileProgress& operator=(const FileProgress&) = delete;
  ~FileProgress() { m_library.OnSourceFile({}); }

 private:
  Composition& m_library;
};

HostError Failure(Build& build, const automation::Error& error) {
  const bool isOfScript = error.Description().starts_with("Script Error: ");
  return HostError(
      error.Description(),
      isOfScript
          ? ScriptAdvice(build)
          : fmt::format("See where the sources come from with: hearthmake sourceprojects '{}'", build.Name()),
      ExitStatus::Failed);
}

}  // namespace

bool FollowSources(Session& session, Build& build, bool asJson,
                   const std::function<void(RunDisplay& display)>& work) {
  const RunPlan nothing;
  const auto display = MakeDisplay(session, build, nothing, asJson);
  const SinkGuard sink(build, *display);
  const FileProgress progress(session.Library(), *display);
  const InterruptibleRun interruptible;
  try {
    work(*display);
  } catch (const automation::Error& error) {
    display->EndSources();
    if (!Interrupt::IsRequested()) throw Failure(build, error);
  }
  display->EndSources();
  return !Interrupt::IsRequested();
}

bool TakeLatestSources(Session& session, Build& build, bool asJson) {
  const bool isThrough = FollowSources(
      session, build, asJson, [&](RunDisplay& /*display*/) { build.SSProjects().GetLatestFromSoursafe(); });
  if (!isThrough) session.Out().Note("Cancelled while getting the sources; nothing was compiled.");
  return isThrough;
}

}  // namespace hearthmake::host
