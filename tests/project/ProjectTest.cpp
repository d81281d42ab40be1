#include "project/Project.hpp"

#include <gtest/gtest.h>

#include <array>
#include <utility>

#include "build/Projects.hpp"
#include "support/ProjectBench.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using automation::Decimal;
using automation::Variant;
using support::Failure;
using support::FailureOf;
using support::kNoFailure;

class ProjectTest : public testing::Test {
 protected:
  Project& Dll(const std::string& moreRows = {}) { return bench.AddDll("C:\\src\\Lib.vbp", "Lib", moreRows); }
  // The text that the record holds for a setting, as the database gets it.
  static std::string Saved(Project& project, const std::string& column, const std::function<void()>& change) {
    project.BeginEdit();
    change();
    project.ApplyEdit();
    return support::ProjectBench::Stored(project, column);
  }

  support::ProjectBench bench;
};

TEST_F(ProjectTest, IsNewAndToBeCompiledAtCreation) {
  const auto project = automation::Make<Project>();
  EXPECT_EQ(project->Id(), 0);
  EXPECT_TRUE(project->CompileMe());
  EXPECT_EQ(project->CopyPath(), "");
  EXPECT_EQ(project->MtsPackageId(), 0);
  EXPECT_FALSE(project->PreserveBinary());
  EXPECT_FALSE(project->CheckInVBPFile());
  EXPECT_FALSE(project->CheckInBinaryFile());
  EXPECT_FALSE(project->CompiledOK());
  EXPECT_EQ(project->LastErrorMessage(), "");
  EXPECT_EQ(project->CompileError(), "");
  EXPECT_EQ(project->LastCompiled().value, 0);
}

TEST_F(ProjectTest, FileSizeExe32IsTheSizeOfTheBinary) {
  Project& project = Dll();
  EXPECT_EQ(project.FileSizeExe32(), 0);
  bench.WriteBytes("C:\\src\\Lib.dll", std::string(1234, 'x'));
  EXPECT_EQ(project.FileSizeExe32(), 1234);
}

TEST_F(ProjectTest, PropertiesAreTheSharedListOfSettingNames) {
  Project& project = Dll();
  SettingNames& names = project.Properties();
  EXPECT_EQ(names.Count(), 43);
  EXPECT_EQ(names.Item(Variant::FromLong(1)), "Name");
  EXPECT_EQ(names.Item(Variant::FromLong(4)), "ProjectType");
  EXPECT_EQ(names.Item(Variant::FromLong(22)), "FavorPentiumPro");
  EXPECT_EQ(names.Item(Variant::FromLong(43)), "NoControlUpgrade");
  EXPECT_EQ(&automation::Make<Project>()->Properties(), &names);
}

TEST_F(ProjectTest, FileNameHasNoFolder) {
  Project& project = Dll();
  EXPECT_EQ(project.FileName(), "Lib.vbp");
  EXPECT_EQ(automation::ToText(project.ProjectFileName()), "Lib.vbp");
  EXPECT_EQ(project.ProjectPath(), "C:\\src\\Lib.vbp");
}

TEST_F(ProjectTest, ProjectPathThatEndsInCapitalVbpIsAccepted) {
  Project& project = Dll();
  project.SetProjectPath("C:\\src\\Other.VBP");
  EXPECT_EQ(project.ProjectPath(), "C:\\src\\Other.VBP");
  EXPECT_EQ(project.FileName(), "Other.VBP");
}

TEST_F(ProjectTest, ProjectPathThatEndsInVbgIsRefused) {
  Project& project = Dll();
  EXPECT_EQ(FailureOf([&] { project.SetProjectPath("C:\\src\\Lib.vbg"); }),
            Failure(45, "Project.ProjectPath", "This is not a project file. No vbp extention"));
  EXPECT_EQ(project.LastErrorMessage(), "This is not a project file. No vbp extention");
  EXPECT_EQ(project.ProjectPath(), "C:\\src\\Lib.vbp");
}

