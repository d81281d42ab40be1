#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <thread>

#include "automation/Error.hpp"
#include "support/GitScene.hpp"

// Several processes at one repository, and processes that are killed.

namespace hearthmake::git {
namespace {

using namespace platform::SourceFlags;
using support::GitFiles;
using support::GitScene;

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsSanitized = true;
#else
constexpr bool kIsSanitized = false;
#endif

// Runs a function in a child process; exceptions end it with status 1.
pid_t Spawn(const std::function<void()>& work) {
  const pid_t child = fork();
  if (child != 0) return child;
  try {
    work();
    _exit(0);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    _exit(1);
  }
}

int StatusOf(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

struct Shared {
  std::atomic<int> arrived{0};
  std::atomic<int> winsOfRound{0};
  std::atomic<int> wins[2] = {};
  std::atomic<int> badRounds{0};
};

// Both processes leave it at the same moment.
void Meet(Shared& shared, int& turn) {
  ++turn;
  ++shared.arrived;
  while (shared.arrived < 2 * turn) sched_yield();
}

void Race(const GitScene& scene, Shared& shared, int self, int rounds) {
  const auto item = scene.Item("$/Suite/main.bas", self == 0 ? "Ann" : "Ben");
  int turn = 0;
  for (int round = 0; round < rounds; ++round) {
    if (self == 0) shared.winsOfRound = 0;
    Meet(shared, turn);
    bool hasWon = true;
    try {
      item->Checkout("race", "", kGetNo);
    } catch (const automation::Error& error) {
      if (error.Number() != 70) throw;
      hasWon = false;
    }
    if (hasWon) {
      ++shared.winsOfRound;
      ++shared.wins[self];
    }
    Meet(shared, turn);
    if (self == 0 && shared.winsOfRound != 1) ++shared.badRounds;
    if (hasWon) item->Checkin("unchanged", "D:\\same", kKeepNo);
    Meet(shared, turn);
  }
}

void RunRace(int rounds) {
  const GitScene scene;
  scene.Folder().MakeFile("same", "main");
  void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(memory, MAP_FAILED);
  auto* shared = new (memory) Shared;
  const pid_t first = Spawn([&] { Race(scene, *shared, 0, rounds); });
  const pid_t second = Spawn([&] { Race(scene, *shared, 1, rounds); });
  EXPECT_EQ(StatusOf(first), 0);
  EXPECT_EQ(StatusOf(second), 0);
  EXPECT_EQ(shared->badRounds, 0);
  EXPECT_EQ(shared->wins[0] + shared->wins[1], rounds);
  munmap(memory, sizeof(Shared));
}

TEST(GitProcesses, OneOfTwoWhoTakeAFileAtOnceGetsIt) { RunRace(1000); }

TEST(GitProcesses, CheckInsOfDifferentFilesAllArrive) {
  const GitScene scene;
  constexpr int kRounds = 30;
  const auto work = [&](const char* spec, const std::string& name) {
    for (int i = 0; i < kRounds; ++i) {
      scene.Folder().MakeFile(name, std::to_string(i));
      const auto item = scene.Item(spec, name);
      item->Checkout("", "", kGetNo);
      item->Checkin(std::to_string(i), "D:\\" + name, kKeepNo);
    }
  };
  const pid_t first = Spawn([&] { work("$/Suite/main.bas", "Ann"); });
  const pid_t second = Spawn([&] { work("$/Suite/Lib/a.cls", "Ben"); });
  EXPECT_EQ(StatusOf(first), 0);
  EXPECT_EQ(StatusOf(second), 0);
  EXPECT_EQ(scene.Repo("rev-list --count main"), std::to_string(2 * kRounds + 1));
  EXPECT_EQ(scene.Repo("show main:Suite/main.bas"), "29");
  EXPECT_EQ(scene.Repo("show main:Suite/Lib/a.cls"), "29");
}

TEST(GitProcesses, ABranchThatGitMovesMeanwhileIsTakenUp) {
  const GitScene scene;
  constexpr int kCheckIns = 60;
  const pid_t child = Spawn([&] {
    scene.Shell("db/repo.git",
                "for i in 1 2 3 4 5 6 7 8 9 10; do until o=$(git rev-parse main) && "
                "n=$(git commit-tree -m git -p $o $o^{tree}) && git update-ref refs/heads/main $n $o; "
                "do :; done; done 2>/dev/null");
  });
  for (int i = 1; i <= kCheckIns; ++i) {
    scene.Folder().MakeFile("mine", std::to_string(i));
    const auto item = scene.Item("$/Suite/main.bas");
    item->Checkout("", "", kGetNo);
    item->Checkin("mine", "D:\\mine", kKeepNo);
  }
  EXPECT_EQ(StatusOf(child), 0);
  EXPECT_EQ(scene.Repo("rev-list --count main"), std::to_string(1 + 10 + kCheckIns));
  EXPECT_EQ(scene.Repo("rev-list --count --grep=mine main"), std::to_string(kCheckIns));
  EXPECT_EQ(scene.Repo("show main:Suite/main.bas"), std::to_string(kCheckIns));
}

// Kills the child after a while of random length, many times; `check` looks at what is left.
void KillOften(int times, const std::function<void()>& work, const std::function<void()>& check) {
  std::minstd_rand random(7);
  for (int i = 0; i < times; ++i) {
    const pid_t child = Spawn(work);
    std::this_thread::sleep_for(std::chrono::microseconds(2000 + random() % 40000));
    kill(child, SIGKILL);
    StatusOf(child);
    check();
    if (::testing::Test::HasFailure()) return;
  }
}

void CheckInForever(const GitScene& scene) {
  for (int i = 0;; ++i) {
    scene.Folder().MakeFile("mine", std::to_string(getpid()) + " " + std::to_string(i));
    const auto item = scene.Open("Ann", "D:\\seed\\srcsafe.ini")->VSSItem("$/Suite/main.bas", false);
    if (item->IsCheckedOut() == platform::CheckoutState::NotCheckedOut) item->Checkout("", "", kGetNo);
    item->Checkin("mine", "D:\\mine", kKeepNo);
  }
}

TEST(GitProcesses, AKilledCheckInLeavesASoundRepositoryThatTheNextOneUses) {
  const GitScene scene;
  scene.WriteIni("", "seed/srcsafe.ini");
  scene.Folder().MakeFile("after", "after");
  int number = 0;
  KillOften(
      60, [&] { CheckInForever(scene); },
      [&] {
        scene.Git("seed", "fsck --strict --no-dangling");
        const auto item = scene.Open("Ann", "D:\\seed\\srcsafe.ini")->VSSItem("$/Suite/main.bas", false);
        ASSERT_NE(item->IsCheckedOut(), platform::CheckoutState::ByOther);
        if (item->IsCheckedOut() == platform::CheckoutState::NotCheckedOut) item->Checkout("", "", kGetNo);
        scene.Folder().MakeFile("after", "after " + std::to_string(++number));
        item->Checkin("after", "D:\\after", kKeepNo);
        EXPECT_EQ(item->IsCheckedOut(), platform::CheckoutState::NotCheckedOut);
        EXPECT_EQ(scene.Git("seed", "show main:Suite/main.bas"), "after " + std::to_string(number));
      });
}

TEST(GitProcesses, AStaleLockOfAKilledWriterIsClearedAway) {
  const GitScene scene;
  scene.Folder().MakeFile("mine", "two");
  const auto item = scene.Item("$/Suite/main.bas");
  item->Checkout("", "", kGetNo);
  // As a process leaves it that is killed with the lock in its hands.
  scene.Folder().MakeFile("db/repo.git/hearthmake/lock",
                          "refs/heads/main.lock\npacked-refs.lock\n../../x.lock\n");
  scene.Folder().MakeFile("db/repo.git/refs/heads/main.lock");
  scene.Folder().MakeFile("x.lock");
  item->Checkin("two", "D:\\mine", kKeepNo);
  EXPECT_EQ(scene.Repo("show main:Suite/main.bas"), "two");
  EXPECT_TRUE(std::filesystem::exists(scene.Path("x.lock")));
}

GitFiles ManyFiles(const std::string& content) {
  GitFiles files;
  for (int i = 0; i < 60; ++i)
    files.emplace_back("Suite/f" + std::to_string(i), std::string(200'000, content[0]) + content);
  return files;
}

bool IsWhole(const std::string& bytes) {
  return bytes.size() == 200'001 && bytes.find_first_not_of(bytes[0]) == std::string::npos;
}

TEST(GitProcesses, AKilledGetLeavesNoHalfWrittenFile) {
  const GitScene scene(ManyFiles("a"));
  for (const auto& [path, bytes] : ManyFiles("b")) scene.Folder().MakeFile("seed/" + path, bytes);
  scene.Shell("seed", "git commit -qam b && git push -q ../db/repo.git main");
  const auto work = [&] {
    while (true) {
      const auto versions = scene.Item("$/Suite")->Versions();
      versions->Next()->VSSItem()->Get("D:\\w", kReplaceYes);
      versions->Next()->VSSItem()->Get("D:\\w", kReplaceYes);
    }
  };
  int seen = 0;
  KillOften(40, work, [&] {
    if (!std::filesystem::exists(scene.Path("w"))) return;
    for (const auto& entry : std::filesystem::directory_iterator(scene.Path("w"))) {
      const std::string name = entry.path().filename();
      if (name.starts_with(".hearthmake-")) continue;
      ++seen;
      EXPECT_TRUE(IsWhole(scene.Folder().Content("w/" + name))) << name;
    }
  });
  EXPECT_GT(seen, 100);
  scene.Item("$/Suite")->Get("D:\\w", kReplaceYes);
  EXPECT_EQ(scene.Folder().Content("w/f59")[0], 'b');
}

// Peak memory of a child, in kilobytes.
long PeakOf(const std::function<void()>& work) {
  const pid_t child = Spawn(work);
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  EXPECT_EQ(status, 0);
  return usage.ru_maxrss;
}

TEST(GitProcesses, AGigabyteIsCheckedInWithinLittleMemory) {
  if (kIsSanitized) GTEST_SKIP() << "the sanitizer's own memory would be measured";
  const GitScene scene;
  const std::uintmax_t size = 1ULL << 30;
  scene.Folder().MakeFile("large", "x");
  std::filesystem::resize_file(scene.Path("large"), size);
  scene.Item("$/Suite/main.bas")->Checkout("", "", kGetNo);
  const long peak = PeakOf([&] { scene.Item("$/Suite/main.bas")->Checkin("large", "D:\\large", kKeepNo); });
  EXPECT_LT(peak, static_cast<long>(size / 1024 * 13 / 10));
  EXPECT_LT(peak, 200 * 1024) << "it goes piece by piece";
  EXPECT_EQ(scene.Repo("cat-file -s main:Suite/main.bas"), std::to_string(size));
}

}  // namespace
}  // namespace hearthmake::git
