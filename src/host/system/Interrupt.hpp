#pragma once

#include <string>

namespace hearthmake::host {

// Ctrl-C, and the other signals that ask a process to end. What they do depends on what runs:
//
// - As a rule the process ends at once with the status of a cancelled command. What it stores is stored
//   whole or not at all, so that nothing is lost.
// - While an InterruptibleRun lives the first signal is only remembered, and wakes the wait for a child;
//   the second one kills the children and ends the process.
//
// Either way the folder for temporary files goes too.
class Interrupt {
 public:
  // Sets the signal handlers. A signal that the process was told to ignore stays ignored.
  static void Install();
  static bool IsRequested();
  // Called inside the signal that is remembered, so it may do next to nothing; null for none.
  static void OnRequest(void (*call)(void* context), void* context);
  // A folder that holds files only, to be removed when a signal ends the process.
  static void RemoveAtEnd(const std::string& folder);
};

class InterruptibleRun {
 public:
  InterruptibleRun();
  InterruptibleRun(const InterruptibleRun&) = delete;
  InterruptibleRun& operator=(const InterruptibleRun&) = delete;
  ~InterruptibleRun();
};

}  // namespace hearthmake::host
