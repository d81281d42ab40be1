#pragma once

#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/posix/ChildEnvironment.hpp"
#include "adapters/posix/ChildTable.hpp"
#include "adapters/posix/DriveMap.hpp"
#include "adapters/posix/FileDescriptor.hpp"
#include "adapters/posix/ProgramFinder.hpp"
#include "platform/ProcessLauncher.hpp"

namespace hearthmake::posix {

struct ProcessLauncherOptions {
  // The Windows system folder as a DOS path, one of the places where bare names are looked for.
  std::string systemFolder;
  // What runs Windows programs: a POSIX path, or a name on PATH.
  std::string wine = "wine";
  // POSIX path of the Wine prefix; empty leaves the choice to Wine.
  std::string winePrefix;
  // Variables that children get besides those of this process.
  std::vector<std::pair<std::string, std::string>> environment;
  // Leaves standard output and error to children, instead of giving them /dev/null.
  bool keepOutput = false;
  // How long a child that is asked to end may take before it is killed.
  std::chrono::milliseconds grace{2000};
};

// Starts programs by Windows command line, without a shell: ELF images and scripts directly, PE images
// through Wine, which puts the command line together again from the arguments (quotes that the
// arguments do not need are not kept by it). Other files are not started.
//
// A child leads its own process group, reads from /dev/null, has default signal handling and finds
// the drives in HEARTHMAKE_DRIVES. Children that are running when the launcher goes run on.
//
// One thread starts; TerminateRunning may be called from another.
class PosixProcessLauncher : public platform::ProcessLauncher {
 public:
  explicit PosixProcessLauncher(const DriveMap& drives, ProcessLauncherOptions options = {});

  std::unique_ptr<platform::ChildProcess> Start(std::string_view commandLine) override;
  platform::PipedChild StartPiped(std::string_view commandLine) override;

  // Ends every child that is running now, with what it started, also those whose ChildProcess is gone.
  // Takes up to the grace of the options; not for use in a signal handler.
  void TerminateRunning();

 private:
  std::unique_ptr<platform::ChildProcess> Start(std::string_view commandLine,
                                                const std::array<int, 3>& streams);
  // 0 when it could not be started.
  pid_t Start(const std::string& path, std::vector<std::string>& arguments,
              const std::array<int, 3>& streams);
  const std::string& Wine();

  ProcessLauncherOptions m_options;
  ProgramFinder m_finder;
  ChildEnvironment m_environment;
  std::shared_ptr<ChildTable> m_children;
  std::string m_wine;  // found when first needed
  FileDescriptor m_null;
  std::array<int, 3> m_streams;  // of a child that gets no pipes
};

}  // namespace hearthmake::posix
