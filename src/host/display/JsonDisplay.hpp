#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "build/Build.hpp"
#include "host/Console.hpp"
#include "host/run/RunDisplay.hpp"

namespace hearthmake::host {

// A run for programs: each event is one line of JSON on standard output, with the event's name and time
// (UTC) and what came with it.
class JsonDisplay final : public RunDisplay {
 public:
  JsonDisplay(const Console& console, Build& build, const RunPlan& plan);

  void Finish() override;
  void MTSEvent(const std::string& strInfo, bool& Cancel) override;
  void Error(const automation::Variant& strMessage) override;
  void BuildStart(bool bResume) override;
  void ScriptNotify(const std::string& strMessage, automation::Variant& Cancel,
                    std::int32_t Progress) override;

 private:
  void ShowGetting(SSProject& source) override;
  void ShowFile(const SourceFile& file) override;
  void ShowWillCompile(Project& project) override;
  void ShowCompiled(Project& project) override;
  void ShowFailed(Project* project, const std::string& message, bool isCompileError) override;
  void ShowCancelled(Project& project) override;
  void ShowComplete() override;

  void PrintSummary() const;
  void Print(const char* event, const nlohmann::ordered_json& details) const;

  const Console& m_console;
  Build& m_build;
  std::string m_buildName;
};

}  // namespace hearthmake::host
