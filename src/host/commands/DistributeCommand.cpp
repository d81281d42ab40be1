#include <fmt/format.h>

#include "build/BuildEvents.hpp"
#include "host/builds/ChosenProjects.hpp"
#include "host/commands/Commands.hpp"

namespace hearthmake::host {

namespace {

// Keeps the last notice of a build while it lives.
class LastNotice final : public BuildEvents {
 public:
  explicit LastNotice(Build& build) : m_build(build) { build.AddSink(*this); }
  ~LastNotice() override { m_build.RemoveSink(*this); }

  void ScriptNotify(const std::string& strMessage, automation::Variant& /*Cancel*/,
                    std::int32_t /*Progress*/) override {
    m_text = strMessage;
  }
  const std::string& Text() const { return m_text; }

 private:
  Build& m_build;
  std::string m_text;
};

Outcome Distribute(Project& project, const LastNotice& notice) {
  const std::string folder = project.CopyPath();
  if (folder.empty()) return {"nothing to do, its CopyPath is empty"};
  if (!project.DistributeBinaryFile()) return {notice.Text(), true};
  const std::string library = project.RemoteServerFilePath();
  return {fmt::format("copied {}{} to {}", project.FullPath32(), library.empty() ? "" : " and " + library,
                      folder)};
}

}  // namespace

ExitStatus DistributeCommand(Session& session, const DistributeArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const LastNotice notice(*build);
  return DoForEach(session, ChosenProjects(*build, arguments.projects),
                   [&](Project& project) { return Distribute(project, notice); });
}

}  // namespace hearthmake::host
