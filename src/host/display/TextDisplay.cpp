#include "host/display/TextDisplay.hpp"

#include <fmt/format.h>

#include "automation/Text.hpp"
#include "automation/Variant.hpp"
#include "host/run/CompilerLog.hpp"
#include "host/run/FailureAdvice.hpp"
#include "host/text/Numbers.hpp"
#include "project/Project.hpp"
#include "sourcecontrol/SSProject.hpp"

namespace hearthmake::host {

namespace {

std::string NamesOf(const std::vector<const PlannedProject*>& projects) {
  std::string text;
  for (const PlannedProject* planned : projects)
    text += (text.empty() ? "" : ", ") + Printable(planned->name);
  return text;
}

}  // namespace

std::string ClockText(long seconds) {
  const long hours = seconds / 3600;
  const long minutes = seconds / 60 % 60;
  if (hours > 0) return fmt::format("{}:{:02}:{:02}", hours, minutes, seconds % 60);
  return fmt::format("{}:{:02}", minutes, seconds % 60);
}

TextDisplay::TextDisplay(Session& session, Build& build, const RunPlan& plan)
    : RunDisplay(plan),
      m_session(session),
      m_console(session.Out()),
      m_build(build),
      m_buildName(build.Name()) {}

void TextDisplay::Tick() {
  if (m_isDrawn && m_drawnSecond != static_cast<long>(Seconds())) Draw();
}

void TextDisplay::Draw() {
  m_drawnSecond = static_cast<long>(Seconds());
  DrawLine(fmt::format("[{}/{}] {} Compiling {}", Current(), Total(), ClockText(m_drawnSecond),
                       Printable(m_projectName)));
}

void TextDisplay::DrawLine(const std::string& line) {
  m_line = line;
  // The last column stays free: some terminals go to the next line when it is filled.
  const std::size_t width = m_console.Width();
  const std::string_view fitting = automation::Left(line, width > 1 ? width - 1 : 1);
  m_console.Out(fmt::format("\r{}\x1b[K", fitting));
  m_isDrawn = true;
}

void TextDisplay::ClearLine() {
  if (m_isDrawn) m_console.Out("\r\x1b[K");
  m_isDrawn = false;
}

void TextDisplay::ShowGetting(SSProject& source) {
  const std::string folder = source.WorkingFolder();
  ClearLine();
  Notice(fmt::format("Getting {}{}", source.Project(),
                     folder.empty() ? "" : " into " + m_session.PosixPath(folder)));
}

void TextDisplay::ShowFile(const SourceFile& file) {
  if (file.state == SourceFileState::Skipped) {
    Notice(fmt::format("  {} was left as it is: the local file is writable and different", file.spec));
  } else if (m_console.CanRedraw()) {
    DrawLine(fmt::format("[{}/{}] {}", file.number, file.count, Printable(file.spec)));
  } else if (file.state == SourceFileState::Got) {
    m_console.Out(fmt::format("  {}\n", Printable(file.spec)));
  }
}

void TextDisplay::ShowWillCompile(Project& project) {
  m_projectName = project.Name();
  if (m_console.CanRedraw()) {
    Draw();
  } else {
    m_console.Out(fmt::format("[{}/{}] Compiling {}\n", Current(), Total(), Printable(m_projectName)));
  }
}

void TextDisplay::ShowCompiled(Project& /*project*/) {}

void TextDisplay::ShowFailed(Project* project, const std::string& message, bool /*isCompileError*/) {
  ClearLine();
  m_projectName = project == nullptr ? "" : project->Name();
  if (Result() == RunResult::Cancelled) return;  // the compiler did not fail, it was ended
  const std::string where = project == nullptr ? m_buildName
                                               : fmt::format("{} ({})", project->Name(),
                                                             m_session.PosixPath(project->ProjectPath()));
  m_console.Err(fmt::format("{} {}\n{}\n", m_console.PaintErr(Colour::Red, "FAILED:"), Printable(where),
                            Printable(CompilerWords(message))));
  const std::string advice = FailureAdvice(m_session, m_build, project, message);
  if (!advice.empty()) m_console.Err(advice + "\n");
  const PlannedProject* failed = project == nullptr ? nullptr : Plan().Find(project->Id());
  if (failed != nullptr) m_console.Err(LeftOutText(*failed));
}

std::string TextDisplay::LeftOutText(const PlannedProject& failed) const {
  const auto leftOut = LeftOutBecauseOf(failed.id);
  if (leftOut.empty()) return {};
  return fmt::format("Left out because of {}: {}\n", Printable(failed.name), NamesOf(leftOut));
}

// Where the run stopped; of one that went on behind failures, which there were and what they kept it from.
std::string TextDisplay::FailedText() const {
  const std::string counts =
      fmt::format("{} of {} compiled, {:.1f} s", Compiled(), Counted(Total(), "project"), Seconds());
  if (!Plan().KeepsGoing()) {
    return fmt::format("{}{}, {}.\n", m_buildName,
                       m_projectName.empty() ? "" : " at " + Printable(m_projectName), counts);
  }
  std::string text = fmt::format("{}, {}.\n", m_buildName, counts);
  if (!FailedProjects().empty()) text += fmt::format("Failed: {}\n", NamesOf(FailedProjects()));
  for (const PlannedProject* failed : FailedProjects()) text += LeftOutText(*failed);
  return text;
}

void TextDisplay::ShowCancelled(Project& /*project*/) { ClearLine(); }

void TextDisplay::Notice(const std::string& text) {
  const bool wasDrawn = m_isDrawn;
  ClearLine();
  m_console.Out(Printable(text) + "\n");
  if (wasDrawn) DrawLine(m_line);
}

void TextDisplay::MTSEvent(const std::string& strInfo, bool& /*Cancel*/) { Notice(strInfo); }

void TextDisplay::ScriptNotify(const std::string& strMessage, automation::Variant& /*Cancel*/,
                               std::int32_t /*Progress*/) {
  Notice(strMessage);
}

// Script errors that the run ignores.
void TextDisplay::Error(const automation::Variant& strMessage) {
  const std::string advice = ScriptAdvice(m_build);
  Notice(automation::ToText(strMessage) + (advice.empty() ? "" : "\n" + advice));
}

void TextDisplay::Finish() {
  ClearLine();
  const std::string counts =
      fmt::format("{} of {} compiled, {:.1f} s", Compiled(), Counted(Total(), "project"), Seconds());
  const std::string resume = fmt::format("Go on with: hearthmake build '{}' --resume\n", m_buildName);
  switch (Result()) {
    case RunResult::Complete:
      m_console.Out(
          fmt::format("{} {}: {}.\n", m_console.PaintOut(Colour::Green, "Done."), m_buildName, counts));
      return;
    case RunResult::Failed:
      m_console.Err(
          fmt::format("{} {}{}", m_console.PaintErr(Colour::Red, "Build failed:"), FailedText(), resume));
      return;
    case RunResult::Cancelled:
      m_console.Err(fmt::format("{} {}: {}.\n{}", m_console.PaintErr(Colour::Yellow, "Cancelled."),
                                m_buildName, counts, resume));
  }
}

}  // namespace hearthmake::host
