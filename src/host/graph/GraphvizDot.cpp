#include "host/graph/GraphvizDot.hpp"

#include <fmt/format.h>

#include <array>
#include <chrono>

#include "automation/Error.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "host/Console.hpp"
#include "host/HostError.hpp"
#include "host/system/Interrupt.hpp"

namespace hearthmake::host {

namespace {

using namespace std::chrono_literals;

constexpr auto kTurn = 100ms;
// Of what dot says, as much as somebody reads.
constexpr std::size_t kMostWords = 2000;

[[noreturn]] void RefuseWithoutDot() {
  throw HostError(
      "There is no program 'dot', which draws the picture.",
      "Install Graphviz (on Debian: apt-get install graphviz), or write the text with -o FILE.dot");
}

// A child that has gone away tells why on its standard error.
void Hand(platform::PipedChild& dot, const std::string& text) {
  try {
    dot.input->Write(text);
  } catch (const automation::Error&) {
    // Told by the exit code.
  }
  dot.input.reset();
}

// Reads to the end, so that a talkative child never waits for us, and keeps the beginning.
std::string WordsOf(platform::PipedChild& dot) {
  std::string words;
  std::array<char, 4096> buffer{};
  while (true) {
    if (Interrupt::IsRequested()) dot.process->Terminate();
    const auto count = dot.error->Read(buffer.data(), buffer.size(), kTurn);
    if (!count) continue;
    if (*count == 0) return words;
    if (words.size() < kMostWords) words.append(buffer.data(), *count);
  }
}

}  // namespace

void DrawWithDot(const std::string& text, const std::string& format, const std::string& file) {
  const InterruptibleRun interruptible;
  // It reads the whole text before it writes anything: no pipe can fill while we write.
  platform::PipedChild dot =
      Ports().processes->StartPiped(fmt::format("dot -T{} -o {}", format, QuotePath(file)));
  if (!dot.process) RefuseWithoutDot();
  Hand(dot, text);
  const std::string words = WordsOf(dot);
  while (!dot.process->Wait(kTurn)) continue;
  if (Interrupt::IsRequested()) throw HostError("Cancelled.", "", ExitStatus::Cancelled);
  if (dot.process->ExitCode().value_or(0) != 0)
    throw HostError(fmt::format("Graphviz can't draw the picture {}: {}", file, Printable(words)), "",
                    ExitStatus::Failed);
}

}  // namespace hearthmake::host