TEST_F(ProjectTest, ProjectPathMustLeaveRoomForTheCommandLine) {
  Project& project = Dll();
  // The temporary folder is "C:\temp\": 8 characters, so 232 are the most that a path may have.
  const auto path = [](std::size_t length) { return "C:\\" + std::string(length - 7, 'a') + ".vbp"; };
  EXPECT_EQ(FailureOf([&] { project.SetProjectPath(path(232)); }), kNoFailure);
  EXPECT_EQ(FailureOf([&] { project.SetProjectPath(path(233)); }),
            Failure(BuildErrors::beCommandLineToLong, "Project.ProjectPath", "Project path is too long."));
  EXPECT_EQ(project.LastErrorMessage(), "Project path is too long.");
  EXPECT_EQ(project.ProjectPath(), path(232));
}

TEST_F(ProjectTest, ProjectPathIsMeasuredInCharacters) {
  Project& project = Dll();
  std::string accents;
  for (int i = 0; i < 200; ++i) accents += "\xC3\xA9";
  EXPECT_EQ(FailureOf([&] { project.SetProjectPath("C:\\" + accents + ".vbp"); }), kNoFailure);
}

TEST_F(ProjectTest, ProjectPathIsCheckedForItsExtensionFirst) {
  Project& project = Dll();
  EXPECT_EQ(FailureOf([&] { project.SetProjectPath(std::string(400, 'x')); }).text,
            "This is not a project file. No vbp extention");
}

TEST_F(ProjectTest, CopyPathIsCutAt255Characters) {
  Project& project = Dll();
  project.SetCopyPath("C:\\" + std::string(300, 'x'));
  EXPECT_EQ(project.CopyPath(), "C:\\" + std::string(252, 'x'));
  project.SetCopyPath("  C:\\bin  ");
  EXPECT_EQ(project.CopyPath(), "C:\\bin");
}

TEST_F(ProjectTest, NameIsTheTextBetweenTheQuotes) {
  EXPECT_EQ(bench.Add("C:\\src\\A.vbp", "Type=Exe\nName=\"A\"\n").Name(), "A");
}

TEST_F(ProjectTest, NameOfTwoQuotesIsEmpty) {
  EXPECT_EQ(bench.Add("C:\\src\\A.vbp", "Type=Exe\nName=\"\"\n").Name(), "");
}

TEST_F(ProjectTest, QuotedSettingWithoutQuotesLosesItsFirstAndLastCharacters) {
  Project& project = bench.Add("C:\\src\\A.vbp", "Type=Exe\nName=\"A\"\nTitle=\xC9t\xE9\n");
  EXPECT_EQ(project.Title(), "t");
}

struct TextProperty {
  const char* column;
  std::string (Project::*get)() const;
  void (Project::*let)(const std::string&);
  std::size_t width;
};
const std::array kTextProperties = {
    TextProperty{"Path32", &Project::Path32, &Project::SetPath32, 255},
    TextProperty{"CompatibleEXE32", &Project::CompatibleEXE32, &Project::SetCompatibleEXE32, 255},
    TextProperty{"HelpContextID", &Project::HelpContextID, &Project::SetHelpContextID, 9},
    TextProperty{"Command32", &Project::Command32, &Project::SetCommand32, 255},
    TextProperty{"ExeName32", &Project::ExeName32, &Project::SetExeName32, 30},
    TextProperty{"Title", &Project::Title, &Project::SetTitle, 50},
    TextProperty{"HelpFile", &Project::HelpFile, &Project::SetHelpFile, 50},
    TextProperty{"VersionProductName", &Project::VersionProductName, &Project::SetVersionProductName, 255},
    TextProperty{"VersionLegalCopyRight", &Project::VersionLegalCopyRight, &Project::SetVersionLegalCopyRight,
                 255},
    TextProperty{"VersionCompanyName", &Project::VersionCompanyName, &Project::SetVersionCompanyName, 255},
    TextProperty{"VersionComments", &Project::VersionComments, &Project::SetVersionComments, 255},
    TextProperty{"VersionFileDescription", &Project::VersionFileDescription,
                 &Project::SetVersionFileDescription, 255},
    TextProperty{"VersionLegalTrademarks", &Project::VersionLegalTrademarks,
                 &Project::SetVersionLegalTrademarks, 255},
    TextProperty{"CondComp", &Project::CondComp, &Project::SetCondComp, 255},
    TextProperty{"Description", &Project::Description, &Project::SetDescription, 255},
};

