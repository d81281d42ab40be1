// Whole runs of the command against yardsticks measured in the same run; prints ratios and budgets.
//   suite_bench TOOLS [SUITE] [--large]
// TOOLS is the folder of a release build, SUITE an existing suite (the cairo suite is what the budgets
// are for); --large adds generated suites of 3,500 and 35,000 projects.

#include <fmt/format.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <vector>

#include "Suite.hpp"

namespace hearthmake::bench {
namespace {

constexpr int kRounds = 9;

void Report(const std::string& what, double value, const std::string& unit, std::optional<double> budget) {
  const std::string verdict = !budget ? "" : value <= *budget ? "within" : "OVER";
  const std::string limit = budget ? fmt::format("budget {:g} {}", *budget, unit) : "";
  fmt::print("{:<62} {:>9.3f} {:<8} {:<18} {}\n", what, value, unit, limit, verdict);
  std::fflush(stdout);
}

// Medians of interleaved rounds, so that a slow minute of the machine slows all alike.
struct RunTimes {
  double build = 0;
  double loop = 0;
  double ninja = 0;
};

RunTimes MeasureRuns(const Suite& suite, int rounds) {
  const auto commands = suite.CompilerCommands();
  const auto variables = suite.ChildVariables();
  const std::string ninja = suite.WriteNinjaFile();
  std::vector<double> build;
  std::vector<double> loop;
  std::vector<double> others;
  for (int round = 0; round < rounds; ++round) {
    build.push_back(suite.Run({"build", "Suite"}).seconds);
    suite.ClearLogs();
    loop.push_back(SpawnLoop(commands, variables));
    suite.ClearLogs();
    others.push_back(RunProgram({"ninja", "-j1", "-f", ninja}, variables).seconds);
  }
  fmt::print("  {} commands: build {:.4f} s, bare loop {:.4f} s, ninja {:.4f} s\n", commands.size(),
             Median(build), Median(loop), Median(others));
  return {Median(build), Median(loop), Median(others)};
}

double MeasureRewriting(const Suite& suite) {
  std::vector<double> seconds;
  for (int round = 0; round < kRounds; ++round) {
    suite.SpoilFiles(round);
    sync();
    seconds.push_back(suite.Run({"build", "Suite"}).seconds);
  }
  return Median(seconds);
}

double MeasureScan(Suite& suite) {
  std::vector<double> seconds;
  for (int round = 0; round < kRounds; ++round) {
    suite.StartAnew();
    seconds.push_back(suite.Scan().seconds);
  }
  return Median(seconds) * 1000 / suite.ProjectFileCount();
}

void MeasureSuite(const std::string& tools, const std::string& folder) {
  Suite suite(tools);
  suite.CopyFrom(folder);
  Report("scan, a project file", MeasureScan(suite), "ms", 0.5);
  suite.MakeBinaries();
  suite.SettleFiles();
  const RunTimes times = MeasureRuns(suite, kRounds);
  Report("build with nothing to change, against the bare loop", times.build / times.loop, "x", 1.15);
  Report("build with nothing to change, against ninja -j1", times.build / times.ninja, "x", 1.0);
  Report("build with every project file rewritten, against the loop", MeasureRewriting(suite) / times.loop,
         "x", 2.0);
}

struct CostPerProject {
  double scan = 0;
  double build = 0;
  double overhead = 0;  // beyond the bare loop
};

CostPerProject MeasureGenerated(const std::string& tools, int count) {
  Suite suite(tools);
  suite.Generate(count);
  suite.StartAnew();
  const ProgramRun scan = suite.Scan();
  suite.SettleFiles();
  const ProgramRun load = suite.Run({"show", "Suite"});
  const RunTimes times = MeasureRuns(suite, count > 10000 ? 1 : 3);
  const double projects = count;
  const CostPerProject cost = {scan.seconds * 1000 / projects, times.build * 1000 / projects,
                               (times.build - times.loop) * 1000 / projects};
  fmt::print("  {} projects: scan {:.3f} ms, build {:.3f} ms, beyond the loop {:.3f} ms a project\n", count,
             cost.scan, cost.build, cost.overhead);
  Report(fmt::format("memory, {} projects loaded", count), static_cast<double>(load.peakKilobytes) / 1024,
         "MB", count > 10000 ? std::optional<double>(300) : std::nullopt);
  Report(fmt::format("memory, {} projects scanned", count), static_cast<double>(scan.peakKilobytes) / 1024,
         "MB", std::nullopt);
  return cost;
}

void MeasureGrowth(const std::string& tools, bool isLarge) {
  const CostPerProject small = MeasureGenerated(tools, 350);
  std::vector<int> counts = {3500};
  if (isLarge) counts.push_back(35000);
  for (const int count : counts) {
    const CostPerProject large = MeasureGenerated(tools, count);
    Report(fmt::format("scan, cost a project at {} against 350", count), large.scan / small.scan, "x", 1.3);
    Report(fmt::format("build, cost a project at {} against 350", count), large.build / small.build, "x",
           1.3);
  }
}

}  // namespace
}  // namespace hearthmake::bench

int main(int argc, char** argv) {
  using namespace hearthmake::bench;
  std::vector<std::string> arguments(argv + 1, argv + argc);
  const bool isLarge = std::erase(arguments, "--large") > 0;
  if (arguments.empty()) {
    fmt::print(stderr, "usage: suite_bench TOOLS [SUITE] [--large]\n");
    return 2;
  }
  try {
    if (arguments.size() > 1) MeasureSuite(arguments[0], arguments[1]);
    MeasureGrowth(arguments[0], isLarge);
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return 1;
  }
  return 0;
}
