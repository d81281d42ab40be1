#include "host/CommandLine.hpp"
#include "host/Interrupt.hpp"

int main(int argc, char** argv) {
  hearthmake::host::Interrupt::Install();
  return static_cast<int>(hearthmake::host::RunCommandLine(argc, argv));
}
