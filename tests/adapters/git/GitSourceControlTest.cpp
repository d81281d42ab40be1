#include "adapters/git/GitSourceControl.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "support/ErrorExpect.hpp"
#include "support/GitScene.hpp"

namespace hearthmake::git {
namespace {

using namespace platform::SourceFlags;
using support::ErrorOf;
using support::GitScene;

constexpr std::int32_t kAll = kRecursiveYes | kReplaceYes;

void CheckInText(const GitScene& scene, platform::VSSItem& item, const std::string& text,
                 const std::string& comment = "change") {
  scene.Folder().MakeFile("new.tmp", text);
  item.Checkout("out", "", kGetNo);
  item.Checkin(comment, "D:\\new.tmp", kKeepNo);
}

void ExpectFailure(std::int32_t number, const std::string& source, const std::string& part,
                   const std::function<void()>& call) {
  const automation::Error error = ErrorOf(call);
  EXPECT_EQ(error.Number(), number) << error.Description();
  EXPECT_EQ(error.Source(), source);
  EXPECT_NE(error.Description().find(part), std::string::npos) << error.Description();
}

// --- opening ---

TEST(GitSourceControl, TheFolderOfTheIniFileIsTheRepository) {
  const GitScene scene;
  scene.WriteIni("", "db/repo.git/srcsafe.ini");
  EXPECT_EQ(scene.Open("Ann", "D:\\db\\repo.git\\srcsafe.ini")->VSSItem("$/Suite", false)->Spec(), "$/Suite");
}

TEST(GitSourceControl, TheRepositoryMayBeNamedInManyWays) {
  const GitScene scene;
  for (const std::string& name :
       {std::string("repo.git"), std::string("..\\DB\\Repo.git"), std::string("D:\\db\\repo.git"),
        scene.Path("db/repo.git"), std::string("\"../db/repo.git\"")}) {
    scene.WriteIni("[GIT]\r\n; a comment\r\nRepository = " + name + "\r\nbranch=main\r\n");
    EXPECT_NO_THROW(scene.Open()) << name;
  }
}

TEST(GitSourceControl, SaysWhatIsWrongWithADatabase) {
  const GitScene scene;
  ExpectFailure(53, "VSSDatabase.Open", "D:\\none.ini", [&] { scene.Open("Ann", "D:\\none.ini"); });
  scene.WriteIni("", "empty/srcsafe.ini");
  ExpectFailure(76, "VSSDatabase.Open", "git init", [&] { scene.Open("Ann", "D:\\empty\\srcsafe.ini"); });
  scene.WriteIni("[git]\nrepository=repo.git\nbranch=none\n");
  ExpectFailure(76, "VSSDatabase.Open", "no branch none", [&] { scene.Open(); });
  scene.WriteIni("[git]\nrepository=repo.git\nbranch=a..b\n");
  ExpectFailure(76, "VSSDatabase.Open", "a..b", [&] { scene.Open(); });
  scene.WriteIni("[git]\nrepository=repo.git\nremote=nowhere\n");
  ExpectFailure(76, "VSSDatabase.Open", "nowhere", [&] { scene.Open(); });
  scene.WriteIni("[git]\nrepository=repo.git\n");
  ExpectFailure(5, "VSSDatabase.Open", "A<b>", [&] { scene.Open("A<b>"); });
}

TEST(GitSourceControl, AnEmptyUserIsThatOfTheProcess) {
  const GitScene scene;
  const auto item = scene.Item("$/Suite/main.bas", "");
  item->Checkout("", "", kGetNo);
  EXPECT_EQ(item->Checkouts().at(0).Username, scene.Shell("", "id -un"));
}

// --- getting ---

TEST(GitGet, AFileTimeCanBeThatOfItsLastChange) {
  const GitScene scene;
  scene.Shell("seed",
              "echo 2 > Suite/Lib/a.cls && GIT_COMMITTER_DATE='2001-03-24T13:05:00Z' git commit -qam two && "
              "git push -q ../db/repo.git main");
  for (const std::int32_t time : {kTimeModified, kTimeUpdated}) {
    scene.Item("$/Suite")->Get("D:\\w" + std::to_string(time), kAll | time);
    struct stat status {};
    ASSERT_EQ(stat(scene.Path("w" + std::to_string(time) + "/Lib/a.cls").c_str(), &status), 0);
    EXPECT_EQ(status.st_mtime, 985439100);
    ASSERT_EQ(stat(scene.Path("w" + std::to_string(time) + "/main.bas").c_str(), &status), 0);
    EXPECT_EQ(std::to_string(status.st_mtime), scene.Git("seed", "log -1 --format=%ct HEAD~"));
  }
  scene.Item("$/Suite/Lib/a.cls")->Get("D:\\a.cls", kTimeModified);
  EXPECT_EQ(scene.Shell("", "stat -c %Y a.cls"), "985439100");
  scene.Item("$/Suite")->Get("D:\\now", kAll);
  EXPECT_GT(std::stoll(scene.Shell("", "stat -c %Y now/Lib/a.cls")), 985439100);
}

TEST(GitGet, AnEmptyPathMeansTheWorkingFolderOfTheDatabase) {
  const GitScene scene;
  ExpectFailure(76, "VSSItem.Get", "[working folders]", [&] { scene.Item("$/Suite")->Get("", kAll); });
  scene.WriteIni(
      "[git]\nrepository=repo.git\n[working folders]\n$/ = D:\\all\n$/Suite/Lib = ..\\lib\n"
      "[working folders.Ben]\n$/suite = D:\\ben\n");
  scene.Item("$/Suite")->Get("", kAll);
  EXPECT_EQ(scene.Folder().Content("all/Suite/main.bas"), "main");
  scene.Item("$/Suite/Lib/a.cls")->Get("", 0);
  EXPECT_EQ(scene.Folder().Content("lib/a.cls"), "one");
  scene.Item("$/Suite/main.bas", "Ben")->Get("", 0);
  EXPECT_EQ(scene.Folder().Content("ben/main.bas"), "main");
}

TEST(GitGet, TellsOfEachFile) {
  const GitScene scene;
  std::vector<std::string> told;
  Options options;
  options.onFile = [&](const FileProgress& file) {
    const char* const outcomes[] = {"got", "unchanged", "skipped"};
    told.push_back(file.item + " " + outcomes[static_cast<int>(file.outcome)] + " " +
                   std::to_string(file.number) + "/" + std::to_string(file.count));
  };
  scene.Folder().MakeFile("w/main.bas", "my work");
  const auto database = scene.Open("Ann", "D:\\db\\srcsafe.ini", options);
  database->VSSItem("$/Suite", false)->Get("D:\\w", kRecursiveYes | kReplaceSkip);
  database->VSSItem("$/Suite", false)->Get("D:\\w", kRecursiveYes | kReplaceYes);
  EXPECT_EQ(told, (std::vector<std::string>{"$/Suite/main.bas skipped 1/2", "$/Suite/Lib/a.cls got 2/2",
                                            "$/Suite/main.bas got 1/2", "$/Suite/Lib/a.cls unchanged 2/2"}));
}

TEST(GitGet, StopsBetweenFilesWhenTheHostWants) {
  const GitScene scene;
  int files = 0;
  Options options;
  options.onFile = [&](const FileProgress&) { ++files; };
  options.isStopWanted = [&] { return files == 1; };
  ExpectFailure(18, "VSSItem.Get", "1 of 2", [&] {
    scene.Open("Ann", "D:\\db\\srcsafe.ini", options)->VSSItem("$/", false)->Get("D:\\w", kAll);
  });
  EXPECT_EQ(files, 1);
  EXPECT_FALSE(std::filesystem::exists(scene.Path("w/Suite/Lib/a.cls")));
}

TEST(GitGet, KeepsBytesAndTheExecutableMark) {
  const GitScene scene({{"a.sh", "a\r\nb\n"}, {".gitattributes", "* text=auto eol=crlf\n"}});
  scene.Shell("seed", "chmod +x a.sh && git commit -qam x && git push -q ../db/repo.git main");
  scene.Item("$/")->Get("D:\\w", kAll);
  EXPECT_EQ(scene.Folder().Mode("w/a.sh") & 0700U, 0500U);
  EXPECT_EQ(scene.Git("", "hash-object --no-filters w/a.sh"), scene.Repo("rev-parse main:a.sh"));
}

TEST(GitGet, ADamagedMemoryOfTheFolderCostsNothingButTime) {
  const GitScene scene;
  scene.Item("$/Suite")->Get("D:\\w", kAll);
  scene.Shell("db/repo.git/hearthmake/folders", "for f in *; do echo junk > $f; done");
  scene.Folder().MakeFile("w/Lib/new", "");
  scene.Item("$/Suite")->Get("D:\\w", kAll);
  EXPECT_EQ(scene.Folder().Content("w/Lib/a.cls"), "one");
}

TEST(GitGet, NamesThatDifferInCaseOnlyStayApart) {
  const GitScene scene({{"a.txt", "lower"}, {"A.txt", "upper"}});
  scene.Item("$/")->Get("D:\\w", kAll);
  scene.Item("$/")->Get("D:\\w", kAll);
  EXPECT_EQ(scene.Folder().Content("w/a.txt"), "lower");
  EXPECT_EQ(scene.Folder().Content("w/A.txt"), "upper");
  EXPECT_EQ(scene.Item("$/A.txt")->Spec(), "$/A.txt");
}

TEST(GitGet, LeavesSubmodulesOut) {
  const GitScene scene;
  scene.Shell("seed",
              "git update-index --add --cacheinfo 160000,$(git rev-parse HEAD),sub && git commit -qm sub && "
              "git push -q ../db/repo.git main");
  scene.Item("$/")->Get("D:\\w", kAll);
  EXPECT_FALSE(std::filesystem::exists(scene.Path("w/sub")));
  EXPECT_TRUE(std::filesystem::exists(scene.Path("w/Suite/main.bas")));
}

// --- trees and folders that mean harm ---

class HostileTree : public ::testing::TestWithParam<const char*> {};

// Commits a tree, made line by line, that git itself would not make.
void CommitTree(const GitScene& scene, const std::string& entry) {
  scene.Shell(
      "db/repo.git",
      "b=$(echo harm | git hash-object -w --stdin) && "
      "t=$(printf '" +
          entry +
          "' $b | git mktree --missing) && "
          "s=$(printf '100644 blob %s\\tgood.txt\\n040000 tree %s\\tFolder\\n' $b $t | git mktree) && "
          "git update-ref refs/heads/main $(git commit-tree -m x -p main $s)");
}

TEST_P(HostileTree, IsRefusedByTheNameOfItsEntry) {
  const GitScene scene;
  const std::string name = GetParam();
  CommitTree(scene, "100644 blob %s\\t" + name + "\\n");
  const automation::Error error = ErrorOf([&] { scene.Item("$/")->Get("D:\\w", kAll); });
  EXPECT_EQ(error.Number(), 75);
  EXPECT_NE(error.Description().find("$/Folder is refused"), std::string::npos) << error.Description();
  EXPECT_FALSE(std::filesystem::exists(scene.Path("w/good.txt"))) << "written before all was looked at";
  EXPECT_FALSE(std::filesystem::exists(scene.Path("x")));
}

INSTANTIATE_TEST_SUITE_P(Git, HostileTree,
                         ::testing::Values("..", ".", ".git", ".GIT", ".git ", "git~1", "a\\\\..\\\\b",
                                           "C:", "C:x", "..\\\\..\\\\x", "a\\001b"));

TEST(HostileTree, LinksAreRefused) {
  const GitScene scene;
  CommitTree(scene, "120000 blob %s\\tlink\\n");
  ExpectFailure(75, "VSSItem.Get", "\"link\" in $/Folder", [&] { scene.Item("$/")->Get("D:\\w", kAll); });
  ExpectFailure(53, "VSSDatabase.VSSItem", "$/Folder/link", [&] { scene.Item("$/Folder/link"); });
}

TEST(HostileTree, OneThatHoldsItselfManyTimesIsRefused) {
  const GitScene scene;
  scene.Shell("db/repo.git",
              "b=$(echo x | git hash-object -w --stdin); t=$b; k='100644 blob'; for i in 1 2 3 4 5 6 7 8; do "
              "t=$(for n in 0 1 2 3 4 5 6 7 8 9; do printf \"$k $t\\t$n\\n\"; done | git mktree); k='040000 "
              "tree'; done; "
              "git update-ref refs/heads/main $(git commit-tree -m bomb $t)");
  ExpectFailure(75, "VSSItem.Get", "too many", [&] { scene.Item("$/")->Get("D:\\w", kAll); });
}

TEST(HostileTree, DamagedObjectsAreErrors) {
  const GitScene scene;
  scene.Shell("db/repo.git", "rm -f $(git rev-parse main:Suite/main.bas | sed 's|^..|objects/&/|')");
  ExpectFailure(53, "VSSItem.Get", "blob", [&] { scene.Item("$/Suite")->Get("D:\\w", kAll); });
}

TEST(HostileFolder, LinksThatLeadOutAreRefused) {
  const GitScene scene;
  scene.Folder().MakeFolder("outside");
  scene.Folder().MakeFile("outside.bas", "outside");
  scene.Folder().MakeFolder("w");
  std::filesystem::create_directory_symlink(scene.Path("outside"), scene.Path("w/Lib"));
  ExpectFailure(75, "VSSItem.Get", "w/Lib", [&] { scene.Item("$/Suite")->Get("D:\\w", kAll); });
  EXPECT_FALSE(std::filesystem::exists(scene.Path("outside/a.cls")));
  std::filesystem::create_symlink(scene.Path("outside.bas"), scene.Path("w2.bas"));
  scene.Folder().MakeFolder("w2");
  std::filesystem::create_symlink(scene.Path("outside.bas"), scene.Path("w2/main.bas"));
  ExpectFailure(75, "VSSItem.Get", "w2/main.bas", [&] { scene.Item("$/Suite")->Get("D:\\w2", kReplaceYes); });
  EXPECT_EQ(scene.Folder().Content("outside.bas"), "outside");
}

// --- what git shows ---

TEST(GitHistory, GitReadsWhatWasCheckedIn) {
  const GitScene scene;
  const auto item = scene.Item("$/Suite/Lib/a.cls", "ann");
  CheckInText(scene, *item, "two", "Second\r\nline");
  EXPECT_EQ(scene.Repo("log -1 --format='%an <%ae> %cn|%B'"), "Ann <ann@example.org> Ann|Second\nline");
  EXPECT_EQ(scene.Repo("show main:Suite/Lib/a.cls"), "two");
  EXPECT_EQ(scene.Repo("diff --name-only main~ main"), "Suite/Lib/a.cls");
  EXPECT_EQ(scene.Repo("for-each-ref refs/checkouts"), "");
  CheckInText(scene, *scene.Item("$/Suite/main.bas", "Ben"), "two");
  EXPECT_EQ(scene.Repo("log -1 --format=%ae"), "Ben@localhost");
  scene.Repo("fsck --strict");
}

TEST(GitHistory, GitShowsLabelsAsTags) {
  const GitScene scene;
  scene.Item("$/Suite")->Label("Build 12", "Good one");
  EXPECT_EQ(scene.Repo("tag"), "Build-12");
  EXPECT_EQ(scene.Repo("cat-file tag Build-12 | tail -n +6"), "Good one\n\nLabel: Build 12\nPath: $/Suite");
  EXPECT_EQ(scene.Repo("rev-parse Build-12^{commit}"), scene.Repo("rev-parse main"));
  scene.Item("$/Suite/Lib")->Label("Build 12", "");
  EXPECT_EQ(scene.Repo("tag"), "Build-12\nBuild-12@Suite-Lib");
  scene.Repo("fsck --strict");
}

TEST(GitHistory, TagsMadeByGitAreLabelsOfTheRoot) {
  const GitScene scene;
  scene.Repo("tag -a -m 'By hand' v1 main");
  scene.Repo("tag light main");
  std::map<std::string, std::string> comments;
  const auto versions = scene.Item("$/Suite/main.bas")->Versions();
  while (const auto version = versions->Next()) comments[version->Label()] = version->Comment();
  EXPECT_EQ(comments, (std::map<std::string, std::string>{{"", "First"}, {"light", ""}, {"v1", "By hand"}}));
}

TEST(GitHistory, GitShowsCheckOuts) {
  const GitScene scene;
  scene.Item("$/Suite/main.bas")->Checkout("I need it", "", kGetNo);
  EXPECT_EQ(scene.Repo("for-each-ref --format='%(refname) %(authorname) %(subject)' refs/checkouts"),
            "refs/checkouts/Suite/main.bas% Ann I need it");
  scene.Repo("pack-refs --all --prune");
  EXPECT_EQ(scene.Item("$/Suite/main.bas", "Ben")->IsCheckedOut(), platform::CheckoutState::ByOther);
  ExpectFailure(70, "VSSItem.Checkout", "Ann",
                [&] { scene.Item("$/Suite/main.bas", "Ben")->Checkout("", "", kGetNo); });
  CheckInText(scene, *scene.Item("$/Suite/Lib/a.cls"), "two");
  scene.Folder().MakeFile("new", "two");
  scene.Item("$/Suite/main.bas")->Checkin("c", "D:\\new", kKeepNo);
  EXPECT_EQ(scene.Repo("for-each-ref refs/checkouts"), "");
  scene.Repo("fsck --strict");
}

TEST(GitHistory, AMergeIsNoVersionOfWhatItTookOver) {
  const GitScene scene;
  scene.Shell(
      "seed",
      "git checkout -q -b side && echo 2 > Suite/main.bas && git commit -qam side && git checkout -q main && "
      "echo 2 > Suite/Lib/a.cls && git commit -qam ours && git merge -q -m merge side && "
      "git push -q ../db/repo.git main");
  std::vector<std::string> comments;
  const auto versions = scene.Item("$/Suite/main.bas")->Versions();
  while (const auto version = versions->Next()) comments.push_back(version->Comment());
  EXPECT_EQ(comments, (std::vector<std::string>{"side", "First"}));
}

// --- a repository with a work tree ---

TEST(GitWorkTree, FollowsACheckIn) {
  const GitScene scene;
  scene.WriteIni("", "seed/srcsafe.ini");
  scene.Shell("seed", "echo srcsafe.ini > .git/info/exclude");
  scene.Folder().MakeFile("seed/Suite/Lib/a.cls", "local work");
  const auto item = scene.Open("Ann", "D:\\seed\\srcsafe.ini")->VSSItem("$/Suite/main.bas", false);
  item->Checkout("", "", kGetNo);
  scene.Folder().MakeFile("seed/Suite/main.bas", "two");
  item->Checkin("second", "D:\\seed\\Suite\\main.bas", kKeepNo);
  EXPECT_EQ(scene.Git("seed", "status --porcelain"), " M Suite/Lib/a.cls");
  EXPECT_EQ(scene.Folder().Content("seed/Suite/Lib/a.cls"), "local work");
  EXPECT_EQ(scene.Git("seed", "log -1 --format=%s"), "second");
  // A file that comes from elsewhere reaches the work tree too.
  item->Checkout("", "", kGetNo);
  scene.Folder().MakeFile("elsewhere", "three");
  item->Checkin("third", "D:\\elsewhere", kKeepNo);
  EXPECT_EQ(scene.Folder().Content("seed/Suite/main.bas"), "three");
  EXPECT_EQ(scene.Git("seed", "status --porcelain"), " M Suite/Lib/a.cls");
}

TEST(GitWorkTree, OtherBranchesLeaveItAlone) {
  const GitScene scene;
  scene.WriteIni("[git]\nbranch=other\n", "seed/srcsafe.ini");
  scene.Git("seed", "branch other");
  scene.Shell("seed", "echo srcsafe.ini > .git/info/exclude");
  const auto item = scene.Open("Ann", "D:\\seed\\srcsafe.ini")->VSSItem("$/Suite/main.bas", false);
  CheckInText(scene, *item, "two");
  EXPECT_EQ(scene.Git("seed", "status --porcelain"), "");
  EXPECT_EQ(scene.Git("seed", "show other:Suite/main.bas"), "two");
  EXPECT_EQ(scene.Git("seed", "show main:Suite/main.bas"), "main");
}

}  // namespace
}  // namespace hearthmake::git
