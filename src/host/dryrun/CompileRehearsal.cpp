#include "host/dryrun/CompileRehearsal.hpp"

#include <memory>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/clFile.hpp"
#include "host/Session.hpp"
#include "host/builds/ProjectGraph.hpp"
#include "host/dryrun/OverlayFiles.hpp"
#include "host/run/SinkGuard.hpp"

namespace hearthmake::host {

namespace {

// What the library writes for the identity of a binary that is not there yet, and what people read instead.
constexpr const char* kUnknownId = "{NOT KNOWN YET}";
constexpr std::string_view kUnknownIdentity = "{NOT KNOWN YET}#0.0#";
constexpr std::string_view kUnknownText = "{not known yet}#?#";

// Type libraries as they will be when the compiler has been through: the binary of a project that comes
// before may be missing or unreadable now.
class FutureTypeLibs final : public platform::TypeLibReader {
 public:
  explicit FutureTypeLibs(std::shared_ptr<platform::TypeLibReader> present) : m_present(std::move(present)) {}

  platform::TypeLibInfo Read(std::string_view path) override {
    try {
      return m_present->Read(path);
    } catch (const automation::Error&) {
      if (!m_expected.contains(automation::Lower(path))) throw;
    }
    platform::TypeLibInfo unknown;
    unknown.guid = kUnknownId;
    return unknown;
  }
  std::vector<platform::TypeDescription> ReadTypes(std::string_view path) override {
    return m_present->ReadTypes(path);
  }

  void Expect(std::string_view path) { m_expected.insert(automation::Lower(path)); }
  bool IsKnown(const std::string& path) {
    try {
      m_present->Read(path);
      return true;
    } catch (const automation::Error&) {
      return false;
    }
  }

 private:
  std::shared_ptr<platform::TypeLibReader> m_present;
  std::unordered_set<std::string> m_expected;
};

// Starts nothing, and knows whether it was asked to.
class NoLauncher final : public platform::ProcessLauncher {
 public:
  std::unique_ptr<platform::ChildProcess> Start(std::string_view /*commandLine*/) override {
    m_wasAsked = true;
    return nullptr;
  }
  platform::PipedChild StartPiped(std::string_view commandLine) override {
    return {Start(commandLine), nullptr, nullptr, nullptr};
  }
  bool WasAsked() { return std::exchange(m_wasAsked, false); }

 private:
  bool m_wasAsked = false;
};

// The machine, but for the folder for temporary files, which is made when it is first asked for.
class NoTemporaryFolder final : public platform::SystemInfo {
 public:
  explicit NoTemporaryFolder(std::shared_ptr<platform::SystemInfo> machine) : m_machine(std::move(machine)) {}

  std::string TemporaryFolder() override { return SystemFolder() + "\\"; }
  std::string SystemFolder() override { return m_machine->SystemFolder(); }
  std::string ComponentFolder() override { return m_machine->ComponentFolder(); }
  std::int32_t MajorVersion() override { return m_machine->MajorVersion(); }
  std::optional<std::string> EnvironmentVariable(std::string_view name) override {
    return m_machine->EnvironmentVariable(name);
  }
  std::vector<std::string> Environment() override { return m_machine->Environment(); }
  void SetEnvironmentVariable(std::string_view /*name*/,
                              const std::optional<std::string>& /*value*/) override {}
  std::string ComputerName() override { return m_machine->ComputerName(); }
  std::string UserName() override { return m_machine->UserName(); }

 private:
  std::shared_ptr<platform::SystemInfo> m_machine;
};

// Hears what the library has to say of a project.
class Notices final : public BuildEvents {
 public:
  void ScriptNotify(const std::string& strMessage, automation::Variant& /*Cancel*/,
                    std::int32_t /*Progress*/) override {
    m_texts.push_back(strMessage);
  }
  std::vector<std::string> Take() { return std::exchange(m_texts, {}); }

 private:
  std::vector<std::string> m_texts;
};

class Rehearsal {
 public:
  Rehearsal(Build& build, const RunPlan& plan)
      : m_plan(plan),
        m_projects(AllProjects(build)),
        m_graph(m_projects),
        m_files(std::make_shared<OverlayFiles>(Ports().files)),
        m_libraries(std::make_shared<FutureTypeLibs>(Ports().typeLibs)),
        m_launcher(std::make_shared<NoLauncher>()),
        m_sink(build, m_notices),
        m_apartment(OtherPorts()) {}

  void Run(const std::function<void(const RehearsedCompile& compile)>& tell) {
    for (std::size_t i = 0; i < m_projects.size(); ++i) {
      if (!m_plan.Projects()[i].Runs()) continue;
      tell(Try(i));
      if (const auto binary = BinaryOf(*m_projects[i])) m_libraries->Expect(*binary);
    }
  }

 private:
  platform::Platform OtherPorts() const {
    platform::Platform ports = Ports();
    ports.system = std::make_shared<NoTemporaryFolder>(ports.system);
    ports.files = m_files;
    ports.typeLibs = m_libraries;
    ports.processes = m_launcher;
    return ports;
  }

  static std::optional<std::string> BinaryOf(Project& project) {
    try {
      return project.ISActiveX() ? std::optional<std::string>(project.FullPath32()) : std::nullopt;
    } catch (const automation::Error&) {
      return std::nullopt;
    }
  }

  static std::string ContentOf(const std::string& path) {
    try {
      return clFile::ReadText(path);
    } catch (const automation::Error&) {
      return {};  // the compile itself tells why
    }
  }

  RehearsedCompile Try(std::size_t position) {
    Project& project = *m_projects[position];
    RehearsedCompile compile;
    compile.planned = &m_plan.Projects()[position];
    compile.path = project.ProjectPath();
    NoteIdentities(position, compile);
    compile.before = ContentOf(compile.path);
    try {
      project.Compile();
    } catch (const automation::Error& error) {
      if (!m_launcher->WasAsked()) compile.problem = error.Description();
    }
    compile.after = automation::ReplaceAll(ContentOf(compile.path), kUnknownIdentity, kUnknownText);
    compile.notices = m_notices.Take();
    return compile;
  }

  void NoteIdentities(std::size_t position, RehearsedCompile& compile) const {
    for (const std::size_t target : m_graph.Targets(position)) {
      const PlannedProject& planned = m_plan.Projects()[target];
      const auto binary = BinaryOf(*m_projects[target]);
      if (!planned.Runs() || !binary) continue;
      (m_libraries->IsKnown(*binary) ? compile.mayChange : compile.unknown).push_back(planned.name);
    }
  }

  const RunPlan& m_plan;
  ProjectList m_projects;
  ProjectGraph m_graph;
  std::shared_ptr<OverlayFiles> m_files;
  std::shared_ptr<FutureTypeLibs> m_libraries;
  std::shared_ptr<NoLauncher> m_launcher;
  Notices m_notices;
  SinkGuard m_sink;
  Apartment m_apartment;  // the last: from here on these ports are the thread's
};

}  // namespace

void RehearseCompiles(Build& build, const RunPlan& plan,
                      const std::function<void(const RehearsedCompile& compile)>& tell) {
  Rehearsal(build, plan).Run(tell);
}

}  // namespace hearthmake::host
