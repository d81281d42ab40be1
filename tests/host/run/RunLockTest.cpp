#include "host/run/RunLock.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "host/HostError.hpp"
#include "host/run/RunJournal.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::host {
namespace {

class RunLockTest : public testing::Test {
 protected:
  std::string Folder() const { return folder.Path(""); }
  std::string Journal() const { return folder.Path("run-7.json"); }
  std::string Refusal() const {
    try {
      const RunLock lock(Folder(), 7, "Shop");
    } catch (const HostError& error) {
      return error.what();
    }
    return "";
  }

  support::PosixFolder folder;
};

TEST_F(RunLockTest, KeepsTheBuildFromRunning) {
  const RunLock lock(Folder(), 7, "Shop");
  EXPECT_THROW(RunJournal(Journal(), 7, {1, 2}), HostError);
  EXPECT_NO_THROW(RunJournal(folder.Path("run-8.json"), 8, {1, 2}));
}

TEST_F(RunLockTest, IsNotGivenWhileTheBuildRuns) {
  const RunJournal run(Journal(), 7, {1, 2});
  EXPECT_EQ(Refusal(), "Another process is running the build 'Shop'.");
  EXPECT_TRUE(std::filesystem::exists(Journal()));
}

TEST_F(RunLockTest, TellsWhyThereIsNone) {
  folder.MakeFolder("run-7.json");
  EXPECT_THAT(Refusal(), testing::StartsWith("The journal of the build's runs can't be opened: "));
}

TEST_F(RunLockTest, LeavesNoTrace) {
  { const RunLock lock(Folder(), 7, "Shop"); }
  EXPECT_FALSE(std::filesystem::exists(Journal()));
  EXPECT_NO_THROW(RunJournal(Journal(), 7, {1, 2}));
}

TEST_F(RunLockTest, KeepsTheJournalOfAStoppedRun) {
  folder.MakeFile("run-7.json", "x\n");
  { const RunLock lock(Folder(), 7, "Shop"); }
  EXPECT_EQ(folder.Content("run-7.json"), "x\n");
}

TEST_F(RunLockTest, RemovesTheJournalThatItHasAndNoLaterOne) {
  folder.MakeFile("run-7.json", "");
  {
    RunLock lock(Folder(), 7, "Shop");
    lock.RemoveJournal();
    EXPECT_FALSE(std::filesystem::exists(Journal()));
    folder.MakeFile("run-7.json", "");
  }
  EXPECT_TRUE(std::filesystem::exists(Journal()));
}

}  // namespace
}  // namespace hearthmake::host
