#pragma once

#include <memory>
#include <span>
#include <string>

#include "automation/Events.hpp"
#include "build/BuildEvents.hpp"

namespace hearthmake {

// Brings the events of a build to a listener that hears them by name: a script with procedures such as
// Build_WillCompile. Arguments go by reference, but for ScriptNotify's message and progress.
class BuildConnection final : public BuildEvents {
 public:
  explicit BuildConnection(std::shared_ptr<automation::EventSink> sink) : m_sink(std::move(sink)) {}

  void WillCompile(Project& objProject, bool& bCancel) override;
  void BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) override;
  void BuildCancled(Project& objProject) override;
  void GettingLatestVersion(SSProject& objSSProject, bool& bCancel) override;
  void MTSEvent(const std::string& strInfo, bool& Cancel) override;
  void ProjectAdded(Project& NewProject) override;
  void BuildComplete() override;
  void Error(const automation::Variant& strMessage) override;
  void ProjectCompiled(Project& objProject) override;
  void BuildStart(bool bResume) override;
  void ScriptNotify(const std::string& strMessage, automation::Variant& Cancel,
                    std::int32_t Progress) override;

 private:
  void Raise(const char* event, std::span<automation::Variant> values);
  bool RaiseWithFlag(const char* event, automation::Variant about, bool flag);

  std::shared_ptr<automation::EventSink> m_sink;
};

}  // namespace hearthmake
