// Project files of two real suites go through reading and updating.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <set>

#include "build/Projects.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/mFindFiles.hpp"
#include "project/Project.hpp"
#include "project/ProjectGroup.hpp"
#include "support/ProjectBench.hpp"

namespace hearthmake {
namespace {

namespace fs = std::filesystem;
using support::Failure;
using support::FailureOf;
using support::kNoFailure;
using support::ProjectBench;

// The folder that holds copies of the suites; another one can be named by the environment.
std::string SuitesFolder() {
  const char* named = std::getenv("HEARTHMAKE_SUITES");
  return named != nullptr ? named : SOURCE_DIRECTORY "/../shared/solutions";
}

// Every file is a library, whose id is made of its path.
class EveryFileALibrary final : public platform::TypeLibReader {
 public:
  platform::TypeLibInfo Read(std::string_view path) override {
    platform::TypeLibInfo info;
    const std::size_t hash = std::hash<std::string>{}(automation::Lower(path));
    info.guid = "{" + automation::Hex(static_cast<std::int32_t>(hash)) + "-0000-0000-0000-000000000000}";
    info.majorVersion = 1;
    return info;
  }
  std::vector<platform::TypeDescription> ReadTypes(std::string_view) override { return {}; }
};

std::vector<std::string> RowsOf(const std::string& bytes) {
  std::vector<std::string> rows;
  std::size_t start = 0;
  while (start < bytes.size()) {
    const std::size_t end = std::min(bytes.find("\r\n", start), bytes.size());
    rows.push_back(bytes.substr(start, end - start));
    start = end + 2;
  }
  return rows;
}

bool IsReference(const std::string& row) {
  return row.starts_with("Reference=") || row.starts_with("Object=");
}

bool IsSetting(const std::string& row) {
  const auto& settings = AllSettings();
  return std::any_of(settings.begin(), settings.end(), [&](const SettingInfo& info) {
    return info.setting != Setting::ProjectType && row.starts_with(info.marker);
  });
}

// What an update must leave as it is, in its order.
std::vector<std::string> OtherRows(const std::string& bytes) {
  std::vector<std::string> rows = RowsOf(bytes);
  std::erase_if(rows, [](const std::string& row) { return IsReference(row) || IsSetting(row); });
  return rows;
}

std::multiset<std::string> SettingRows(const std::string& bytes) {
  const std::vector<std::string> rows = RowsOf(bytes);
  std::multiset<std::string> settings;
  std::copy_if(rows.begin(), rows.end(), std::inserter(settings, settings.end()), IsSetting);
  return settings;
}

// The row of the file description when it is the first that holds "Description="; empty otherwise.
std::string DescriptionLender(const std::string& bytes) {
  for (const std::string& row : RowsOf(bytes)) {
    if (row.find("Description=") != std::string::npos) {
      return row.starts_with("VersionFileDescription=") ? row : std::string();
    }
  }
  return {};
}

std::size_t LoneLineFeeds(const std::string& bytes) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r')) ++count;
  }
  return count;
}

class ProjectSuites : public testing::Test {
 protected:
  ProjectSuites() : m_apartment(Ports()) {}
  ~ProjectSuites() override {
    bench.build->RemoveSink(bench.sink);
    bench.build = automation::Make<Build>();  // the projects go before their apartment
  }

  // False when the suite is not there.
  bool Copy(const std::string& suite) {
    const fs::path from = fs::path(SuitesFolder()) / suite;
    if (!fs::exists(from)) return false;
    fs::copy(from, bench.root.Path("drive_c/src/" + suite), fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(bench.root.Path("drive_c/src"))) {
      fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add);
    }
    return true;
  }

  void CheckUpdates(Projects& projects) {
    std::map<std::string, std::string> before;
    for (const auto& project : projects.All()) {
      before[project->ProjectPath()] = bench.Read(project->ProjectPath());
    }
    for (const auto& project : projects.All()) {
      SCOPED_TRACE(project->ProjectPath());
      CheckUpdate(*project, before[project->ProjectPath()]);
    }
  }

  void CheckUpdate(Project& project, const std::string& old) {
    std::multiset<std::string> settings = SettingRows(old);
    const std::string fileDescription = DescriptionLender(old);
    if (!fileDescription.empty()) {
      // The row of the file description has lent its text to the description, which has a row now. One more
      // update puts the added rows in the order that stays.
      EXPECT_EQ(FailureOf([&] { project.UpdateVBP(); }), kNoFailure);
      settings.insert(fileDescription.substr(std::string("VersionFile").size()));
    }
    EXPECT_EQ(FailureOf([&] { project.UpdateVBP(); }), kNoFailure);
    const std::string settled = bench.Read(project.ProjectPath());
    EXPECT_EQ(OtherRows(settled), OtherRows(old));
    EXPECT_EQ(SettingRows(settled), settings);
    EXPECT_EQ(LoneLineFeeds(settled), LoneLineFeeds(old));
    EXPECT_EQ(FailureOf([&] { project.UpdateVBP(); }), kNoFailure);
    EXPECT_EQ(bench.Read(project.ProjectPath()), settled);
  }

  // Detected again in the files that were written, each project still has as many references.
  static void CheckRedetection(Projects& projects) {
    for (const auto& project : projects.All()) {
      const auto count = [&] {
        const auto items = project->ReferenceList().Items();
        const auto internal =
            std::count_if(items.begin(), items.end(), [](const auto& item) { return !item->IsExternal(); });
        return std::pair(items.size(), internal);
      };
      const auto before = count();
      project->GetReferencesFromVBP();
      EXPECT_EQ(count(), before) << project->ProjectPath();
    }
  }

  ProjectBench bench;

 private:
  platform::Platform Ports() {
    platform::Platform ports = bench.apartment->Ports();
    ports.typeLibs = std::make_shared<EveryFileALibrary>();
    return ports;
  }
  Apartment m_apartment;
};

