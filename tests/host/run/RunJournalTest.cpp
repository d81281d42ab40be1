#include "host/run/RunJournal.hpp"

#include <gtest/gtest.h>

#include "host/HostError.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::host {
namespace {

constexpr const char* kHeader = "{\"build\":1,\"projects\":[3,5,8]}\n";

class RunJournalTest : public testing::Test {
 protected:
  RunJournal Open(std::vector<std::int32_t> projects = {8, 3, 5}) const {
    return {folder.Path("run-1.json"), 1, std::move(projects)};
  }
  std::string Content() const { return folder.Content("run-1.json"); }

  support::PosixFolder folder;
};

TEST_F(RunJournalTest, HasNothingToGoOnWithAtFirst) {
  const RunJournal journal = Open();
  EXPECT_FALSE(journal.IsOfThisBuild());
  EXPECT_FALSE(journal.IsOutdated());
}

TEST_F(RunJournalTest, KnowsWhatTheLastRunCompiled) {
  folder.MakeFile("run-1.json", std::string(kHeader) + "{\"compiled\":5}\n{\"compiled\":8}\n");
  const RunJournal journal = Open();
  EXPECT_TRUE(journal.IsOfThisBuild());
  EXPECT_TRUE(journal.HasCompiled(5));
  EXPECT_TRUE(journal.HasCompiled(8));
  EXPECT_FALSE(journal.HasCompiled(3));
}

TEST_F(RunJournalTest, GoesOnBehindTheLastWholeLine) {
  folder.MakeFile("run-1.json", std::string(kHeader) + "{\"compiled\":5}\n{\"compi");
  RunJournal journal = Open();
  EXPECT_TRUE(journal.IsOfThisBuild());
  journal.Continue();
  EXPECT_EQ(Content(), std::string(kHeader) + "{\"compiled\":5}\n");
}

TEST_F(RunJournalTest, IsOutdatedWhenTheProjectsAreOthers) {
  folder.MakeFile("run-1.json", kHeader);
  EXPECT_TRUE(Open({3, 5, 9}).IsOutdated());
  EXPECT_TRUE(Open({3, 5}).IsOutdated());
  EXPECT_FALSE(Open({3, 5, 9}).IsOfThisBuild());
}

TEST_F(RunJournalTest, TakesJunkForAnOutdatedOne) {
  for (const std::string& junk :
       {std::string("junk\n"), std::string("{}\n"), std::string(kHeader) + "junk\n",
        std::string(kHeader) + "{\"compiled\":\"x\"}\n", std::string(kHeader) + "{\"asked\":5}\n",
        std::string(kHeader) + "{\"asked\":[\"x\"]}\n",
        std::string(kHeader) + "{\"compiled\":99999999999999999999}\n", std::string("{\"build\":1"),
        std::string(1000, '\0')}) {
    folder.MakeFile("run-1.json", junk);
    const RunJournal journal = Open();
    EXPECT_FALSE(journal.IsOfThisBuild()) << junk;
    EXPECT_TRUE(journal.IsOutdated()) << junk;
  }
}

TEST_F(RunJournalTest, AFreshRunDiscardsWhatWasThere) {
  folder.MakeFile("run-1.json", std::string(kHeader) + "{\"compiled\":5}\n");
  RunJournal journal = Open();
  journal.StartFresh();
  EXPECT_FALSE(journal.HasCompiled(5));
  EXPECT_EQ(Content(), kHeader);
}

TEST_F(RunJournalTest, KnowsWhatTheLastRunWasAskedFor) {
  {
    RunJournal journal = Open();
    EXPECT_TRUE(journal.WasAskedFor(5));
    journal.StartFresh();
    journal.AskFor({5, 8});
    EXPECT_FALSE(journal.WasAskedFor(3));
  }
  EXPECT_EQ(Content(), std::string(kHeader) + "{\"asked\":[5,8]}\n");
  {
    RunJournal journal = Open();
    EXPECT_TRUE(journal.IsOfThisBuild());
    EXPECT_TRUE(journal.WasAskedFor(5));
    EXPECT_FALSE(journal.WasAskedFor(3));
    // A resumed run may be asked for less.
    journal.Continue();
    journal.AskFor({8});
  }
  EXPECT_FALSE(Open().WasAskedFor(5));
  RunJournal journal = Open();
  journal.StartFresh();
  EXPECT_TRUE(journal.WasAskedFor(3));
}

TEST_F(RunJournalTest, IsOfOneProcessAtATime) {
  RunJournal journal = Open();
  // Locks are of open files, so that a second opening is as good as a second process.
  EXPECT_THROW(Open(), HostError);
  journal.Remove();
  EXPECT_NO_THROW(Open());
}

TEST_F(RunJournalTest, SaysThatItCantBeWritten) {
  folder.MakeFolder("run-1.json");
  EXPECT_THROW(Open(), HostError);
}

TEST_F(RunJournalTest, IsNamedByTheBuild) { EXPECT_EQ(RunJournal::FileName(12), "run-12.json"); }

}  // namespace
}  // namespace hearthmake::host
