#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/ProcessLauncher.hpp"
#include "platform/Shell.hpp"

namespace hearthmake::posix {

// What a component's command to register itself asks for.
struct SelfRegistration {
  std::string path;  // DOS path of the binary
  bool isRemoval = false;
};

// Starts programs for the library. Windows are Wine's business: their states are not passed on.
//
// Where no Wine is configured, nobody could run a component that registers itself (by regsvr32.exe, or an
// EXE by /RegServer): these commands go to the registrar instead. It is called before Start returns; like
// regsvr32.exe /S it keeps its failures to itself.
class PosixShell final : public platform::Shell {
 public:
  using Registrar = std::function<void(const SelfRegistration&)>;

  // Without registrar every command line is started.
  PosixShell(std::shared_ptr<platform::ProcessLauncher> launcher, Registrar registrar);

  void Start(std::string_view commandLine, platform::WindowState window) override;

 private:
  std::shared_ptr<platform::ProcessLauncher> m_launcher;
  Registrar m_registrar;
};

}  // namespace hearthmake::posix
