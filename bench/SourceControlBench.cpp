// The git adapter against git itself, on one tree of 10,000 files in 100 folders:
//
//   a get when all is up to date   against   git status               at most 2 x
//   a first get                    against   git checkout-index -a    at most 1.5 x
//   a check-in of one file         against   git commit of one file   at most 3 x
//
//   SourceControlBench [ROUNDS]
//
// Each of ours opens the database anew, as a build does.

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "Program.hpp"
#include "adapters/git/GitSourceControl.hpp"
#include "adapters/posix/TemporaryDirectory.hpp"

namespace {

using namespace hearthmake;
using namespace platform::SourceFlags;
namespace fs = std::filesystem;

constexpr int kFolders = 100;
constexpr int kFilesPerFolder = 100;
constexpr std::size_t kFileSize = 3000;

std::string Content(int seed) {
  std::string text;
  for (unsigned line = 0; text.size() < kFileSize; ++line)
    text += "Public Sub Step" + std::to_string(static_cast<unsigned>(seed) * 2654435761U + line * 40503U) +
            "()\r\n";
  return text;
}

class Bench {
 public:
  Bench() {
    for (int folder = 0; folder < kFolders; ++folder) {
      fs::create_directories(Path("tree/Lib" + std::to_string(folder)));
      for (int file = 0; file < kFilesPerFolder; ++file)
        std::ofstream(Path("tree/Lib" + std::to_string(folder) + "/Class" + std::to_string(file) + ".cls"))
            << Content(folder * kFilesPerFolder + file);
    }
    Git({"init", "-q", "-b", "main"});
    Git({"add", "-A"});
    Git({"commit", "-q", "-m", "First"});
    std::ofstream(Path("srcsafe.ini")) << "[git]\nrepository = tree\nbranch = main\n";
    Git({"clone", "-q", "--bare", ".", Path("bare.git")});
    std::ofstream(Path("bare.ini")) << "[git]\nrepository = bare.git\n";
  }

  std::string Path(const std::string& name) const { return m_folder.Path() + "/" + name; }

  double Git(std::vector<std::string> arguments) const {
    std::vector<std::string> line = {"/usr/bin/git",   "-C", Path("tree"), "-c", "user.name=Ann", "-c",
                                     "user.email=a@b", "-c", "gc.auto=0"};
    line.insert(line.end(), arguments.begin(), arguments.end());
    const bench::ProgramRun run = bench::RunProgram(line, {});
    if (run.status != 0) std::abort();
    return run.seconds;
  }

  std::unique_ptr<platform::VSSItem> Item(const std::string& spec) {
    return m_control.Open(Path("bare.ini"), "Ann", "")->VSSItem(spec, false);
  }

  void Get(const std::string& folder) {
    Item("$/")->Get(Path(folder), kRecursiveYes | kReplaceYes | kReadOnlyNo);
  }

  // Check-out and check-in of a file of new content.
  void CheckIn(int number) {
    std::ofstream(Path("new")) << Content(-number);
    const auto item = Item("$/Lib50/Class50.cls");
    item->Checkout("Check out", "", kGetNo);
    item->Checkin("Check in", Path("new"), kKeepNo);
  }

  double GitCommit(int number) {
    std::ofstream(Path("tree/Lib50/Class50.cls")) << Content(-number);
    return Git({"commit", "-q", "-m", "Check in", "Lib50/Class50.cls"});
  }

 private:
  posix::TemporaryDirectory m_folder;
  git::GitSourceControl m_control{[](std::string_view path) { return std::string(path); }};
};

double Seconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Comparison {
  std::vector<double> ours;
  std::vector<double> gits;

  void Print(const char* what, double budget) const {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < ours.size(); ++i) ratios.push_back(ours[i] / gits[i]);
    std::printf("%-28s %8.1f ms, git %8.1f ms, ratio %.2f (budget %.1f)\n", what, bench::Median(ours) * 1e3,
                bench::Median(gits) * 1e3, bench::Median(ratios), budget);
  }
};

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 5;
  Bench bench;
  Comparison first;
  Comparison upToDate;
  Comparison checkIn;
  for (int round = 0; round < rounds; ++round) {
    const std::string folder = "get" + std::to_string(round);
    first.gits.push_back(
        bench.Git({"checkout-index", "-a", "--prefix=" + bench.Path("git" + std::to_string(round)) + "/"}));
    first.ours.push_back(Seconds([&] { bench.Get(folder); }));
    usleep(50'000);  // out of the tick in which nothing is certain
    bench.Get(folder);
    bench.Git({"status"});
    upToDate.gits.push_back(bench.Git({"status"}));
    upToDate.ours.push_back(Seconds([&] { bench.Get(folder); }));
    checkIn.gits.push_back(bench.GitCommit(round + 1));
    checkIn.ours.push_back(Seconds([&] { bench.CheckIn(round + 1); }));
  }
  first.Print("first get", 1.5);
  upToDate.Print("get, all up to date", 2.0);
  checkIn.Print("check-in of one file", 3.0);
}