TEST_F(ProjectTest, TextPropertiesAreStoredTrimmedAndInQuotes) {
  Project& project = Dll();
  for (const TextProperty& property : kTextProperties) {
    SCOPED_TRACE(property.column);
    EXPECT_EQ(Saved(project, property.column, [&] { (project.*property.let)("  a \"b\"  "); }),
              "\"a \"b\"\"");
    EXPECT_EQ((project.*property.get)(), "a \"b\"");
  }
}

TEST_F(ProjectTest, TextPropertiesAreCutWithTheOpeningQuoteInsideTheWidth) {
  Project& project = Dll();
  for (const TextProperty& property : kTextProperties) {
    SCOPED_TRACE(property.column);
    const std::string letters(property.width - 1, 'x');
    // The closing quote does not fit; the reader drops the last character in its place.
    EXPECT_EQ(Saved(project, property.column, [&] { (project.*property.let)(letters + "yz"); }),
              "\"" + letters);
    EXPECT_EQ((project.*property.get)(), letters.substr(1));
  }
}

TEST_F(ProjectTest, EmptyTextPropertiesAreStoredAsTwoQuotes) {
  Project& project = Dll();
  for (const TextProperty& property : kTextProperties) {
    SCOPED_TRACE(property.column);
    EXPECT_EQ(Saved(project, property.column, [&] { (project.*property.let)("  "); }), "\"\"");
    const bool hasDefault = std::string(property.column) == "ExeName32";
    EXPECT_EQ((project.*property.get)(), hasDefault ? "Lib.dll" : "");
  }
}

TEST_F(ProjectTest, TitleOf60CharactersIsStoredCutTo50) {
  Project& project = Dll();
  const std::string stored = Saved(project, "Title", [&] { project.SetTitle(std::string(60, 'T')); });
  EXPECT_EQ(stored, "\"" + std::string(49, 'T'));
}

TEST_F(ProjectTest, WidthsCountCharactersAndCutNoneInTwo) {
  Project& project = Dll();
  std::string title;
  for (int i = 0; i < 60; ++i) title += "\xC3\xA9";
  project.SetTitle(title);
  EXPECT_EQ(project.Title(),
            title.substr(0, std::size_t{2} * 48));  // 49 behind the quote, the last one dropped
}

TEST_F(ProjectTest, SettingTextsDoesNotMakeTheProjectRecordDirty) {
  Project& project = Dll();
  project.SetTitle("Changed outside an edit");
  project.BeginEdit();  // takes what it finds as clean
  project.ApplyEdit();
  EXPECT_EQ(support::ProjectBench::Stored(project, "Title"), "\"Lib library\"");
}

struct NumberProperty {
  const char* name;
  std::int16_t (Project::*get)() const;
  void (Project::*let)(std::int16_t);
};
const std::array kVersions = {NumberProperty{"MajorVer", &Project::MajorVer, &Project::SetMajorVer},
                              NumberProperty{"MinorVer", &Project::MinorVer, &Project::SetMinorVer},
                              NumberProperty{"RevisionVer", &Project::RevisionVer, &Project::SetRevisionVer}};

TEST_F(ProjectTest, VersionNumbersFrom0To9999AreAccepted) {
  Project& project = Dll();
  for (const NumberProperty& version : kVersions) {
    SCOPED_TRACE(version.name);
    EXPECT_EQ(Saved(project, version.name, [&] { (project.*version.let)(9999); }), "9999");
    EXPECT_EQ((project.*version.get)(), 9999);
    EXPECT_EQ(Saved(project, version.name, [&] { (project.*version.let)(0); }), "0");
    EXPECT_EQ((project.*version.get)(), 0);
  }
}

TEST_F(ProjectTest, VersionNumbersOutsideTheRangeAreRefused) {
  Project& project = Dll();
  for (const NumberProperty& version : kVersions) {
    (project.*version.let)(7);
    for (const std::int16_t value : {std::int16_t{10000}, std::int16_t{-1}, std::int16_t{32767}}) {
      SCOPED_TRACE(version.name);
      EXPECT_EQ(
          FailureOf([&] { (project.*version.let)(value); }),
          Failure(45, std::string("Project.") + version.name, "Version number must be in range 0 to 9999"));
      EXPECT_EQ(project.LastErrorMessage(), "Version number must be in range 0 to 9999");
      EXPECT_EQ((project.*version.get)(), 7);
    }
  }
}

