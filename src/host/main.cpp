#include "adapters/jet/ReadingProcess.hpp"
#include "host/commandline/CommandLine.hpp"
#include "host/system/Interrupt.hpp"

int main(int argc, char** argv) {
  // The command starts itself anew to read a database of Jet.
  if (const auto status = hearthmake::jet::ServeReading(argc, argv)) return *status;
  hearthmake::host::Interrupt::Install();
  return static_cast<int>(hearthmake::host::RunCommandLine(argc, argv));
}
