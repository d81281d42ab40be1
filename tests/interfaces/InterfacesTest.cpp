// The public interfaces as hosts have always seen them: what they offer, in which order.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "automation/Interface.hpp"
#include "build/Build.hpp"
#include "build/Builds.hpp"
#include "deployment/Enumerations.hpp"
#include "foundation/Settings.hpp"
#include "foundation/mTypes.hpp"
#include "interfaces/Enums.hpp"
#include "interfaces/PublicClasses.hpp"
#include "project/Project.hpp"
#include "project/References.hpp"
#include "scripting/App.hpp"

namespace hearthmake {
namespace {

using automation::Enumeration;
using automation::Interface;
using automation::Member;
using automation::MemberKind;
using automation::ValueKind;

std::vector<const Interface*> AllInterfaces() {
  std::vector<const Interface*> all;
  for (const PublicClass& entry : PublicClasses()) all.push_back(&entry.describe());
  return all;
}

const char* KindText(MemberKind kind) {
  switch (kind) {
    case MemberKind::Method: return "call";
    case MemberKind::Get: return "get";
    case MemberKind::Let: return "let";
    case MemberKind::Set: return "set";
  }
  return "?";
}

const char* TypeText(ValueKind kind) {
  switch (kind) {
    case ValueKind::Void: return "";
    case ValueKind::Integer: return "Integer";
    case ValueKind::Long: return "Long";
    case ValueKind::Boolean: return "Boolean";
    case ValueKind::Double: return "Double";
    case ValueKind::Date: return "Date";
    case ValueKind::String: return "String";
    case ValueKind::Variant: return "Variant";
    case ValueKind::Object: return "Object";
    case ValueKind::Enum: return "Enum";
  }
  return "?";
}

// "get Title() String"; the interface name of an object and the name of an enumeration stand for their type.
std::string Type(const automation::ValueType& type) {
  if (type.kind == ValueKind::Enum) return type.enumeration().name;
  if (type.kind == ValueKind::Object && type.object != nullptr) return type.object().Name();
  return TypeText(type.kind);
}

std::string Line(const Member& member) {
  std::string text = std::string(KindText(member.kind)) + " " + member.name + "(";
  for (const auto& parameter : member.parameters) {
    if (&parameter != &member.parameters.front()) text += ", ";
    text += parameter.name + " " + Type(parameter.type) + (parameter.isInOut ? "&" : "");
  }
  return text + ") " + Type(member.value);
}

std::string Listing(const Interface& declared) {
  std::string text;
  for (const Member& member : declared.Members()) text += Line(member) + "\n";
  return text;
}

// Members in the notation of the tables: "Title gl String" is a get and then a let, "Path32 lg" the other
// way.
std::string Expand(const std::string& table) {
  std::istringstream lines(table);
  std::string text;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string name;
    std::string access;
    std::string type;
    words >> name >> access >> type;
    for (const char kind : access) text += (kind == 'g' ? "get " : "let ") + name + "() " + type + "\n";
    if (access.empty()) text += line + "\n";
  }
  return text;
}

TEST(Interfaces, ProjectHasItsMembersInOrder) {
  const std::string before = Expand(
      "FileSizeExe32 g Long\nId g Long\nProperties g Properties\nFileName g String\nProjectPath gl String\n"
      "CopyPath gl String\nCompileMe gl Boolean\nName g String\nPath32 lg String\nMajorVer gl Integer\n"
      "CompatibleEXE32 gl String\nCompatibleMode gl CompatibleModes\nHelpContextID gl String\n"
      "Command32 gl String\nExeName32 gl String\nTitle gl String\nProjectType g ProjectTypes\n"
      "HelpFile gl String\nStartup g String\nFavorPentiumPro gl Boolean\n"
      "OptimizationType gl OptimizationTypes\nCompilationType gl CompilationTypes\n"
      "VersionProductName gl String\nVersionLegalCopyRight gl String\nVersionCompanyName gl String\n"
      "VersionComments gl String\nRemoteServerFiles gl Boolean\nAutoIncrementVer gl Boolean\n"
      "RevisionVer gl Integer\nMinorVer gl Integer\nFDIVCheck gl Boolean\nFlPointCheck gl Boolean\n"
      "OverflowCheck gl Boolean\nBoundsCheck gl Boolean\nNoAliasing gl Boolean\n"
      "CodeViewDebugInfo gl Boolean\nUnroundedFP gl Boolean\nStartMode gl StartModes\n"
      "Unattended gl Boolean\nRetained gl Boolean\nThreadPerObject gl Boolean\nMaxNumberOfThreads gl Long\n"
      "VersionFileDescription gl String\nVersionLegalTrademarks gl String\nCondComp gl String\n"
      "Description gl String\nRemoveUnusedControlInfo gl Boolean\nThreadingModel gl ThreadingModels\n"
      "UpgradeActiveXControls gl Boolean\nDllBaseAddress gl Long\n");
  const std::string methods =
      "call LoadFromFile(strVBPFile String) \ncall GetReferencesFromVBP() \ncall Compile() Boolean\n";
  const std::string between = Expand("References g References\nISActiveX g Boolean\nIsInprocess g Boolean\n");
  const std::string more = "call GUID() String\ncall BinaryVersion() String\n" +
                           Expand("ProjectFileName g Variant\nFullPath32 g String\nCompiledOK g Boolean\n") +
                           "call BeginEdit() \ncall ApplyEdit() \ncall Delete() \ncall CancelEdit() \n"
                           "call RunProjectInVB() \ncall UnRegister() \ncall Register() \n";
  const std::string rest = Expand(
      "MtsPackageId gl Long\nRemoteServerFilePath g String\nCompileError g String\n"
      "LastCheckInInfo g String\n"
      "PreserveBinary gl Boolean\nLastErrorMessage g String\n");
  const std::string last =
      "call UpdateVBP() \n" +
      Expand("LastCompiled g Date\nCheckInBinaryFile gl Boolean\nCheckInVBPFile gl Boolean\n") +
      "call DistributeBinaryFile() Boolean\n";
  EXPECT_EQ(Listing(Project::Describe()), before + methods + between + more + rest + last);
}

TEST(Interfaces, ReferenceHasItsMembersInOrder) {
  EXPECT_EQ(
      Listing(Reference::Describe()),
      Expand("Id g String\nGUID gl String\nBinaryVersion gl String\nDescription gl String\n"
             "Path gl String\nReferencedProject g Long\nIsExternal g Boolean\nReferenceString g String\n"
             "IsUserControl g Boolean\nReferenceType g ReferenceTypes\n"));
}

TEST(Interfaces, ReferencesHasItsMembersInOrder) {
  const auto& members = References::Describe().Members();
  ASSERT_EQ(members.size(), 9U);
  EXPECT_EQ(members[0].name, "NewEnum");
  EXPECT_EQ(Line(members[1]), "call AddInternalReference(objProject Project) ");
  EXPECT_EQ(Line(members[2]),
            "call AddExternalReference(strReferenceString String, strFileName String) Reference");
  EXPECT_EQ(Line(members[3]), "call Remove(index Variant) ");
  EXPECT_EQ(Line(members[4]), "get Count() Variant");
  EXPECT_EQ(Line(members[5]), "get item(vIndex Variant) Reference");
  EXPECT_EQ(Line(members[6]), "call IsProjectReferencingExternal(GUID String) Boolean");
  EXPECT_EQ(Line(members[7]), "call IsProjectReferencing(idProject Long) Boolean");
  EXPECT_EQ(Line(members[8]), "call ValidateReference(strPath String) Boolean");
}

TEST(Interfaces, BuildHasItsMembersInOrder) {
  EXPECT_EQ(Listing(Build::Describe()),
            Expand("Name lg String\nStartDllBaseAddress gl Long\nId g Long\nProjects g Projects\n") +
                "call Load(lngBuildId Long) \ncall BeginEdit() \ncall ApplyEdit() \ncall CancelEdit() \n"
                "call Kill() \ncall Delete() \ncall FixReferencesInProjectGroup() \n"
                "call CreateProjectGroupFile(strFileName String, objStartUpProject Project) \n"
                "get SSProjects() SSProjects\ncall AutoDetectReferences() \n"
                "call GenerateDllBaseAddresses(lngStart Long) \n" +
                Expand("MTSPackages g MTSPackages\nCOMApplications g COMApplications\nScripts g Scripts\n"
                       "FailedProject g Project\n") +
                "call CreateBuildFromPath(strPath String, bIncludeTestProjects Boolean) \n"
                "call GenerateRegisterBATfile(bRelativePath Boolean, strRelateivePath String, "
                "strGeneratedFiles String&) Boolean\n"
                "call StopReporting(bSuccess Boolean) \n"
                "call CmdExecute(strCommand String) \n");
}

TEST(Interfaces, BuildsAndProjectsHaveTheirMembersInOrder) {
  const auto& builds = Builds::Describe().Members();
  ASSERT_EQ(builds.size(), 4U);
  EXPECT_EQ(builds[0].name, "NewEnum");
  EXPECT_EQ(Line(builds[1]), "get item(vIndex Variant) Build");
  EXPECT_EQ(Line(builds[2]), "get Count() Long");
  EXPECT_EQ(Line(builds[3]), "call LoadAll() Variant");
  const auto& projects = Projects::Describe().Members();
  ASSERT_EQ(projects.size(), 7U);
  EXPECT_EQ(projects[0].name, "NewEnum");
  EXPECT_EQ(Line(projects[1]), "get Count() Long");
  EXPECT_EQ(Line(projects[2]), "get item(vIndex Variant) Project");
  EXPECT_EQ(Line(projects[3]), "call Add(strFile String) Project");
  EXPECT_EQ(Line(projects[4]), "call Build(bResume Boolean) Boolean");
  EXPECT_EQ(Line(projects[5]), "call SetCompileOrder() ");
  EXPECT_EQ(Line(projects[6]), "call GetByName(sProjectName String) Project");
}

TEST(Interfaces, PackagesAndApplicationsOfABuildHaveTheirMembersInOrder) {
  const auto expect = [](const Interface& declared, const std::string& item) {
    const auto& members = declared.Members();
    ASSERT_EQ(members.size(), 6U) << declared.Name();
    EXPECT_EQ(Line(members[0]), "get item(vIndex Variant) " + item);
    EXPECT_EQ(Line(members[1]), "get Count() Long");
    EXPECT_EQ(members[2].name, "NewEnum");
    EXPECT_EQ(Line(members[3]), "call Create() " + item);
    EXPECT_EQ(Line(members[4]), "get Parent() Build");
    EXPECT_EQ(Line(members[5]), "call CreateAllPackages() Boolean");
  };
  expect(MTSPackages::Describe(), "MTSPackage");
  expect(COMApplications::Describe(), "COMApplication");
}

TEST(Interfaces, MTSPackageHasItsMembersInOrder) {
  EXPECT_EQ(Listing(MTSPackage::Describe()),
            "call CreatePackage() Boolean\ncall RemovePackage() \n" +
                Expand("User lg String\nExportPath gl String\nName lg String\nDescription lg String\n"
                       "Authorization lg Boolean\nLeaveRunningIdle lg Boolean\nShutdowntime lg Long\n"
                       "Password lg String\nDisableDelete gl Boolean\nDisableChanges lg Boolean\n"
                       "LibraryPackage gl Boolean\nId g Long\n") +
                "call BeginEdit() \ncall ApplyEdit() \ncall Delete() \ncall CancelEdit() \n" +
                Expand("Skip gl Boolean\n"));
}

TEST(Interfaces, COMApplicationHasItsMembersInOrder) {
  EXPECT_EQ(Listing(COMApplication::Describe()),
            "call CreatePackage() Boolean\n" +
                Expand("User l String\nExportPath gl String\nUser g String\nName lg String\n"
                       "Description lg String\nAutentication lg AutenticationLevels\n"
                       "LeaveRunningIdle l Boolean\nCreateNew gl Boolean\nLeaveRunningIdle g Boolean\n"
                       "Shutdowntime lg Long\nPassword lg String\nDisableDelete gl Boolean\n"
                       "DisableChanges lg Boolean\nLibraryPackage gl Boolean\nIsSystem gl Boolean\n"
                       "AccessChecksLevel gl Long\nApplicationAccessChecksEnabled gl Boolean\n"
                       "CRMEnabled gl Boolean\nGigSupportEnabled gl Boolean\n"
                       "AuthenticationCapability gl Long\nQueuingEnabled gl Boolean\n"
                       "QueueListenerEnabled gl Boolean\nEventsEnabled gl Boolean\nId g Long\n"
                       "ImpersonationLevel gl ImpersonationLevels\nCommandLine gl String\n"
                       "ApplicationProxyServerName gl String\nCRMLogFile gl String\n"
                       "ExportOptions gl COMApplicationExportOptions\nApplicationProxy gl Boolean\n") +
                "call BeginEdit() \ncall ApplyEdit() \ncall Delete() \ncall CancelEdit() \n"
                "call ShoutDown() \n" +
                Expand("Skip gl Boolean\n"));
}

TEST(Interfaces, ScriptsHasItsMembersInOrder) {
  EXPECT_EQ(Listing(Scripts::Describe()),
            Expand("BeforeSourceSafe gl String\nBeforeComplie gl String\nBeforeProjectComplie gl String\n"
                   "AfterProjectCompile gl String\nBuildFailed gl String\nCompileComplete gl String\n"
                   "AfterMTSpackage gl String\n") +
                "call Save() \ncall Execute(Script String&) Boolean\n" +
                Expand("ErrorText g String\nErrorLine g Long\n") +
                "call Notify(strMessage String, Cancel Variant&, Progress Long) \n"
                "call AddObject(oObject Object, strname String) \n");
  const auto& notify =
      *Scripts::Describe().Find(*Scripts::Describe().Find("Notify"), automation::InvokeKind::Call);
  EXPECT_FALSE(notify.parameters[0].isOptional);
  EXPECT_TRUE(notify.parameters[1].isOptional);
  EXPECT_TRUE(notify.parameters[2].isOptional);
}

TEST(Interfaces, SSProjectHasItsMembersInOrder) {
  EXPECT_EQ(Listing(SSProject::Describe()),
            Expand("User lg String\nProject lg String\nWorkingFolder lg String\nDatabase lg String\n"
                   "SrcSafeIni gl String\nPassword lg String\nFlags lg Long\nId g Long\n") +
                "call BeginEdit() \ncall ApplyEdit() \ncall Delete() \ncall CancelEdit() \n" +
                Expand("Skip gl Boolean\n") +
                "call GetLatest() Boolean\ncall GetFromLabel(strLabel String) Boolean\n"
                "call Label(strLabel String, strComment String) Boolean\n");
}

TEST(Interfaces, SSProjectsHasItsMembersInOrder) {
  const auto& members = SSProjects::Describe().Members();
  ASSERT_EQ(members.size(), 8U);
  EXPECT_EQ(Line(members[0]), "get item(vIndex Variant) SSProject");
  EXPECT_EQ(Line(members[1]), "get Count() Long");
  EXPECT_EQ(members[2].name, "NewEnum");
  EXPECT_EQ(Line(members[3]), "call Create() SSProject");
  EXPECT_EQ(Line(members[4]), "call GetLatestFromSoursafe() Boolean");
  EXPECT_EQ(Line(members[5]), "get Parent() Build");
  EXPECT_EQ(Line(members[6]), "call NetSendCheckedOutFiles(strMachine String, strMessage String) ");
  EXPECT_EQ(Line(members[7]),
            "call CheckInFile(strFile String, strComment String, bKeepCheckedOut Boolean, strResult String&) "
            "Boolean");
}

TEST(Interfaces, ReportItemsAndAppHaveTheirMembersInOrder) {
  EXPECT_EQ(Listing(IReportItem::Describe()), Expand("Name g String\nDetails g String\n"));
  EXPECT_EQ(Listing(Enums::Describe()), "");
  EXPECT_EQ(Listing(App::Describe()),
            Expand("Path g String\nEXEName g String\nTitle g String\nProductName g String\nMajor g Integer\n"
                   "Minor g Integer\nRevision g Integer\nThreadID g Long\n"));
}

TEST(Interfaces, AreFoundByTheirProgId) {
  ASSERT_NE(FindCreatableClass("hearthmake.BUILD"), nullptr);
  EXPECT_EQ(FindCreatableClass("hearthmake.BUILD")->describe().Name(), "Build");
  EXPECT_EQ(FindCreatableClass("Hearthmake.Projects"), nullptr);
  EXPECT_EQ(FindCreatableClass("Hearthmake.Nothing"), nullptr);
  EXPECT_EQ(FindCreatableClass("Build"), nullptr);
  EXPECT_EQ(FindCreatableClass(""), nullptr);
}

TEST(Interfaces, SettingsHasItsMembersInOrder) {
  EXPECT_EQ(Listing(Settings::Describe()),
            Expand("VBExe gl String\nSetProjectCompatible gl Boolean\nScriptTimeOut gl Long\n"
                   "UseOriginalVbp gl Boolean\nTakeLatestFromVSS gl Boolean\nMakeFilesWriteable gl Boolean\n"
                   "AskForMTSPackage gl Boolean\nRunScripts gl Boolean\nCreateReport gl Boolean\n"
                   "BuildReport gl String\nIgnoreScriptError gl Boolean\n") +
                "call ApplyEdit() \ncall CancelEdit() \ncall BeginEdit() \n");
}

TEST(Interfaces, HelpTextsStandWithTheirMembers) {
  const auto help = [](const Interface& declared, const char* name) {
    for (const Member& member : declared.Members()) {
      if (member.name == name) return member.help;
    }
    return std::string("(no member)");
  };
  EXPECT_EQ(help(Build::Describe(), "CmdExecute"), "Executes commands synchronously. Used from scripts.");
  EXPECT_EQ(help(Settings::Describe(), "RunScripts"), "Run user defined scripts");
  EXPECT_EQ(help(SSProject::Describe(), "Database"), "Description of database. Free text.");
  EXPECT_EQ(help(SSProjects::Describe(), "NetSendCheckedOutFiles"), "Not supported");
}

TEST(Interfaces, CollectionsHaveAnItemByDefaultAndAnEnumerator) {
  for (const Interface* declared :
       {&Builds::Describe(), &Projects::Describe(), &References::Describe(), &SettingNames::Describe(),
        &SSProjects::Describe(), &MTSPackages::Describe(), &COMApplications::Describe()}) {
    const Member* item = declared->Find(automation::kDefaultMember, automation::InvokeKind::Get);
    ASSERT_NE(item, nullptr) << declared->Name();
    EXPECT_EQ(item->name, "item") << declared->Name();
    const auto& members = declared->Members();
    EXPECT_EQ(std::count_if(members.begin(), members.end(),
                            [](const Member& member) { return member.id == automation::kNewEnumMember; }),
              1)
        << declared->Name();
    EXPECT_TRUE(declared->Find("Count").has_value()) << declared->Name();
  }
}

TEST(Interfaces, NameIsTheDefaultOfAProject) {
  const Member* member = Project::Describe().Find(automation::kDefaultMember, automation::InvokeKind::Get);
  ASSERT_NE(member, nullptr);
  EXPECT_EQ(member->name, "Name");
}

TEST(Interfaces, AreNamedAfterTheirClass) {
  for (const Interface* declared : AllInterfaces()) {
    EXPECT_EQ(declared->InterfaceName(), "_" + declared->Name());
  }
}

TEST(Interfaces, OfClassesThatHostsCreateHaveAClassId) {
  std::set<std::string> creatable;
  for (const Interface* declared : AllInterfaces()) {
    if (!declared->ClassId().empty()) creatable.insert(declared->Name());
  }
  EXPECT_EQ(creatable,
            (std::set<std::string>{"Build", "Builds", "Enums", "IReportItem", "Project", "Settings"}));
}

TEST(Interfaces, AndEnumerationsHaveUniqueIds) {
  std::set<std::string> ids;
  const auto insert = [&](const std::string& id, const std::string& name) {
    EXPECT_EQ(id.size(), 38U) << name;
    EXPECT_EQ(id.find_first_not_of("{}-0123456789ABCDEF"), std::string::npos) << name;
    EXPECT_TRUE(ids.insert(id).second) << name;
  };
  for (const Interface* declared : AllInterfaces()) {
    insert(declared->InterfaceId(), declared->InterfaceName());
    if (!declared->ClassId().empty()) insert(declared->ClassId(), declared->Name());
  }
  for (const Enumeration* enumeration : PublicEnumerations()) insert(enumeration->guid, enumeration->name);
}

TEST(Interfaces, GiveReadAndWriteOfAPropertyOneId) {
  for (const Interface* declared : AllInterfaces()) {
    std::set<std::int32_t> ids;
    for (const Member& member : declared->Members()) {
      EXPECT_EQ(declared->Find(member.name), member.id) << declared->Name() << "." << member.name;
      ids.insert(member.id);
    }
    std::set<std::string> names;
    for (const Member& member : declared->Members()) names.insert(automation::Lower(member.name));
    EXPECT_EQ(ids.size(), names.size()) << declared->Name();
  }
}

TEST(Interfaces, NameEveryParameterWithItsPrefixedName) {
  for (const Interface* declared : AllInterfaces()) {
    for (const Member& member : declared->Members()) {
      for (const auto& parameter : member.parameters) EXPECT_FALSE(parameter.name.empty()) << member.name;
    }
  }
}

TEST(Enumerations, HaveTheirNamesAndValues) {
  using Members = std::vector<std::pair<std::string, std::int32_t>>;
  EXPECT_EQ(DescribeEnumeration(ProjectTypes()).members,
            (Members{{"StandardExe", 0}, {"ActiveXDll", 1}, {"ActiveXExe", 2}, {"UserControl", 3}}));
  EXPECT_EQ(DescribeEnumeration(CompatibleModes()).members,
            (Members{{"NoCompatibility", 0}, {"ProjectCompatibility", 1}, {"BinaryCompatibility", 2}}));
  EXPECT_EQ(DescribeEnumeration(CompilationTypes()).members, (Members{{"NativeCode", 0}, {"PCode", -1}}));
  EXPECT_EQ(DescribeEnumeration(OptimizationTypes()).members,
            (Members{{"FastCode", 0}, {"SmallCode", 1}, {"NoOptimization", 2}}));
  EXPECT_EQ(DescribeEnumeration(ThreadingModels()).members,
            (Members{{"SingleThreaded", 0}, {"ApartmentThreaded", 1}}));
  EXPECT_EQ(DescribeEnumeration(StartModes()).members, (Members{{"StandAlone", 0}, {"ActiveXComponent", 1}}));
  EXPECT_EQ(DescribeEnumeration(ReferenceTypes()).members,
            (Members{{"RT_UNDEFINED", 0}, {"RT_OBJECT", 1}, {"RT_REFERENCE", 2}}));
  EXPECT_EQ(DescribeEnumeration(BuildScripts()).members, (Members{{"BS_BEFORESOURCESAFE", 0},
                                                                  {"BS_BEFORECOMPILE", 1},
                                                                  {"BS_BEFORE_PROJECT_COMPILE", 2},
                                                                  {"BS_AFTER_PROJECT_COMPILE", 3},
                                                                  {"BS_BUILDFAILED", 4},
                                                                  {"BS_BUILDCOMPLETE", 5},
                                                                  {"BS_AFTERMTS", 6}}));
  EXPECT_EQ(DescribeEnumeration(AutenticationLevels()).members, (Members{{"None", 1},
                                                                         {"Connect", 2},
                                                                         {"CallLevel", 3},
                                                                         {"Package", 4},
                                                                         {"PackageIntegrety", 5},
                                                                         {"PackagePrivacy", 6}}));
  EXPECT_EQ(DescribeEnumeration(ImpersonationLevels()).members,
            (Members{{"Anonymous", 1}, {"Identity", 2}, {"Impersonate", 3}, {"Delegate", 4}}));
  EXPECT_EQ(DescribeEnumeration(COMApplicationExportOptions()).members,
            (Members{{"ExportApplication", 0}, {"ExportRoles", 1}, {"ExportProxy", 2}}));
  const auto& errors = DescribeEnumeration(automation::BuildErrors()).members;
  EXPECT_EQ(errors.size(), 21U);
  EXPECT_EQ(errors.front(), (Members::value_type{"be_FailToCompile", static_cast<std::int32_t>(0x80040001)}));
  EXPECT_EQ(errors.back(), (Members::value_type{"beScriptRunning", static_cast<std::int32_t>(0x80004005)}));
}

}  // namespace
}  // namespace hearthmake
