#include "project/clVBProject.hpp"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "support/ProjectBench.hpp"

namespace hearthmake {
namespace {

using support::Failure;
using support::FailureOf;
using support::kNoFailure;

clFile Opened(support::Workbench& bench, const std::string& text) {
  bench.Write("C:\\src\\x.vbp", text);
  clFile file;
  file.SetFile("C:\\src\\x.vbp");
  file.OpenFile();
  return file;
}

bool SkipNothing(const clVBProject&, Setting) { return false; }

TEST(clVBProject, CutsEverySettingAtItsWidth) {
  clVBProject record;
  const std::map<std::string, std::size_t> widths = {{"Name", 30},
                                                     {"Startup", 40},
                                                     {"HelpFile", 50},
                                                     {"ProjectType", 10},
                                                     {"Title", 50},
                                                     {"ExeName32", 30},
                                                     {"HelpContextID", 9},
                                                     {"CompatibleMode", 3},
                                                     {"MajorVer", 4},
                                                     {"MinorVer", 4},
                                                     {"RevisionVer", 4},
                                                     {"AutoIncrementVer", 1},
                                                     {"CompilationType", 2},
                                                     {"OptimizationType", 1},
                                                     {"FavorPentiumPro", 2},
                                                     {"CodeViewDebugInfo", 2},
                                                     {"NoAliasing", 2},
                                                     {"BoundsCheck", 2},
                                                     {"OverflowCheck", 2},
                                                     {"FlPointCheck", 2},
                                                     {"FDIVCheck", 2},
                                                     {"UnroundedFP", 2},
                                                     {"StartMode", 1},
                                                     {"Unattended", 2},
                                                     {"Retained", 1},
                                                     {"ThreadPerObject", 2},
                                                     {"MaxNumberOfThreads", 9},
                                                     {"DllBaseAddress", 10},
                                                     {"ThreadingModel", 1},
                                                     {"NoControlUpgrade", 1},
                                                     {"RemoveUnusedControlInfo", 1},
                                                     {"ServerSupportFiles", 1}};
  for (const SettingInfo& info : AllSettings()) {
    const auto width = widths.find(std::string(info.name));
    record.Let(info.setting, std::string(300, 'x'));
    EXPECT_EQ(record.Stored(info.setting).size(), width == widths.end() ? 255 : width->second) << info.name;
  }
}

TEST(clVBProject, ReadsTheFieldWithoutOuterBlanks) {
  clVBProject record;
  record.Let(Setting::Title, "  \"A title\"  ");
  EXPECT_EQ(record.Get(Setting::Title), "\"A title\"");
}

TEST(clVBProject, ReadsABaseAddressThatHoldsNoNumberAs11000000) {
  clVBProject record;
  EXPECT_EQ(record.Get(Setting::DllBaseAddress), "&H11000000");
  record.Let(Setting::DllBaseAddress, "none");
  EXPECT_EQ(record.Get(Setting::DllBaseAddress), "&H11000000");
  record.Let(Setting::DllBaseAddress, "&H0");
  EXPECT_EQ(record.Get(Setting::DllBaseAddress), "&H11000000");
  EXPECT_EQ(record.Stored(Setting::DllBaseAddress), "&H0");
  record.Let(Setting::DllBaseAddress, "&H20000");
  EXPECT_EQ(record.Get(Setting::DllBaseAddress), "&H20000");
}

TEST(clVBProject, IsDirtyAfterEveryLet) {
  clVBProject record;
  EXPECT_FALSE(record.IsDirty());
  for (const SettingInfo& info : AllSettings()) {
    record.Let(info.setting, "");
    EXPECT_TRUE(record.IsDirty()) << info.name;
    record.SetClean();
    EXPECT_FALSE(record.IsDirty());
  }
}

TEST(clVBProject, BeginEditTakesWhatItFindsAsClean) {
  clVBProject record;
  record.Let(Setting::Title, "a");
  record.BeginEdit();
  EXPECT_FALSE(record.IsDirty());
}

TEST(clVBProject, BeginEditTwiceIsAnError) {
  clVBProject record;
  record.BeginEdit();
  EXPECT_EQ(FailureOf([&] { record.BeginEdit(); }),
            Failure(1004, "Project.BeginEdit", "Already in edit mode"));
}

TEST(clVBProject, CancelEditRestoresEverySetting) {
  clVBProject record;
  for (const SettingInfo& info : AllSettings()) record.Let(info.setting, "1");
  record.BeginEdit();
  for (const SettingInfo& info : AllSettings()) record.Let(info.setting, "2");
  record.CancelEdit();
  for (const SettingInfo& info : AllSettings()) EXPECT_EQ(record.Stored(info.setting), "1") << info.name;
  EXPECT_FALSE(record.IsDirty());
}

TEST(clVBProject, ApplyEditKeepsTheChangesAndLetsTheNextEditBegin) {
  clVBProject record;
  record.BeginEdit();
  record.Let(Setting::Title, "a");
  record.ApplyEdit();
  EXPECT_FALSE(record.IsDirty());
  EXPECT_EQ(record.Stored(Setting::Title), "a");
  EXPECT_EQ(FailureOf([&] { record.BeginEdit(); }), kNoFailure);
}

TEST(clVBProject, SavesAndLoadsEverySettingUnderItsName) {
  const support::ProjectBench bench;
  clVBProject record;
  int number = 0;
  for (const SettingInfo& info : AllSettings()) {
    record.Let(info.setting, automation::Decimal(number++ % 10));
  }
  const auto row = modDatabase::OpenDynaset("SELECT * FROM Project WHERE id = 0");
  row->AddNew();
  record.Save(*row);
  row->Update();
  row->Close();
  const auto saved = modDatabase::OpenDynaset("SELECT * FROM Project");
  ASSERT_FALSE(saved->AtEnd());
  number = 0;
  for (const SettingInfo& info : AllSettings()) {
    EXPECT_EQ(saved->GetText(info.name), automation::Decimal(number++ % 10)) << info.name;
  }
  clVBProject again;
  again.Load(*saved);
  EXPECT_FALSE(again.IsDirty());
  for (const SettingInfo& info : AllSettings()) {
    EXPECT_EQ(again.Stored(info.setting), record.Stored(info.setting)) << info.name;
  }
}

TEST(clVBProject, LoadsNullColumnsAsEmptyTexts) {
  const support::ProjectBench bench;
  modDatabase::GetDatabase()->Execute("INSERT INTO Project(ProjectPath) VALUES ('x')");
  const auto row = modDatabase::OpenDynaset("SELECT * FROM Project");
  clVBProject record;
  record.Let(Setting::Title, "before");
  record.Load(*row);
  EXPECT_EQ(record.Stored(Setting::Title), "");
}

TEST(clVBProject, ReadsEachSettingBehindTheFirstOccurrenceOfItsKey) {
  support::Workbench bench;
  const clFile file = Opened(bench,
                             "Type=OleDll\nFavorPentiumPro(tm)=-1\nName=\"A\"\nVersionCompanyName=\"Co\"\n"
                             "VersionFileDescription=\"File\"\nDescription=\"Own\"\nPath32=\"last\"");
  clVBProject record;
  record.Let(Setting::HelpFile, "gone");
  record.Read(file);
  EXPECT_EQ(record.Stored(Setting::ProjectType), "OleDll");
  EXPECT_EQ(record.Stored(Setting::FavorPentiumPro), "-1");
  EXPECT_EQ(record.Stored(Setting::Name), "\"A\"");
  EXPECT_EQ(record.Stored(Setting::VersionFileDescription), "\"File\"");
  EXPECT_EQ(record.Stored(Setting::Description), "\"File\"") << "the longer key comes first";
  EXPECT_EQ(record.Stored(Setting::HelpFile), "") << "a key that is absent reads as empty";
  EXPECT_EQ(record.Stored(Setting::Path32), "") << "no line end behind it";
  EXPECT_TRUE(record.IsDirty());
}

TEST(clVBProject, ReadingNeedsAnOpenFile) {
  support::Workbench bench;
  clFile file = Opened(bench, "Type=Exe\n");
  file.CloseFile();
  clVBProject record;
  EXPECT_EQ(FailureOf([&] { record.Read(file); }), Failure(45, "cFile.GetText", "File is not open"));
}

TEST(clVBProject, WritesEverySettingButTheType) {
  support::Workbench bench;
  clFile file = Opened(bench, "Type=Exe\nTitle=\"Old\"\nMajorVer=1\nForm=a.frm\n");
  clVBProject record;
  record.Let(Setting::ProjectType, "OleDll");
  record.Let(Setting::Title, "\"New\"");
  record.Let(Setting::MajorVer, "2");
  record.Let(Setting::FavorPentiumPro, "-1");
  record.Write(file, &SkipNothing);
  EXPECT_EQ(file.Content(),
            "Type=Exe\r\nTitle=\"New\"\r\nMajorVer=2\r\nForm=a.frm\r\nFavorPentiumPro(tm)=-1\r\n");
}

TEST(clVBProject, WritesMissingSettingsInListOrderBeforeTheFirstSection) {
  support::Workbench bench;
  clFile file = Opened(bench, "Type=Exe\n[Tool]\nA=1\n[Other]\n");
  clVBProject record;
  record.Let(Setting::NoControlUpgrade, "1");
  record.Let(Setting::Name, "\"A\"");
  record.Write(file, &SkipNothing);
  EXPECT_EQ(file.Content(), "Type=Exe\r\nName=\"A\"\r\nNoControlUpgrade=1\r\n[Tool]\r\nA=1\r\n[Other]\r\n");
}

TEST(clVBProject, LeavesSettingsWithoutTextAsTheFileHasThem) {
  support::Workbench bench;
  clFile file = Opened(bench, "Type=Exe\nTitle=\"Old\"\n");
  clVBProject().Write(file, &SkipNothing);
  EXPECT_EQ(file.Content(), "Type=Exe\r\nTitle=\"Old\"\r\n");
}

TEST(clVBProject, AddsNoBaseAddressThatNobodySet) {
  support::Workbench bench;
  clFile file = Opened(bench, "Type=OleDll\n");
  clVBProject record;
  EXPECT_EQ(record.Get(Setting::DllBaseAddress), "&H11000000");
  record.Write(file, &SkipNothing);
  EXPECT_EQ(file.Content(), "Type=OleDll\r\n");
}

TEST(clVBProject, WritesADescriptionOverTheLongerKeyThatComesFirstAndAddsThatAgain) {
  support::Workbench bench;
  clFile file = Opened(bench, "Type=Exe\nVersionFileDescription=\"File\"\nEnd=1\n");
  clVBProject record;
  record.Read(file);
  record.Write(file, &SkipNothing);
  // Reading found the one row for both keys, and so does writing; but no setting is lost.
  const std::string expected =
      "Type=Exe\r\nDescription=\"File\"\r\nEnd=1\r\nVersionFileDescription=\"File\"\r\n";
  EXPECT_EQ(file.Content(), expected);
  record.Write(file, &SkipNothing);
  EXPECT_EQ(file.Content(), expected);
}

// Row by row, the long way; what a project's Write may shorten but never change.
void WriteRowByRow(const clVBProject& project, clFile& file) {
  const auto isWritten = [&](const SettingInfo& info) {
    return info.setting != Setting::ProjectType && !project.Stored(info.setting).empty();
  };
  for (const SettingInfo& info : AllSettings()) {
    if (!isWritten(info)) continue;
    const std::string row = std::string(info.marker) + project.Stored(info.setting);
    std::int32_t position = 1;
    file.ReplaceRow(info.marker, row, position);
    if (position == 0) file.InsertNewRow(row, "[", true);
  }
  for (const SettingInfo& info : AllSettings()) {
    if (!isWritten(info) || file.InFile(info.marker) != 0) continue;
    file.InsertNewRow(std::string(info.marker) + project.Stored(info.setting), "[", true);
  }
}

TEST(clVBProject, WritesWhatReplacingRowByRowWrites) {
  clVBProject project;
  project.Let(Setting::Name, "\"N\"");
  project.Let(Setting::VersionFileDescription, "\"F\"");
  project.Let(Setting::Description, "\"D\"");
  project.Let(Setting::ThreadPerObject, "0");
  project.Let(Setting::CondComp, "\"Name=1\"");
  const std::vector<std::string> rows = {
      "Name=\"N\"",        "Name=\"M\"",        "VersionFileDescription=\"F\"",
      "Description=\"D\"", "ThreadPerObject=0", "CondComp=\"Name=1\"",
      "[Section]",         "Form=a[1].frm",     ""};
  std::mt19937 random(11);
  for (int round = 0; round < 20000; ++round) {
    std::string content = "Type=Exe\r\n";
    for (auto count = random() % 8; count > 0; --count) content += rows[random() % rows.size()] + "\r\n";
    clFile quick;
    clFile slow;
    quick.SetContent(content);
    slow.SetContent(content);
    project.Write(quick, [](const clVBProject&, Setting) { return false; });
    WriteRowByRow(project, slow);
    ASSERT_EQ(quick.Content(), slow.Content()) << content;
  }
}

}  // namespace
}  // namespace hearthmake
