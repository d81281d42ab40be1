// Projects: the build run.

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "build/Projects.hpp"
#include "foundation/modExecute.hpp"

namespace hearthmake {

namespace {

// The first Windows with COM+.
constexpr std::int32_t kFirstWithComPlus = 5;

}  // namespace

bool Projects::Build(bool bResume) {
  const automation::Ref<Projects> self(this);
  automation::Ref<Project> current;
  try {
    Run(bResume, current);
    return true;
  } catch (const automation::Error& error) {
    const bool isCompileError =
        error.Number() == static_cast<std::int32_t>(automation::BuildErrors::be_FailToCompile);
    try {
      ParentBuild().BuildFailed(current.Get(), error.Description(), isCompileError);
    } catch (const automation::Error&) {
      // A handler of the failure that fails has heard of it; no error leaves a run.
      return false;
    }
    return false;
  }
}

void Projects::Run(bool bResume, automation::Ref<Project>& current) {
  hearthmake::Build& build = ParentBuild();
  build.RaiseBuildStart(bResume);
  if (!bResume) StartFreshRun();
  for (const auto& project : All()) {
    if (!project->CompileMe() || project->CompiledOK()) continue;
    current = project;
    if (!CompileProject(*project)) return;  // cancelled by the host
  }
  current = nullptr;
  build.RunScript(BuildScripts::BS_BUILDCOMPLETE, nullptr);
  build.RaiseBuildComplete();
}

void Projects::StartFreshRun() {
  hearthmake::Build& build = ParentBuild();
  build.RunScript(BuildScripts::BS_BEFORECOMPILE, nullptr);
  for (const auto& project : All()) project->SetCompiledOK(false);
  ShutDownComponentServices();
  build.ReportAction(nullptr, "[Compiling projects]\r\n");
}

// Running component services hold the binaries open that the compiler is to replace.
void Projects::ShutDownComponentServices() {
  hearthmake::Build& build = ParentBuild();
  if (modExecute::MajorVersion() >= kFirstWithComPlus) {
    build.COMApplications().ShutDownAll();
    return;
  }
  if (build.MTSPackages().Count() == 0) return;
  bool cancel = false;
  build.RaiseMTSEvent("Shutting down MTS", cancel);
  modExecute::StopMTS();
}

bool Projects::CompileProject(Project& project) {
  hearthmake::Build& build = ParentBuild();
  bool bCancel = false;
  build.WillCompile(project, bCancel);
  if (bCancel) {
    build.RaiseBuildCancled(project);
    return false;
  }
  project.SetCompiledOK(project.Compile());
  if (!project.CompiledOK()) return true;
  build.ProjectCompiled(project);
  project.DistributeBinaryFile();
  return true;
}

}  // namespace hearthmake
