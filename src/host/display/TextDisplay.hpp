#pragma once

#include <string>

#include "build/Build.hpp"
#include "host/Console.hpp"
#include "host/Session.hpp"
#include "host/run/RunDisplay.hpp"

namespace hearthmake::host {

// A run for people: a line that is drawn anew on a terminal, a line for each project elsewhere. Failures
// come at once, on standard error, with the compiler's own words and what to do about them.
class TextDisplay final : public RunDisplay {
 public:
  // Build and plan stay alive meanwhile.
  TextDisplay(Session& session, Build& build, const RunPlan& plan);

  void Tick() override;
  void EndSources() override { ClearLine(); }
  void Finish() override;
  void MTSEvent(const std::string& strInfo, bool& Cancel) override;
  void ScriptNotify(const std::string& strMessage, automation::Variant& Cancel,
                    std::int32_t Progress) override;
  void Error(const automation::Variant& strMessage) override;

 private:
  void ShowGetting(SSProject& source) override;
  void ShowFile(const SourceFile& file) override;
  void ShowWillCompile(Project& project) override;
  void ShowCompiled(Project& project) override;
  void ShowFailed(Project* project, const std::string& message, bool isCompileError) override;
  void ShowCancelled(Project& project) override;
  void ShowComplete() override {}

  void Draw();
  void DrawLine(const std::string& line);
  void ClearLine();
  void Notice(const std::string& text);
  std::string FailedText() const;
  std::string LeftOutText(const PlannedProject& failed) const;

  Session& m_session;
  const Console& m_console;
  Build& m_build;
  std::string m_buildName;
  std::string m_projectName;
  std::string m_line;  // drawn last
  long m_drawnSecond = -1;
  bool m_isDrawn = false;
};

// Seconds as a clock shows them: 0:07, 1:02:03
std::string ClockText(long seconds);

}  // namespace hearthmake::host