TEST_F(ProjectSuites, EveryFileOfCairoIsRead) {
  if (!Copy("cairo")) GTEST_SKIP() << "the suites are not in " << SuitesFolder();
  const auto paths = mFindFiles::FindFiles("C:\\src\\cairo\\", ".vbp");
  EXPECT_EQ(paths.size(), 350U);
  for (const std::string& path : paths) {
    const auto project = automation::Make<Project>();
    EXPECT_EQ(FailureOf([&] { project->LoadFromFile(path); }), kNoFailure) << path;
    EXPECT_NE(project->Name(), "") << path;
  }
}

TEST_F(ProjectSuites, EveryFileOfVbcorlibIsRead) {
  if (!Copy("vbcorlib")) GTEST_SKIP() << "the suites are not in " << SuitesFolder();
  const auto paths = mFindFiles::FindFiles("C:\\src\\vbcorlib\\", ".vbp");
  EXPECT_EQ(paths.size(), 20U);
  for (const std::string& path : paths) {
    const auto project = automation::Make<Project>();
    EXPECT_EQ(FailureOf([&] { project->LoadFromFile(path); }), kNoFailure) << path;
  }
}

TEST_F(ProjectSuites, UpdatesOfCairoKeepEveryRowAndSettle) {
  if (!Copy("cairo")) GTEST_SKIP() << "the suites are not in " << SuitesFolder();
  bench.build->CreateBuildFromPath("C:\\src\\cairo", false);
  Projects& projects = bench.build->Projects();
  EXPECT_EQ(projects.Count(), 210);
  std::size_t internal = 0;
  for (const auto& project : projects.All()) {
    for (const auto& item : project->ReferenceList().Items()) internal += item->IsExternal() ? 0U : 1U;
  }
  EXPECT_GT(internal, 900U);
  CheckUpdates(projects);
  CheckRedetection(projects);
}

std::vector<std::string> CompiledPaths(const Projects& projects) {
  std::vector<std::string> paths;
  for (const auto& project : projects.All()) {
    if (project->CompileMe()) paths.push_back(project->ProjectPath());
  }
  return paths;
}

TEST_F(ProjectSuites, GroupsOfCairoNameTheProjectsThatTheyWereMadeOf) {
  if (!Copy("cairo")) GTEST_SKIP() << "the suites are not in " << SuitesFolder();
  bench.build->CreateBuildFromPath("C:\\src\\cairo", false);
  Projects& projects = bench.build->Projects();
  ASSERT_GT(projects.Count(), 200);
  bench.files->CreateFolders("C:\\src\\cairo\\a\\group");
  bench.files->CreateFolders("C:\\else where");
  const std::vector<std::string> groups = {"C:\\all.vbg", "C:\\src\\all.vbg", "C:\\src\\cairo\\all.vbg",
                                           "C:\\src\\cairo\\a\\group\\all.vbg", "C:\\else where\\all.vbg"};
  std::mt19937 random(6);  // the same subsets each time
  for (int round = 0; round <= 20; ++round) {
    SCOPED_TRACE(round);
    for (const auto& project : projects.All()) project->SetCompileMe(round == 0 || random() % 2 == 0);
    const std::vector<std::string> expected = CompiledPaths(projects);
    for (const std::string& group : groups) {
      bench.build->CreateProjectGroupFile(group, projects.All()[random() % 200].Get());
      EXPECT_EQ(ReadProjectGroup(group), expected) << group;
    }
  }
}

TEST_F(ProjectSuites, UpdatesOfVbcorlibKeepEveryRowAndSettle) {
  if (!Copy("vbcorlib")) GTEST_SKIP() << "the suites are not in " << SuitesFolder();
  for (const std::string& group : mFindFiles::FindFiles("C:\\src\\vbcorlib\\", ".vbg")) {
    SCOPED_TRACE(group);
    const auto build = automation::Make<Build>();
    build->BeginEdit();
    build->SetName("Group");
    build->ApplyEdit();
    EXPECT_EQ(FailureOf([&] { build->Projects().Add(group); }), kNoFailure);
    EXPECT_GT(build->Projects().Count(), 0);
    EXPECT_EQ(FailureOf([&] { build->AutoDetectReferences(); }), kNoFailure);
    CheckUpdates(build->Projects());
    CheckRedetection(build->Projects());
  }
}

}  // namespace
}  // namespace hearthmake
