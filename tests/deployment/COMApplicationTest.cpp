#include "deployment/COMApplication.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/DeployScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::Variant;
using support::DeployScene;
using support::EntryNamed;
using Steps = std::vector<std::string>;

using ApplicationScene = support::ServerScene<COMApplication>;

const std::vector<std::pair<const char*, Variant>>& OtherValues() {
  static const std::vector<std::pair<const char*, Variant>> kValues = {
      {"Name", Variant::FromText("Renamed")},
      {"User", Variant::FromText("me")},
      {"Password", Variant::FromText("secret")},
      {"Description", Variant::FromText("The server")},
      {"Autentication", Variant::FromLong(6)},
      {"LeaveRunningIdle", Variant::FromBoolean(true)},
      {"Shutdowntime", Variant::FromLong(7)},
      {"DisableDelete", Variant::FromBoolean(true)},
      {"DisableChanges", Variant::FromBoolean(true)},
      {"LibraryPackage", Variant::FromBoolean(true)},
      {"ExportPath", Variant::FromText("C:\\Server.msi")},
      {"IsSystem", Variant::FromBoolean(true)},
      {"AccessChecksLevel", Variant::FromLong(-2147483647 - 1)},
      {"ApplicationAccessChecksEnabled", Variant::FromBoolean(true)},
      {"CommandLine", Variant::FromText("/run")},
      {"ImpersonationLevel", Variant::FromLong(4)},
      {"CRMEnabled", Variant::FromBoolean(true)},
      {"CRMLogFile", Variant::FromText("C:\\crm.log")},
      {"GigSupportEnabled", Variant::FromBoolean(true)},
      {"AuthenticationCapability", Variant::FromLong(2147483647)},
      {"QueuingEnabled", Variant::FromBoolean(true)},
      {"QueueListenerEnabled", Variant::FromBoolean(true)},
      {"EventsEnabled", Variant::FromBoolean(true)},
      {"ApplicationProxy", Variant::FromBoolean(true)},
      {"ApplicationProxyServerName", Variant::FromText("central")},
      {"ExportOptions", Variant::FromLong(2)},
      {"CreateNew", Variant::FromBoolean(true)},
  };
  return kValues;
}

TEST(COMApplication, IsNewWithItsDefaults) {
  const DeployScene scene;
  const auto application = scene.build->COMApplications().Create();
  for (const char* text : {"Name", "User", "Password", "Description", "ExportPath", "CommandLine",
                           "CRMLogFile", "ApplicationProxyServerName"})
    EXPECT_EQ(automation::ToText(application->Get(text)), "") << text;
  for (const char* flag :
       {"LeaveRunningIdle", "DisableDelete", "DisableChanges", "LibraryPackage", "IsSystem",
        "ApplicationAccessChecksEnabled", "CRMEnabled", "GigSupportEnabled", "QueuingEnabled",
        "QueueListenerEnabled", "EventsEnabled", "ApplicationProxy", "CreateNew", "Skip"})
    EXPECT_FALSE(automation::ToBoolean(application->Get(flag))) << flag;
  for (const char* number :
       {"Autentication", "AccessChecksLevel", "AuthenticationCapability", "ExportOptions", "Id"})
    EXPECT_EQ(automation::ToLong(application->Get(number)), 0) << number;
  EXPECT_EQ(application->Shutdowntime(), 3);
  EXPECT_EQ(application->ImpersonationLevel(), ImpersonationLevels::Impersonate);
}

