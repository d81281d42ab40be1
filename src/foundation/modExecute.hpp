#pragma once

#include <cstdint>
#include <string>

// Synchronous child processes, and what the system says of itself.
namespace hearthmake::modExecute {

// Runs a command line as a hidden child process, without a shell, and returns when it has ended; the
// host's events are delivered meanwhile. There is no time limit, and the exit status is not looked at.
// A program that can't be started is beNoProcessStarted, source "modExecute.CmdExec", "Failed to start
// the following process: " and the command line.
void CmdExec(const std::string& strCommand);

// The system folder, with a final backslash.
std::string SystemFolder();

// Below 5: MTS; from 5 on: COM+.
std::int32_t MajorVersion();

// Stops MTS through its own commands and gives it 7 s to let go of its files.
void StopMTS();

}  // namespace hearthmake::modExecute
