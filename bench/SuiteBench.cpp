// Whole runs of the command against yardsticks measured in the same run; prints ratios and budgets.
//   suite_bench TOOLS [SUITE] [--large] [--only=PART] [--rounds=N]
// TOOLS is the folder of a release build, SUITE an existing suite (the cairo suite is what the budgets
// are for); --large adds generated suites of 3,500 and 35,000 projects. PART is one of scan, run,
// rewrite and changed (of SUITE), growth and growth-scan (of the generated suites).

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Suite.hpp"

namespace hearthmake::bench {
namespace {

struct Options {
  std::string tools;
  std::string suite;
  bool isLarge = false;
  std::string only;
  int rounds = 9;

  bool Wants(std::string_view part) const { return only.empty() || only == part; }
};

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

// Seconds for one look at each file.
double StatLoop(const std::vector<std::vector<std::string>>& inputs) {
  const auto start = std::chrono::steady_clock::now();
  for (const auto& project : inputs) {
    for (const std::string& file : project) {
      struct stat status {};
      if (stat(file.c_str(), &status) != 0) throw std::runtime_error("there is no " + file);
    }
  }
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The loop is measured along with it, with what the disk still has to do for the files out of its way.
double MeasureRewriting(const Suite& suite, int rounds) {
  const auto commands = suite.CompilerCommands();
  const auto variables = suite.ChildVariables();
  std::vector<double> build;
  std::vector<double> loop;
  for (int round = 0; round < rounds; ++round) {
    suite.SpoilFiles(round);
    sync();
    build.push_back(suite.Run({"build", "Suite"}).seconds);
    suite.ClearLogs();
    sync();
    loop.push_back(SpawnLoop(commands, variables));
  }
  fmt::print("  {} commands: build {:.4f} s, bare loop {:.4f} s\n", commands.size(), Median(build),
             Median(loop));
  return Median(build) / Median(loop);
}

// A build in which nothing has changed, against two that know no more than the files' times: ninja with the
// same files, and a bare loop that looks at each.
void MeasureChanged(const Suite& suite, int rounds) {
  const std::vector<std::string> build = {"build", "Suite", "--changed"};
  const std::string ninja = suite.WriteNinjaFileOfInputs();
  const std::vector<std::string> nothingToDo = {"ninja", "-f", ninja};
  const auto inputs = suite.InputFiles();
  suite.Run(build);
  RunProgram(nothingToDo, {});
  std::vector<double> builds;
  std::vector<double> orders;  // the same command as far as the compile order
  std::vector<double> ninjas;
  std::vector<double> loops;
  for (int round = 0; round < rounds; ++round) {
    builds.push_back(suite.Run(build).seconds);
    orders.push_back(suite.Run({"order", "Suite"}).seconds);
    ninjas.push_back(RunProgram(nothingToDo, {}).seconds);
    loops.push_back(StatLoop(inputs));
  }
  std::size_t files = 0;
  for (const auto& project : inputs) files += project.size();
  fmt::print(
      "  {} projects of {} files: build {:.4f} s (order {:.4f} s), ninja {:.4f} s, stat alone {:.4f} s\n",
      inputs.size(), files, Median(builds), Median(orders), Median(ninjas), Median(loops));
  Report("build --changed with nothing changed, a project",
         Median(builds) * 1000 / static_cast<double>(inputs.size()), "ms", 0.3);
  Report("build --changed with nothing changed, against ninja", Median(builds) / Median(ninjas), "x",
         std::nullopt);
}

void ReportRuns(const RunTimes& times, const std::string& where) {
  Report("build with nothing to change, against the bare loop" + where, times.build / times.loop, "x", 1.15);
  Report("build with nothing to change, against ninja -j1" + where, times.build / times.ninja, "x", 1.0);
}

// Twice: a disk may take longer for the logs of the one or the other than all the rest takes.
void MeasureUnchanged(Suite& suite, int rounds) {
  ReportRuns(MeasureRuns(suite, rounds), "");
  const std::string memory = fmt::format("/dev/shm/hearthmake-bench-{}", getpid());
  if (access("/dev/shm", W_OK) != 0) return;
  suite.KeepLogsIn(memory);
  ReportRuns(MeasureRuns(suite, rounds), ", logs in memory");
}

double MeasureScan(Suite& suite, int rounds) {
  std::vector<double> seconds;
  for (int round = 0; round < rounds; ++round) {
    suite.StartAnew();
    seconds.push_back(suite.Scan().seconds);
  }
  return Median(seconds) * 1000 / suite.ProjectFileCount();
}

void MeasureSuite(const Options& options) {
  Suite suite(options.tools);
  suite.CopyFrom(options.suite);
  Report("scan, a project file", MeasureScan(suite, options.Wants("scan") ? options.rounds : 1), "ms", 0.5);
  if (options.only == "scan") return;
  suite.MakeBinaries();
  suite.SettleFiles();
  if (options.Wants("run")) MeasureUnchanged(suite, options.rounds);
  if (options.Wants("changed")) {
    suite.MakeSources();
    suite.MakeBinaries();
    MeasureChanged(suite, options.rounds);
    suite.SettleFiles();
  }
  if (options.Wants("rewrite")) {
    Report("build with every project file rewritten, against the loop",
           MeasureRewriting(suite, options.rounds), "x", 2.0);
  }
}

struct CostPerProject {
  double scan = 0;
  double build = 0;
};

CostPerProject MeasureGenerated(const Options& options, int count) {
  Suite suite(options.tools);
  suite.Generate(count);
  const double scan = MeasureScan(suite, options.only == "growth-scan" && count < 1000 ? options.rounds : 1);
  fmt::print("  {} projects: scan {:.3f} ms a project\n", count, scan);
  if (options.only == "growth-scan") return {scan, 0};
  suite.SettleFiles();
  const ProgramRun load = suite.Run({"show", "Suite"});
  const RunTimes times = MeasureRuns(suite, count > 10000 ? 1 : 3);
  const double projects = count;
  const CostPerProject cost = {scan, times.build * 1000 / projects};
  fmt::print("  {} projects: build {:.3f} ms, beyond the loop {:.3f} ms a project\n", count, cost.build,
             (times.build - times.loop) * 1000 / projects);
  Report(fmt::format("memory, {} projects loaded", count), static_cast<double>(load.peakKilobytes) / 1024,
         "MB", count > 10000 ? std::optional<double>(300) : std::nullopt);
  return cost;
}

void MeasureGrowth(const Options& options) {
  const CostPerProject small = MeasureGenerated(options, 350);
  std::vector<int> counts = {3500};
  if (options.isLarge) counts.push_back(35000);
  for (const int count : counts) {
    const CostPerProject large = MeasureGenerated(options, count);
    Report(fmt::format("scan, cost a project at {} against 350", count), large.scan / small.scan, "x", 1.3);
    if (options.only == "growth-scan") continue;
    Report(fmt::format("build, cost a project at {} against 350", count), large.build / small.build, "x",
           1.3);
  }
}

std::optional<Options> ParseOptions(int argc, char** argv) {
  Options options;
  std::vector<std::string> folders;
  for (const std::string& argument : std::vector<std::string>(argv + 1, argv + argc)) {
    if (argument == "--large") {
      options.isLarge = true;
    } else if (argument.starts_with("--only=")) {
      options.only = argument.substr(argument.find('=') + 1);
    } else if (argument.starts_with("--rounds=")) {
      options.rounds = std::max(1, std::atoi(argument.c_str() + argument.find('=') + 1));
    } else {
      folders.push_back(argument);
    }
  }
  if (folders.empty()) return std::nullopt;
  options.tools = folders[0];
  if (folders.size() > 1) options.suite = folders[1];
  return options;
}

}  // namespace
}  // namespace hearthmake::bench

int main(int argc, char** argv) {
  using namespace hearthmake::bench;
  const auto options = ParseOptions(argc, argv);
  if (!options) {
    fmt::print(stderr, "usage: suite_bench TOOLS [SUITE] [--large] [--only=PART] [--rounds=N]\n");
    return 2;
  }
  try {
    if (!options->suite.empty() && !options->only.starts_with("growth")) MeasureSuite(*options);
    if (options->only.empty() || options->only.starts_with("growth")) MeasureGrowth(*options);
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return 1;
  }
  return 0;
}