TEST(COMApplication, CreatePackageOfAnApplicationThatIsMissingTakesTheseStepsInThisOrder) {
  ApplicationScene scene;
  scene.comPlus->applications = {EntryNamed("Other", "{1}"), EntryNamed("server", "{2}")};
  for (const auto& [name, value] : OtherValues()) {
    const std::string property = name;
    if (property != "Name" && property != "CreateNew") scene.server->Let(name, {value});
  }
  EXPECT_TRUE(scene.server->CreatePackage());
  EXPECT_EQ(scene.log.steps,
            (Steps{
                "Create",
                "GetCollection Applications",
                "Applications.Populate",
                "Applications.Count",
                "Applications.Item 0",
                "Name Other",
                "Applications.Item 1",
                "Name server",
                "MTSEvent Adding COM+ Application: Server",
                "Applications.Add",
                "Applications.SaveChanges",
                "Set Name = \"Server\"",
                "Set Description = \"The server\"",
                "Set Deleteable = \"N\"",
                "Set Changeable = \"N\"",
                "Set ShutdownAfter = 7",
                "Set RunForever = \"Y\"",
                "Set Authentication = 6",
                "Set Activation = \"0\"",
                "Set CRMEnabled = True",
                "Set AuthenticationCapability = 2147483647",
                "Set 3GigSupportEnabled = True",
                "Set QueuingEnabled = True",
                "Set QueueListenerEnabled = True",
                "Set QueuingEnabled = True",
                "Set EventsEnabled = True",
                "Set ApplicationAccessChecksEnabled = True",
                "Set AccessChecksLevel = -2147483648",
                "Set CommandLine = \"/run\"",
                "Set ImpersonationLevel = 4",
                "Set CRMLogFile = \"C:\\crm.log\"",
                "Set ApplicationProxyServerName = \"central\"",
                "Set Identity = \"me\"",
                "Set Password = \"secret\"",
                "Applications.SaveChanges",
                "MTSEvent Adding component Lib to COM+ Application Server",
                "InstallComponent Server, C:\\src\\Lib.dll, \"\", \"\"",
                "MTSEvent Adding component Remote to COM+ Application Server",
                "InstallComponent Server, C:\\src\\Remote.dll, \"C:\\src\\Remote.tlb\", \"\"",
                "Applications.SaveChanges",
                "DeliverPending",
                "MTSEvent Exporting COM+ Application: Server",
                "ExportApplication Server, C:\\Server.msi, 6",
            }));
}

TEST(COMApplication, CreatePackageOfAnApplicationThatIsThereTakesTheseStepsInThisOrder) {
  ApplicationScene scene;
  scene.comPlus->applications = {EntryNamed("Server", "{1}"), EntryNamed("Server", "{2}")};
  EXPECT_TRUE(scene.server->CreatePackage());
  EXPECT_EQ(scene.log.steps, (Steps{
                                 "Create",
                                 "GetCollection Applications",
                                 "Applications.Populate",
                                 "Applications.Count",
                                 "Applications.Item 0",
                                 "Name Server",
                                 "Applications.Item 0",
                                 "Set Name = \"Server\"",
                                 "Set Description = \"\"",
                                 "Set Deleteable = \"Y\"",
                                 "Set Changeable = \"Y\"",
                                 "Set ShutdownAfter = 3",
                                 "Set RunForever = \"N\"",
                                 "Set Authentication = 0",
                                 "Set Activation = \"1\"",
                                 "Set CRMEnabled = False",
                                 "Set AuthenticationCapability = 0",
                                 "Set 3GigSupportEnabled = False",
                                 "Set QueuingEnabled = False",
                                 "Set QueueListenerEnabled = False",
                                 "Set QueuingEnabled = False",
                                 "Set EventsEnabled = False",
                                 "Set ApplicationAccessChecksEnabled = False",
                                 "Set AccessChecksLevel = 0",
                                 "Set CommandLine = \"\"",
                                 "Set ImpersonationLevel = 3",
                                 "Set CRMLogFile = \"\"",
                                 "Set ApplicationProxyServerName = \"\"",
                                 "Set Identity = \"Interactive User\"",
                                 "Set Password = \"\"",
                                 "Applications.SaveChanges",
                                 "MTSEvent Refreshing  COM+ Application Server",
                                 "RefreshComponents",
                                 "Applications.SaveChanges",
                             }));
  EXPECT_EQ(scene.comPlus->applications.size(), 2U);
  EXPECT_EQ(scene.comPlus->applications[0].key, "{1}");
}

