#include "host/run/ChangeFinder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "build/Build.hpp"
#include "host/Session.hpp"
#include "support/Workbench.hpp"

namespace hearthmake::host {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::int64_t kSecond = 1'000'000'000;

TEST(IsNewer, CountsEqualTimesAsNotNewer) {
  EXPECT_FALSE(IsNewer(5, 5));
  EXPECT_TRUE(IsNewer(6, 5));
  EXPECT_FALSE(IsNewer(4, 5));
}

TEST(IsNewer, TakesWholeSecondsOfABinaryForAllThatItsDiskKeeps) {
  EXPECT_FALSE(IsNewer(7 * kSecond + 999'999'999, 7 * kSecond));
  EXPECT_TRUE(IsNewer(8 * kSecond, 7 * kSecond));
  EXPECT_TRUE(IsNewer(7 * kSecond + 2, 7 * kSecond + 1));
}

// Lib, a library of every kind of source; App, which references it; Tool, which stands alone. All binaries
// are ten seconds newer than all else.
class ChangeFinderTest : public testing::Test {
 protected:
  ChangeFinderTest() : build(automation::Make<Build>()) {
    build->SetName("Shop");
    build->BeginEdit();
    build->ApplyEdit();
    bench.Write(
        "C:\\src\\Lib.vbp",
        "Type=OleDll\nClass=Money; Money.cls\nModule=m; ..\\common\\m.bas\nForm=f.frm\nUserControl=Grid.ctl\n"
        "PropertyPage=p.pag\nUserDocument=d.dob\nDesigner=e.dsr\nResFile32=\"Lib.res\"\nRelatedDoc=read.txt\n"
        "Name=\"Lib\"\n");
    bench.Write("C:\\src\\App.vbp", "Type=Exe\nReference=*\\ALib.vbp\nName=\"App\"\n");
    bench.Write("C:\\src\\Tool.vbp", "Type=Exe\nName=\"Tool\"\n");
    for (const char* name :
         {"Money.cls", "f.frm", "f.frx", "Grid.ctl", "Grid.ctx", "p.pag", "p.pgx", "d.dob", "d.dox", "e.dsr",
          "e.dsx", "e.dca", "Lib.res", "read.txt", "..\\common\\m.bas"}) {
      bench.Write(std::string("C:\\src\\") + name, "source");
    }
    for (const char* name : {"Lib.vbp", "App.vbp", "Tool.vbp"})
      build->Projects().Add(std::string("C:\\src\\") + name);
    build->AutoDetectReferences();
    build->Projects().SetCompileOrder();
    for (const auto& entry : fs::recursive_directory_iterator(bench.root.Path("drive_c")))
      SetTime(entry.path(), 0);
    for (const char* name : {"Lib.dll", "App.exe", "Tool.exe"}) MakeBinary(name);
  }

  static void SetTime(const fs::path& path, int seconds) {
    if (!fs::is_regular_file(path)) return;
    // In the middle of a second, so that whole seconds mean nothing.
    static const auto kStart = std::chrono::time_point_cast<std::chrono::seconds>(
                                   fs::file_time_type::clock::now() - std::chrono::hours(1)) +
                               std::chrono::milliseconds(500);
    fs::last_write_time(path, kStart + std::chrono::seconds(seconds));
  }
  void Touch(const std::string& name, int seconds) const {
    SetTime(bench.Posix("C:\\src\\" + name), seconds);
  }
  void MakeBinary(const std::string& name) const {
    bench.Write("C:\\src\\" + name, "binary");
    Touch(name, 10);
  }

  RunPlan Find() {
    const ProjectList projects = AllProjects(*build);
    RunPlan plan(projects);
    const RewrittenFiles rewritten(*bench.files, "C:\\data\\stamps-1.json");
    ChangeFinder(*bench.files, rewritten, [](const std::string& path) {
      return path;
    }).LeaveOutUpToDate(plan, projects, ProjectGraph(projects));
    return plan;
  }
  std::vector<std::string> Changed() {
    const RunPlan plan = Find();
    std::vector<std::string> names;
    for (const PlannedProject& planned : plan.Projects()) {
      if (planned.Runs()) names.push_back(planned.name);
    }
    return names;
  }
  std::string ReasonOf(const std::string& name) {
    const RunPlan plan = Find();
    for (const PlannedProject& planned : plan.Projects()) {
      if (planned.name == name) return planned.reason;
    }
    return {};
  }

