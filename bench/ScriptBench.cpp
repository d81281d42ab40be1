// The scripts of a build against yardsticks measured in the same run; prints ratios and budgets.
//   script_bench TOOLS [SUITE]
// TOOLS is the folder of a release build, SUITE an existing suite to build with and without scripts.

#include <fmt/format.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "Program.hpp"
#include "Scratch.hpp"
#include "Suite.hpp"

namespace hearthmake::bench {
namespace {

constexpr int kRounds = 9;
constexpr int kTurns = 1'000'000;
constexpr double kPropertyBudget = 3.0;
constexpr double kRunBudget = 1.05;

void Report(const std::string& what, double ratio, double budget) {
  fmt::print("{:<62} {:>9.3f} x        budget {:g} x       {}\n", what, ratio, budget,
             ratio <= budget ? "within" : "OVER");
  std::fflush(stdout);
}

// Seconds of a script that does something in a loop of a procedure.
class LoopScripts {
 public:
  explicit LoopScripts(const std::string& tools) : m_command(tools + "/src/hearthmake") {}

  double Seconds(const std::string& name, const std::string& statement) const {
    const std::string script = m_scratch.Write(
        name, fmt::format("Function Constant\n  Constant = \"a name\"\nEnd Function\n"
                          "Sub Work(b)\n  Dim i, x\n  For i = 1 To {}\n    {}\n  Next\nEnd Sub\n"
                          "Dim build\nSet build = CreateObject(\"Hearthmake.Build\")\n"
                          "build.Name = \"a name\"\nWork build\n",
                          kTurns, statement));
    const ProgramRun run = RunProgram({m_command, "--data", m_scratch.Path("data"), "script", script}, {});
    if (run.status != 0) throw std::runtime_error(fmt::format("{} ended with {}", script, run.status));
    return run.seconds;
  }

 private:
  std::string m_command;
  Scratch m_scratch;
};

// The loop itself is taken off both.
void MeasureProperty(const std::string& tools) {
  const LoopScripts scripts(tools);
  std::vector<double> loop;
  std::vector<double> call;
  std::vector<double> get;
  for (int round = 0; round < kRounds; ++round) {
    loop.push_back(scripts.Seconds("loop.vbs", ""));
    call.push_back(scripts.Seconds("call.vbs", "x = Constant()"));
    get.push_back(scripts.Seconds("get.vbs", "x = b.Name"));
  }
  const auto nanoseconds = [&](const std::vector<double>& times) {
    return (Median(times) - Median(loop)) * 1e9 / kTurns;
  };
  fmt::print("  a procedure call {:.1f} ns, a property of an object {:.1f} ns\n", nanoseconds(call),
             nanoseconds(get));
  Report("a property of a build, against a call of a procedure", nanoseconds(get) / nanoseconds(call),
         kPropertyBudget);
}

void MeasureRun(const std::string& tools, const std::string& folder) {
  Suite suite(tools);
  suite.CopyFrom(folder);
  suite.StartAnew();
  suite.Scan();
  suite.MakeBinaries();
  suite.SettleFiles();
  const Scratch scratch;
  const std::string script = scratch.Write("event.vbs", "x = x + 1\r\n");
  for (int event = 0; event < 7; ++event)
    suite.Run({"scripts", "Suite", std::to_string(event), "--set", script});
  std::vector<double> with;
  std::vector<double> without;
  for (int round = 0; round < kRounds; ++round) {
    suite.Run({"settings", "RunScripts", "false"});
    without.push_back(suite.Run({"build", "Suite"}).seconds);
    suite.Run({"settings", "RunScripts", "true"});
    with.push_back(suite.Run({"build", "Suite"}).seconds);
  }
  fmt::print("  build with scripts {:.4f} s, without {:.4f} s\n", Median(with), Median(without));
  Report("build with a script at every event, against none", Median(with) / Median(without), kRunBudget);
}

}  // namespace
}  // namespace hearthmake::bench

int main(int argc, char** argv) {
  using namespace hearthmake::bench;
  if (argc < 2 || argc > 3) {
    fmt::print(stderr, "usage: script_bench TOOLS [SUITE]\n");
    return 2;
  }
  try {
    MeasureProperty(argv[1]);
    if (argc == 3) MeasureRun(argv[1], argv[2]);
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return 1;
  }
  return 0;
}
