// Script programs against the same programs in Lua, measured in the same run.
//   vbs_bench HEARTHMAKE PROGRAMS [--wine] [NAME…]
// HEARTHMAKE is the command of a release build, PROGRAMS the folder of the pairs NAME.vbs and NAME.lua;
// --wine adds a column for Wine's own script host, with a smaller size where it would take minutes.

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "Program.hpp"
#include "Scratch.hpp"

namespace hearthmake::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kRounds = 5;
constexpr int kStartRounds = 15;
constexpr double kBudgetAgainstLua = 2.0;
constexpr double kBudgetAgainstWine = 25.0;
const std::string kSmallSize = "1";  // of the runs that Wine takes part in

const Variables kQuiet = {{"WINEDEBUG", "-all"}};

struct Arguments {
  std::string command;
  fs::path programs;
  bool withWine = false;
  std::vector<std::string> names;
};

struct Timed {
  double seconds = 0;
  std::string output;
};

Timed Run(const std::vector<std::string>& command, const Scratch& scratch) {
  const std::string outputFile = scratch.Path("output");
  const ProgramRun run = RunProgram(command, kQuiet, outputFile);
  std::ifstream file(outputFile, std::ios::binary);
  std::string output(std::istreambuf_iterator<char>(file), {});
  std::erase(output, '\r');
  if (run.status != 0)
    throw std::runtime_error(fmt::format("{} failed: {}", fmt::join(command, " "), output));
  return {run.seconds, output};
}

// Nothing when the program fails, as Wine's engine does on some.
std::optional<Timed> TryRun(const std::vector<std::string>& command, const Scratch& scratch) {
  try {
    return Run(command, scratch);
  } catch (const std::runtime_error&) {
    return std::nullopt;
  }
}

std::vector<std::string> ScriptCommand(const Arguments& arguments, const std::string& script) {
  return {arguments.command, "script", script};
}

std::vector<std::string> LuaCommand(const std::string& program) { return {"lua5.4", program}; }

std::vector<std::string> WineCommand(const std::string& script) {
  return {"wine", "cscript", "//nologo", "Z:" + fs::absolute(script).string()};
}

struct Comparison {
  double ours = 0;
  double theirs = 0;
  double Ratio() const { return ours / theirs; }
};

// Medians of interleaved rounds, so that a slow minute of the machine slows both alike. The outputs must be
// the same.
Comparison Compare(const std::vector<std::string>& ours, const std::vector<std::string>& theirs, int rounds,
                   const Scratch& scratch) {
  std::vector<double> ourSeconds;
  std::vector<double> theirSeconds;
  for (int round = 0; round < rounds; ++round) {
    const Timed mine = Run(ours, scratch);
    const Timed other = Run(theirs, scratch);
    if (mine.output != other.output) {
      throw std::runtime_error(fmt::format("{} prints {}but {} prints {}", ours.back(), mine.output,
                                           theirs.front(), other.output));
    }
    ourSeconds.push_back(mine.seconds);
    theirSeconds.push_back(other.seconds);
  }
  return {Median(ourSeconds), Median(theirSeconds)};
}

double GeometricMean(const std::vector<double>& ratios) {
  double sum = 0;
  for (const double ratio : ratios) sum += std::log(ratio);
  return std::exp(sum / static_cast<double>(ratios.size()));
}

std::vector<std::string> AllNames(const fs::path& programs) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(programs)) {
    if (entry.path().extension() == ".vbs") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

void PrintRow(const std::string& name, const Comparison& times) {
  fmt::print("{:<16} {:>9.3f} {:>9.3f} {:>8.2f}\n", name, times.ours, times.theirs, times.Ratio());
  std::fflush(stdout);
}

void MeasureAgainstLua(const Arguments& arguments, const Scratch& scratch) {
  fmt::print("{:<16} {:>9} {:>9} {:>8}\n", "program", "script s", "Lua s", "ratio");
  std::vector<double> ratios;
  for (const std::string& name : arguments.names) {
    const std::string base = (arguments.programs / name).string();
    const Comparison times =
        Compare(ScriptCommand(arguments, base + ".vbs"), LuaCommand(base + ".lua"), kRounds, scratch);
    PrintRow(name, times);
    ratios.push_back(times.Ratio());
  }
  const double mean = GeometricMean(ratios);
  fmt::print("{:<16} {:>28.2f}  budget {:g} x  {}\n", "geometric mean", mean, kBudgetAgainstLua,
             mean <= kBudgetAgainstLua ? "within" : "OVER");
  const Comparison start = Compare(ScriptCommand(arguments, scratch.Write("empty.vbs", "")),
                                   LuaCommand(scratch.Write("empty.lua", "")), kStartRounds, scratch);
  fmt::print("{:<16} {:>7.2f}ms {:>7.2f}ms\n\n", "an empty script", start.ours * 1000, start.theirs * 1000);
}

// Wine's start-up, some tenths of a second, is taken off its time: it is the engines that are compared.
void MeasureAgainstWine(const Arguments& arguments, const Scratch& scratch) {
  const std::string empty = scratch.Write("empty.vbs", "");
  Run(WineCommand(empty), scratch);  // starts its server
  const Comparison start = Compare(ScriptCommand(arguments, empty), WineCommand(empty), 3, scratch);
  fmt::print("{:<16} {:>9} {:>9} {:>8}\n", "small size", "script s", "Wine s", "faster");
  std::vector<double> ratios;
  for (const std::string& name : arguments.names) {
    const std::string script = (arguments.programs / (name + ".vbs")).string();
    auto ours = ScriptCommand(arguments, script);
    auto theirs = WineCommand(script);
    ours.push_back(kSmallSize);
    theirs.push_back(kSmallSize);
    const Timed mine = Run(ours, scratch);
    const std::optional<Timed> other = TryRun(theirs, scratch);
    if (!other || other->output != mine.output) {
      fmt::print("{:<16} {:>9.3f}  {}\n", name, mine.seconds,
                 other ? "prints something else" : "fails there");
      continue;
    }
    const double our = std::max(mine.seconds - start.ours, 1e-4);
    const double their = std::max(other->seconds - start.theirs, 1e-4);
    fmt::print("{:<16} {:>9.3f} {:>9.3f} {:>8.1f}\n", name, our, their, their / our);
    std::fflush(stdout);
    ratios.push_back(their / our);
  }
  if (ratios.empty()) return;
  const double mean = GeometricMean(ratios);
  fmt::print("{:<16} {:>28.1f}  budget {:g} x  {}\n", "geometric mean", mean, kBudgetAgainstWine,
             mean >= kBudgetAgainstWine ? "within" : "UNDER");
}

}  // namespace
}  // namespace hearthmake::bench

int main(int argc, char** argv) {
  using namespace hearthmake::bench;
  std::vector<std::string> words(argv + 1, argv + argc);
  Arguments arguments;
  arguments.withWine = std::erase(words, "--wine") > 0;
  if (words.size() < 2) {
    fmt::print(stderr, "usage: vbs_bench HEARTHMAKE PROGRAMS [--wine] [NAME…]\n");
    return 2;
  }
  arguments.command = words[0];
  arguments.programs = words[1];
  arguments.names.assign(words.begin() + 2, words.end());
  try {
    if (arguments.names.empty()) arguments.names = AllNames(arguments.programs);
    const Scratch scratch;
    MeasureAgainstLua(arguments, scratch);
    if (arguments.withWine) MeasureAgainstWine(arguments, scratch);
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return 1;
  }
  return 0;
}