TEST_F(ProjectTest, VersionNumberThatIsNoNumberReadsAs0) {
  EXPECT_EQ(bench.Add("C:\\src\\A.vbp", "Type=Exe\nName=\"A\"\nMajorVer=abc\n").MajorVer(), 0);
}

TEST_F(ProjectTest, CompatibleModeIsAQuotedDigit) {
  Project& project = Dll();
  EXPECT_EQ(project.CompatibleMode(), CompatibleModes::NoCompatibility);
  const std::array modes = {std::pair{CompatibleModes::NoCompatibility, "\"0\""},
                            std::pair{CompatibleModes::ProjectCompatibility, "\"1\""},
                            std::pair{CompatibleModes::BinaryCompatibility, "\"2\""}};
  for (const auto& [mode, text] : modes) {
    EXPECT_EQ(Saved(project, "CompatibleMode", [&, m = mode] { project.SetCompatibleMode(m); }), text);
    EXPECT_EQ(project.CompatibleMode(), mode);
  }
}

TEST_F(ProjectTest, CompatibleModeReadsUnquotedDigitsAndTakesOtherTextsForNone) {
  EXPECT_EQ(bench.Add("C:\\src\\A.vbp", "Type=OleDll\nName=\"A\"\nCompatibleMode=2\n").CompatibleMode(),
            CompatibleModes::BinaryCompatibility);
  EXPECT_EQ(bench.Add("C:\\src\\B.vbp", "Type=OleDll\nName=\"B\"\nCompatibleMode=\"3\"\n").CompatibleMode(),
            CompatibleModes::NoCompatibility);
}

TEST_F(ProjectTest, ExeName32OfADllIsTheProjectFilesNameWithDll) { EXPECT_EQ(Dll().ExeName32(), "Lib.dll"); }

TEST_F(ProjectTest, ExeName32TakesItsExtensionFromTheType) {
  EXPECT_EQ(bench.Add("C:\\src\\P.vbp", "Type=Exe\nName=\"P\"\n").ExeName32(), "P.exe");
  EXPECT_EQ(bench.Add("C:\\src\\S.vbp", "Type=OleExe\nName=\"S\"\n").ExeName32(), "S.exe");
  EXPECT_EQ(bench.Add("C:\\src\\C.vbp", "Type=Control\nName=\"C\"\n").ExeName32(), "C.ocx");
  EXPECT_EQ(bench.Add("C:\\src\\D.vbp", "Type=Control\nName=\"D\"\nExeName32=\"My.ocx\"\n").ExeName32(),
            "My.ocx");
}

TEST_F(ProjectTest, ProjectTypeIsReadWithoutRegardToCaseAndBlanks) {
  EXPECT_EQ(bench.Add("C:\\src\\1.vbp", "Type=EXE\nName=\"A1\"\n").ProjectType(), ProjectTypes::StandardExe);
  EXPECT_EQ(bench.Add("C:\\src\\2.vbp", "Type= oledll \nName=\"A2\"\n").ProjectType(),
            ProjectTypes::ActiveXDll);
  EXPECT_EQ(bench.Add("C:\\src\\3.vbp", "Type=OleExe\nName=\"A3\"\n").ProjectType(),
            ProjectTypes::ActiveXExe);
  EXPECT_EQ(bench.Add("C:\\src\\4.vbp", "Type=CONTROL\nName=\"A4\"\n").ProjectType(),
            ProjectTypes::UserControl);
}

TEST_F(ProjectTest, UnknownProjectTypeIsAnError) {
  const auto project = automation::Make<Project>();
  const Failure expected(45, "Project.ProjectType", "Unknown project type");
  EXPECT_EQ(FailureOf([&] { project->ProjectType(); }), expected);
  EXPECT_EQ(FailureOf([&] { project->ExeName32(); }), expected);
  EXPECT_EQ(FailureOf([&] { project->ISActiveX(); }), expected);
  EXPECT_EQ(project->LastErrorMessage(), "Unknown project type");
}