  support::Workbench bench;
  automation::Ref<Build> build;
};

TEST_F(ChangeFinderTest, FindsNothingWhereEveryBinaryIsNewer) {
  EXPECT_THAT(Changed(), IsEmpty());
  EXPECT_EQ(Find().Count(RunChoice::UpToDate), 3U);
  EXPECT_EQ(ReasonOf("Lib"), "up to date");
}

TEST_F(ChangeFinderTest, FindsEachKindOfSourceThatIsNewer) {
  for (const char* name :
       {"Lib.vbp", "Money.cls", "f.frm", "f.frx", "Grid.ctl", "Grid.ctx", "p.pag", "p.pgx", "d.dob", "d.dox",
        "e.dsr", "e.dsx", "e.dca", "Lib.res", "read.txt", "..\\common\\m.bas"}) {
    SCOPED_TRACE(name);
    Touch(name, 11);
    EXPECT_THAT(Changed(), ElementsAre("Lib", "App"));
    const std::string file = std::string(name).substr(std::string(name).rfind('\\') + 1);
    EXPECT_THAT(ReasonOf("Lib"), HasSubstr("\\" + file + " ("));
    EXPECT_THAT(ReasonOf("Lib"), HasSubstr(") is newer than C:\\src\\Lib.dll ("));
    EXPECT_EQ(ReasonOf("App"), "it depends on Lib, which is compiled");
    Touch(name, 10);
    EXPECT_THAT(Changed(), IsEmpty());
  }
}

TEST_F(ChangeFinderTest, TakesAMissingSourceForChangedButForThoseThatACompileDoesWithout) {
  for (const char* name : {"f.frx", "Grid.ctx", "p.pgx", "d.dox", "e.dsx", "e.dca", "read.txt"})
    fs::remove(bench.Posix(std::string("C:\\src\\") + name));
  EXPECT_THAT(Changed(), IsEmpty());
  fs::remove(bench.Posix("C:\\src\\Money.cls"));
  EXPECT_THAT(Changed(), ElementsAre("Lib", "App"));
  EXPECT_EQ(ReasonOf("Lib"), "C:\\src\\Money.cls is missing");
}

TEST_F(ChangeFinderTest, TakesAMissingBinaryOrProjectFileForChanged) {
  fs::remove(bench.Posix("C:\\src\\Tool.exe"));
  EXPECT_THAT(Changed(), ElementsAre("Tool"));
  EXPECT_EQ(ReasonOf("Tool"), "C:\\src\\Tool.exe is missing");
  MakeBinary("Tool.exe");
  fs::remove(bench.Posix("C:\\src\\Tool.vbp"));
  EXPECT_EQ(ReasonOf("Tool"), "C:\\src\\Tool.vbp is missing");
}

TEST_F(ChangeFinderTest, ComparesWithTheBinariesThatAreReferenced) {
  Touch("Lib.dll", 11);
  EXPECT_THAT(Changed(), ElementsAre("App"));
  EXPECT_THAT(ReasonOf("App"), HasSubstr("C:\\src\\Lib.dll ("));
}

TEST_F(ChangeFinderTest, DoesNotCompareWithABinaryThatIsMadeOnceMoreBehind) {
  bench.Write("C:\\src\\Twin.vbp", "Type=OleDll\nExeName32=\"Lib.dll\"\nName=\"Twin\"\n");
  build->Projects().Add("C:\\src\\Twin.vbp");
  Touch("Twin.vbp", 0);
  Touch("Lib.dll", 11);
  EXPECT_THAT(Changed(), IsEmpty());
  FindProject(*build, "Twin")->SetCompileMe(false);
  EXPECT_THAT(Changed(), ElementsAre("App"));
}

TEST_F(ChangeFinderTest, NeverCompilesWhatIsSwitchedOffNorForItsSake) {
  FindProject(*build, "Lib")->SetCompileMe(false);
  Touch("Money.cls", 11);
  EXPECT_THAT(Changed(), IsEmpty());
  EXPECT_EQ(Find().Count(RunChoice::SwitchedOff), 1U);
}

TEST_F(ChangeFinderTest, FollowsDependenciesThroughAProjectThatIsSwitchedOff) {
  bench.Write("C:\\src\\Lib.vbp", "Type=OleDll\nReference=*\\ABase.vbp\nName=\"Lib\"\n");
  bench.Write("C:\\src\\Base.vbp", "Type=OleDll\nName=\"Base\"\n");
  build->Projects().Add("C:\\src\\Base.vbp");
  build->AutoDetectReferences();
  build->Projects().SetCompileOrder();
  for (const char* name : {"Lib.vbp", "Base.vbp"}) Touch(name, 0);
  FindProject(*build, "Lib")->SetCompileMe(false);
  EXPECT_THAT(Changed(), ElementsAre("Base", "App"));
  EXPECT_EQ(ReasonOf("App"), "it depends on Base, which is compiled");
}

TEST_F(ChangeFinderTest, TellsTimesThatAreCloseToTheLastDigit) {
  const auto time = fs::last_write_time(bench.Posix("C:\\src\\Lib.dll"));
  fs::last_write_time(bench.Posix("C:\\src\\Money.cls"), time + std::chrono::nanoseconds(7));
  EXPECT_THAT(ReasonOf("Lib"), HasSubstr(".500000007) is newer than"));
  EXPECT_THAT(ReasonOf("Lib"), HasSubstr(".500000000)"));
}

}  // namespace
}  // namespace hearthmake::host