TEST(COMApplication, CreateNewRemovesTheFirstApplicationOfItsName) {
  ApplicationScene scene;
  scene.comPlus->applications = {EntryNamed("Other", "{1}"), EntryNamed("Server", "{2}"),
                                 EntryNamed("Server", "{3}")};
  scene.server->SetCreateNew(true);
  EXPECT_TRUE(scene.server->CreatePackage());
  const auto removal =
      std::find(scene.log.steps.begin(), scene.log.steps.end(), "MTSEvent Removing COM+ Application: Server");
  ASSERT_LT(removal, scene.log.steps.end() - 5);
  EXPECT_EQ(Steps(removal + 1, removal + 5),
            (Steps{"Applications.Remove 1", "MTSEvent Adding COM+ Application: Server", "Applications.Add",
                   "Applications.SaveChanges"}));
  EXPECT_TRUE(scene.Took("MTSEvent Adding component Lib to COM+ Application Server"));
  EXPECT_FALSE(scene.Took("RefreshComponents"));
  ASSERT_EQ(scene.comPlus->applications.size(), 3U);
  EXPECT_EQ(scene.comPlus->applications[0].key, "{1}");
  EXPECT_EQ(scene.comPlus->applications[1].key, "{3}");
  EXPECT_NE(scene.comPlus->applications[2].key, "{2}");
}

TEST(COMApplication, AnApplicationThatIsThereIsRefreshedWithoutInstallingComponents) {
  ApplicationScene scene;
  EXPECT_TRUE(scene.server->CreatePackage());
  scene.log.Clear();
  scene.events.heard.clear();
  EXPECT_TRUE(scene.server->CreatePackage());
  EXPECT_EQ(scene.events.heard, (Steps{"MTSEvent Refreshing  COM+ Application Server"}));
  EXPECT_EQ(scene.comPlus->applications.at(0).components.size(), 2U);
}

TEST(COMApplication, AProjectWithoutRemoteServerFilesHasNoTypeLibrary) {
  ApplicationScene scene;
  EXPECT_TRUE(scene.server->CreatePackage());
  EXPECT_TRUE(scene.Took("InstallComponent Server, C:\\src\\Lib.dll, \"\", \"\""));
}

TEST(COMApplication, ExportsWithTheOptionThatReplacesFiles) {
  ApplicationScene scene;
  scene.server->SetExportPath("C:\\Server.msi");
  for (const auto& [options, written] : {std::pair{COMApplicationExportOptions::ExportApplication, "4"},
                                         std::pair{COMApplicationExportOptions::ExportRoles, "5"},
                                         std::pair{COMApplicationExportOptions::ExportProxy, "6"}}) {
    scene.server->SetExportOptions(options);
    EXPECT_TRUE(scene.server->CreatePackage());
    EXPECT_EQ(scene.log.steps.back(), std::string("ExportApplication Server, C:\\Server.msi, ") + written);
  }
}

TEST(COMApplication, ExportOptionsThatOverflowAreAnError) {
  ApplicationScene scene;
  scene.server->SetExportPath("C:\\Server.msi");
  scene.server->SetExportOptions(static_cast<COMApplicationExportOptions>(2147483644));
  EXPECT_FALSE(scene.server->CreatePackage());
  EXPECT_EQ(scene.events.heard.back(), "MTSEvent Error occured: Overflow");
}

TEST(COMApplication, ShoutDownStopsTheApplicationOfItsName) {
  ApplicationScene scene;
  scene.comPlus->applications = {EntryNamed("Server", "{1}")};
  scene.server->ShoutDown();
  EXPECT_EQ(scene.log.steps, (Steps{"Create", "ShutdownApplication Server"}));
}

TEST(COMApplication, ShoutDownIgnoresEveryError) {
  ApplicationScene scene;
  scene.server->ShoutDown();  // not installed
  scene.log.failAt = 3;
  scene.server->ShoutDown();  // no catalog
  EXPECT_EQ(scene.log.steps, (Steps{"Create", "ShutdownApplication Server", "Create"}));
  EXPECT_TRUE(scene.events.heard.empty());
}