TEST_F(ProjectTest, ActiveXAndInprocessFollowTheType) {
  const auto check = [&](const char* type, const char* name, bool isActiveX, bool isInprocess) {
    const Project& project = bench.Add(std::string("C:\\src\\") + name + ".vbp",
                                       std::string("Type=") + type + "\nName=\"" + name + "\"\n");
    EXPECT_EQ(project.ISActiveX(), isActiveX) << type;
    EXPECT_EQ(project.IsInprocess(), isInprocess) << type;
  };
  check("Exe", "P", false, false);
  check("OleExe", "S", true, false);
  check("OleDll", "L", true, true);
  check("Control", "C", true, true);
}

struct FlagProperty {
  const char* column;
  bool (Project::*get)() const;
  void (Project::*let)(bool);
  const char* trueText;
};
const std::array kFlags = {
    FlagProperty{"FavorPentiumPro", &Project::FavorPentiumPro, &Project::SetFavorPentiumPro, "-1"},
    FlagProperty{"ServerSupportFiles", &Project::RemoteServerFiles, &Project::SetRemoteServerFiles, "1"},
    FlagProperty{"AutoIncrementVer", &Project::AutoIncrementVer, &Project::SetAutoIncrementVer, "1"},
    FlagProperty{"FDIVCheck", &Project::FDIVCheck, &Project::SetFDIVCheck, "-1"},
    FlagProperty{"FlPointCheck", &Project::FlPointCheck, &Project::SetFlPointCheck, "-1"},
    FlagProperty{"OverflowCheck", &Project::OverflowCheck, &Project::SetOverflowCheck, "-1"},
    FlagProperty{"BoundsCheck", &Project::BoundsCheck, &Project::SetBoundsCheck, "-1"},
    FlagProperty{"NoAliasing", &Project::NoAliasing, &Project::SetNoAliasing, "-1"},
    FlagProperty{"CodeViewDebugInfo", &Project::CodeViewDebugInfo, &Project::SetCodeViewDebugInfo, "-1"},
    FlagProperty{"UnroundedFP", &Project::UnroundedFP, &Project::SetUnroundedFP, "-1"},
    FlagProperty{"Unattended", &Project::Unattended, &Project::SetUnattended, "-1"},
    FlagProperty{"Retained", &Project::Retained, &Project::SetRetained, "1"},
    FlagProperty{"ThreadPerObject", &Project::ThreadPerObject, &Project::SetThreadPerObject, "-1"},
    FlagProperty{"RemoveUnusedControlInfo", &Project::RemoveUnusedControlInfo,
                 &Project::SetRemoveUnusedControlInfo, "1"},
};

TEST_F(ProjectTest, FlagsAreStoredAsTheProjectFileHasThem) {
  Project& project = Dll();
  for (const FlagProperty& flag : kFlags) {
    SCOPED_TRACE(flag.column);
    EXPECT_EQ(Saved(project, flag.column, [&] { (project.*flag.let)(true); }), flag.trueText);
    EXPECT_TRUE((project.*flag.get)());
    EXPECT_EQ(Saved(project, flag.column, [&] { (project.*flag.let)(false); }), "0");
    EXPECT_FALSE((project.*flag.get)());
  }
}

TEST_F(ProjectTest, FlagsThatTheFileLacksAreOff) {
  const auto project = automation::Make<Project>();
  for (const FlagProperty& flag : kFlags) {
    const bool isOnByDefault = std::string(flag.column) == "RemoveUnusedControlInfo";
    EXPECT_EQ((project.Get()->*flag.get)(), isOnByDefault) << flag.column;
  }
}

TEST_F(ProjectTest, RemoveUnusedControlInfoReadsTrueForAProjectThatNeverHadTheKey) {
  EXPECT_TRUE(Dll().RemoveUnusedControlInfo());
  EXPECT_FALSE(bench.AddDll("C:\\src\\B.vbp", "B", "RemoveUnusedControlInfo=0\n").RemoveUnusedControlInfo());
}

