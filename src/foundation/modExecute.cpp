#include "foundation/modExecute.hpp"

#include <chrono>

#include "automation/Error.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake::modExecute {

namespace {

using namespace std::chrono_literals;

// How long a wait for a child may keep the host's events waiting. The end of the child itself is seen
// at once.
constexpr auto kEventInterval = 50ms;

constexpr auto kMtsPause = 7000ms;

}  // namespace

void CmdExec(const std::string& strCommand) {
  const auto& ports = Ports();
  const auto child = ports.processes->Start(strCommand);
  if (!child) {
    automation::Raise(automation::BuildErrors::beNoProcessStarted, "modExecute.CmdExec",
                      "Failed to start the following process: " + strCommand);
  }
  bool ended = false;
  while (!ended) {
    ended = child->Wait(kEventInterval);
    ports.events->DeliverPending();
  }
}

std::string SystemFolder() {
  std::string folder = Ports().system->SystemFolder();
  if (!folder.empty() && folder.back() != '\\') folder.push_back('\\');
  return folder;
}

std::int32_t MajorVersion() { return Ports().system->MajorVersion(); }

void StopMTS() {
  CmdExec("net stop server /Y");
  CmdExec("mtxstop");
  CmdExec("net stop msdtc");
  Ports().clock->Sleep(kMtsPause);
}

}  // namespace hearthmake::modExecute