TEST(COMApplication, StoresEveryColumn) {
  const DeployScene scene;
  const auto application = scene.NewOf<COMApplication>("Server");
  application->BeginEdit();
  for (const auto& [name, value] : OtherValues()) application->Let(name, {value});
  application->ApplyEdit();
  const auto again = scene.Again<COMApplication>(application->Id());
  for (const auto& [name, value] : OtherValues())
    EXPECT_EQ(support::Shown(again->Get(name)), support::Shown(value)) << name;
  EXPECT_EQ(
      DeployScene::CountRows(
          "MTSPackages",
          "idBuild = 1 AND Name = 'Renamed' AND Autentication = 6 AND ExportFile = 'C:\\Server.msi' AND "
          "CreateFlags = True AND IsSystem = True AND AccessChecksLevel = -2147483648 AND "
          "ApplicationAccessChecksEnabled = True AND CommandLine = '/run' AND ImpersonationLevel = 4 AND "
          "CRMEnabled = True AND AuthenticationCapability = 2147483647 AND GigSupportEnabled = True AND "
          "QueuingEnabled = True AND QueueListenerEnabled = True AND EventsEnabled = True AND "
          "ApplicationProxy = True AND ApplicationProxyServerName = 'central' AND "
          "CRMLogFile = 'C:\\crm.log' AND ExportFlags = 2"),
      1);
}

TEST(COMApplication, EachColumnIsOneOfItsOwn) {
  const DeployScene scene;
  const auto application = scene.NewOf<COMApplication>("Server");
  // One property after the other: what another one is stored as would show.
  for (const auto& [changed, value] : OtherValues()) {
    application->BeginEdit();
    application->Let(changed, {value});
    application->ApplyEdit();
    const auto again = scene.Again<COMApplication>(application->Id());
    for (const auto& [name, unused] : OtherValues())
      EXPECT_EQ(support::Shown(again->Get(name)), support::Shown(application->Get(name)))
          << name << " after " << changed;
  }
}

TEST(COMApplication, CancelEditRestoresEveryProperty) {
  const DeployScene scene;
  const auto application = scene.NewOf<COMApplication>("Server");
  std::vector<std::string> before;
  for (const auto& [name, value] : OtherValues()) before.push_back(support::Shown(application->Get(name)));
  application->BeginEdit();
  for (const auto& [name, value] : OtherValues()) application->Let(name, {value});
  application->CancelEdit();
  std::size_t i = 0;
  for (const auto& [name, value] : OtherValues())
    EXPECT_EQ(support::Shown(application->Get(name)), before[i++]) << name;
}

TEST(COMApplication, ARowThatWasWrittenAsAPackageHasTheDefaultsOfANewApplication) {
  const DeployScene scene;
  const auto package = scene.NewOf<MTSPackage>("Server");
  const auto application = scene.Again<COMApplication>(package->Id());
  const auto fresh = scene.build->COMApplications().Create();
  for (const auto& [name, value] : OtherValues()) {
    if (std::string(name) == "Name") continue;
    EXPECT_EQ(support::Shown(application->Get(name)), support::Shown(fresh->Get(name))) << name;
  }
}

TEST(COMApplication, NullNumbersAreThoseOfANewApplication) {
  const DeployScene scene;
  DeployScene::Database().Execute("INSERT INTO MTSPackages (idBuild, Name) VALUES (1, 'Bare')");
  const auto application = scene.build->COMApplications().Item(Variant::FromLong(1));
  EXPECT_EQ(application->Shutdowntime(), 3);
  EXPECT_EQ(application->ImpersonationLevel(), ImpersonationLevels::Impersonate);
  EXPECT_EQ(application->Autentication(), AutenticationLevels{});
  EXPECT_EQ(scene.build->MTSPackages().Item(Variant::FromLong(1))->Shutdowntime(), 3);
}

TEST(COMApplication, KeepsWhatTheRowHoldsAsAPackage) {
  const DeployScene scene;
  const auto package = scene.NewOf<MTSPackage>("Server");
  package->BeginEdit();
  package->SetAuthorization(true);
  package->SetUser("me");
  package->SetExportPath("C:\\Server.pak");
  package->ApplyEdit();
  const auto application = scene.Again<COMApplication>(package->Id());
  application->BeginEdit();
  application->SetEventsEnabled(true);
  application->ApplyEdit();
  const auto again = scene.Again<MTSPackage>(package->Id());
  EXPECT_TRUE(again->Authorization());
  EXPECT_EQ(again->User(), "me");
  EXPECT_EQ(again->ExportPath(), "C:\\Server.pak");
}

}  // namespace
}  // namespace hearthmake