TEST_F(ProjectTest, OptimizationTypeIsADigit) {
  Project& project = Dll();
  EXPECT_EQ(project.OptimizationType(), OptimizationTypes::FastCode);
  EXPECT_EQ(Saved(project, "OptimizationType",
                  [&] { project.SetOptimizationType(OptimizationTypes::NoOptimization); }),
            "2");
  EXPECT_EQ(project.OptimizationType(), OptimizationTypes::NoOptimization);
  EXPECT_EQ(
      Saved(project, "OptimizationType", [&] { project.SetOptimizationType(OptimizationTypes::SmallCode); }),
      "1");
  EXPECT_EQ(
      Saved(project, "OptimizationType", [&] { project.SetOptimizationType(OptimizationTypes::FastCode); }),
      "0");
}

TEST_F(ProjectTest, CompilationTypeIsStoredInverted) {
  Project& project = Dll();
  EXPECT_EQ(project.CompilationType(), CompilationTypes::NativeCode);
  EXPECT_EQ(Saved(project, "CompilationType", [&] { project.SetCompilationType(CompilationTypes::PCode); }),
            "-1");
  EXPECT_EQ(project.CompilationType(), CompilationTypes::PCode);
  EXPECT_EQ(
      Saved(project, "CompilationType", [&] { project.SetCompilationType(CompilationTypes::NativeCode); }),
      "0");
  EXPECT_EQ(project.CompilationType(), CompilationTypes::NativeCode);
}

TEST_F(ProjectTest, StartModeIsAnActiveXComponentExactlyWhen1) {
  Project& project = Dll();
  EXPECT_EQ(project.StartMode(), StartModes::StandAlone);
  EXPECT_EQ(Saved(project, "StartMode", [&] { project.SetStartMode(StartModes::ActiveXComponent); }), "1");
  EXPECT_EQ(project.StartMode(), StartModes::ActiveXComponent);
  EXPECT_EQ(Saved(project, "StartMode", [&] { project.SetStartMode(StartModes::StandAlone); }), "0");
}

TEST_F(ProjectTest, UnattendedSetToFalseTurnsRetainedOff) {
  Project& project = Dll();
  project.SetUnattended(true);
  project.SetRetained(true);
  project.SetUnattended(false);
  EXPECT_FALSE(project.Unattended());
  EXPECT_FALSE(project.Retained());
}

TEST_F(ProjectTest, UnattendedSetToTrueLeavesRetained) {
  Project& project = Dll();
  project.SetRetained(true);
  project.SetUnattended(true);
  EXPECT_TRUE(project.Retained());
  project.SetRetained(false);
  project.SetUnattended(true);
  EXPECT_FALSE(project.Retained());
}

TEST_F(ProjectTest, MaxNumberOfThreadsIsADecimalText) {
  Project& project = Dll();
  EXPECT_EQ(project.MaxNumberOfThreads(), 0);
  EXPECT_EQ(Saved(project, "MaxNumberOfThreads", [&] { project.SetMaxNumberOfThreads(123456); }), "123456");
  EXPECT_EQ(project.MaxNumberOfThreads(), 123456);
  project.SetMaxNumberOfThreads(-3);
  EXPECT_EQ(project.MaxNumberOfThreads(), -3);
  project.SetMaxNumberOfThreads(2147483647);  // the field has nine characters
  EXPECT_EQ(project.MaxNumberOfThreads(), 214748364);
}

TEST_F(ProjectTest, ThreadingModelIsApartmentWhen1) {
  Project& project = Dll();
  EXPECT_EQ(project.ThreadingModel(), ThreadingModels::SingleThreaded);
  EXPECT_EQ(Saved(project, "ThreadingModel",
                  [&] { project.SetThreadingModel(ThreadingModels::ApartmentThreaded); }),
            "1");
  EXPECT_EQ(project.ThreadingModel(), ThreadingModels::ApartmentThreaded);
  EXPECT_EQ(
      Saved(project, "ThreadingModel", [&] { project.SetThreadingModel(ThreadingModels::SingleThreaded); }),
      "0");
}

TEST_F(ProjectTest, UpgradeActiveXControlsIsStoredInverted) {
  Project& project = Dll();
  EXPECT_TRUE(project.UpgradeActiveXControls());
  EXPECT_EQ(Saved(project, "NoControlUpgrade", [&] { project.SetUpgradeActiveXControls(false); }), "1");
  EXPECT_FALSE(project.UpgradeActiveXControls());
  EXPECT_EQ(Saved(project, "NoControlUpgrade", [&] { project.SetUpgradeActiveXControls(true); }), "0");
  EXPECT_TRUE(project.UpgradeActiveXControls());
}

TEST_F(ProjectTest, DllBaseAddressReadsAs11000000WhenNoneWasSet) {
  EXPECT_EQ(Dll().DllBaseAddress(), 0x11000000);
  EXPECT_EQ(bench.AddDll("C:\\src\\B.vbp", "B", "DllBaseAddress=nothing\n").DllBaseAddress(), 0x11000000);
  EXPECT_EQ(bench.AddDll("C:\\src\\C.vbp", "C", "DllBaseAddress=&H0\n").DllBaseAddress(), 0x11000000);
  EXPECT_EQ(bench.AddDll("C:\\src\\D.vbp", "D", "DllBaseAddress=&H1afe0000\n").DllBaseAddress(), 0x1AFE0000);
}

TEST_F(ProjectTest, DllBaseAddressAtTheEndsOfTheRangeIsAccepted) {
  Project& project = Dll();
  EXPECT_EQ(Saved(project, "DllBaseAddress", [&] { project.SetDllBaseAddress(0x10000); }), "&H10000");
  EXPECT_EQ(project.DllBaseAddress(), 0x10000);
  EXPECT_EQ(Saved(project, "DllBaseAddress", [&] { project.SetDllBaseAddress(0x7FFF0000); }), "&H7FFF0000");
  EXPECT_EQ(project.DllBaseAddress(), 0x7FFF0000);
}

TEST_F(ProjectTest, DllBaseAddressIsStoredAsHexadecimalText) {
  Project& project = Dll();
  EXPECT_EQ(Saved(project, "DllBaseAddress", [&] { project.SetDllBaseAddress(0x11000000); }), "&H11000000");
  EXPECT_EQ(Saved(project, "DllBaseAddress", [&] { project.SetDllBaseAddress(0x1AFE0000); }), "&H1AFE0000");
}

TEST_F(ProjectTest, DllBaseAddressOutsideTheRangeIsRefused) {
  Project& project = Dll();
  project.SetDllBaseAddress(0x20000);
  const Failure expected(BuildErrors::beInvalidBaseAddress, "Project.DllBaseAddress",
                         "DllbaseAddress must be between &H10000 and &H7FFF0000");
  for (const std::int32_t value : {0xFFFF, 0x7FFF0001, 0, -65536}) {
    EXPECT_EQ(FailureOf([&] { project.SetDllBaseAddress(value); }), expected) << value;
    EXPECT_EQ(project.LastErrorMessage(), expected.text);
  }
  EXPECT_EQ(project.DllBaseAddress(), 0x20000);
}

TEST_F(ProjectTest, DllBaseAddressThatIsNoMultipleOf64KIsRefused) {
  Project& project = Dll();
  const Failure expected(BuildErrors::beInvalidBaseAddress, "Project.DllBaseAddress",
                         "DllbaseAddress must be a multiple of &H10000 (64K)");
  EXPECT_EQ(FailureOf([&] { project.SetDllBaseAddress(0x11000001); }), expected);
  EXPECT_EQ(project.LastErrorMessage(), expected.text);
  EXPECT_EQ(project.DllBaseAddress(), 0x11000000);
}

TEST_F(ProjectTest, DllBaseAddressIsForInprocessProjectsOnly) {
  Project& project = bench.Add("C:\\src\\S.vbp", "Type=OleExe\nName=\"S\"\n");
  const Failure expected(45, "Project.DllBaseAddress", "Only for inprocess projects");
  EXPECT_EQ(FailureOf([&] { project.SetDllBaseAddress(0x11000000); }), expected);
  EXPECT_EQ(FailureOf([&] { project.SetDllBaseAddress(1); }), expected) << "checked before the range";
  EXPECT_EQ(project.LastErrorMessage(), expected.text);
}

TEST_F(ProjectTest, FullPath32WithoutOutputFolderIsBesideTheProjectFile) {
  Project& project = Dll();
  EXPECT_EQ(project.FullPath32(), "C:\\src\\Lib.dll");
  project.SetPath32("   ");
  EXPECT_EQ(project.FullPath32(), "C:\\src\\Lib.dll");
}

TEST_F(ProjectTest, FullPath32OfARelativeFolderStartsAtTheProjectFile) {
  Project& project = Dll();
  project.SetPath32("..\\bin");
  EXPECT_EQ(project.FullPath32(), "C:\\bin\\Lib.dll");
  EXPECT_EQ(project.Path32(), "..\\bin");
}

TEST_F(ProjectTest, FullPath32GivesAnAbsoluteFolderItsBackslashForGood) {
  Project& project = Dll();
  project.SetPath32("C:\\bin");
  EXPECT_EQ(project.BinaryPath(), "C:\\bin\\Lib.dll");
  EXPECT_EQ(project.Path32(), "C:\\bin") << "a mere question changes nothing";
  EXPECT_EQ(project.FullPath32(), "C:\\bin\\Lib.dll");
  EXPECT_EQ(project.Path32(), "C:\\bin\\");
  EXPECT_EQ(project.FullPath32(), "C:\\bin\\Lib.dll");
  EXPECT_EQ(project.Path32(), "C:\\bin\\");
}

TEST_F(ProjectTest, FullPath32WritesTheBackslashIntoTheRecordOfTheProjectFile) {
  Project& project = Dll("Path32=\"C:\\bin\"\n");
  EXPECT_EQ(Saved(project, "Path32", [&] { project.FullPath32(); }), "\"C:\\bin\\\"");
}

TEST_F(ProjectTest, RemoteServerFilePathNamesTheTypeLibraryBesideTheBinary) {
  Project& project = Dll();
  EXPECT_EQ(project.RemoteServerFilePath(), "");
  project.SetRemoteServerFiles(true);
  EXPECT_EQ(project.RemoteServerFilePath(), "C:\\src\\Lib.tlb");
}

TEST_F(ProjectTest, DetailsOfTheReportItemAreFiveTabbedLines) {
  Project& project = Dll("CompatibleMode=\"2\"\nCompilationType=-1\nOptimizationType=1\n");
  project.SetMajorVer(4);
  project.SetMinorVer(2);
  project.SetRevisionVer(77);
  project.SetCondComp("DEBUG = 1");
  EXPECT_EQ(project.IReportItem_Name(), "Lib");
  EXPECT_EQ(project.IReportItem_Details(),
            "\tVersion: 4.2\r\n\tCompatible mode: Binary\r\n\tCompile:  P Code\r\n\tOptimization:  Small "
            "Code\r\n\tConditional Compile Arguments:  DEBUG = 1");
}

TEST_F(ProjectTest, DetailsOfTheIReportItem_NameEveryModeAndOptimization) {
  Project& project = Dll();
  const auto has = [&](const char* text) {
    return project.IReportItem_Details().find(text) != std::string::npos;
  };
  EXPECT_TRUE(has("Compatible mode: No Compatibility\r\n"));
  EXPECT_TRUE(has("Compile:  Native Code\r\n"));
  EXPECT_TRUE(has("Optimization:  Fast Code\r\n"));
  project.SetCompatibleMode(CompatibleModes::ProjectCompatibility);
  project.SetOptimizationType(OptimizationTypes::NoOptimization);
  EXPECT_TRUE(has("Compatible mode: Project\r\n"));
  EXPECT_TRUE(has("Optimization:  No Optimization\r\n"));
}

TEST_F(ProjectTest, AnswersByNameWithItsNameAsDefault) {
  Project& project = Dll();
  EXPECT_EQ(automation::ToText(project.Invoke(automation::kDefaultMember, automation::InvokeKind::Get, {})),
            "Lib");
  project.Let("majorver", {Variant::FromLong(12)});
  EXPECT_EQ(automation::ToLong(project.Get("MAJORVER")), 12);
  EXPECT_EQ(FailureOf([&] { project.Let("Name", {Variant::FromText("X")}); }).number, 438);
}

TEST_F(ProjectTest, HasNoBuildOfItsOwn) {
  const auto project = automation::Make<Project>();
  EXPECT_EQ(FailureOf([&] { project->ParentProjects(); }).number, 91);
}

}  // namespace
}  // namespace hearthmake
