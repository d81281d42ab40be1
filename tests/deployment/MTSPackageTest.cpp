#include "deployment/MTSPackage.hpp"

#include <gtest/gtest.h>

#include "support/DeployScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::Variant;
using support::DeployScene;
using support::EntryNamed;
using support::ExpectError;
using Steps = std::vector<std::string>;

using PackageScene = support::ServerScene<MTSPackage>;

TEST(MTSPackage, IsNewWithItsDefaults) {
  const DeployScene scene;
  const auto package = scene.build->MTSPackages().Create();
  for (const char* text : {"Name", "User", "Password", "Description", "ExportPath"})
    EXPECT_EQ(automation::ToText(package->Get(text)), "") << text;
  for (const char* flag :
       {"Authorization", "LeaveRunningIdle", "DisableDelete", "DisableChanges", "LibraryPackage", "Skip"})
    EXPECT_FALSE(automation::ToBoolean(package->Get(flag))) << flag;
  EXPECT_EQ(package->Shutdowntime(), 3);
  EXPECT_EQ(package->Id(), 0);
}

TEST(MTSPackage, CreatePackageTakesTheseStepsInThisOrder) {
  PackageScene scene;
  scene.mts->packages = {EntryNamed("Other", "{1}"), EntryNamed("Server", "{2}")};
  scene.server->SetDescription("The server");
  scene.server->SetDisableDelete(true);
  scene.server->SetLeaveRunningIdle(true);
  scene.server->SetAuthorization(true);
  scene.server->SetShutdowntime(7);
  scene.server->SetUser("Domain\\Me");
  scene.server->SetPassword("secret");
  scene.server->SetExportPath("C:\\out\\Server.pak");
  EXPECT_TRUE(scene.server->CreatePackage());
  EXPECT_EQ(scene.log.steps, (Steps{
                                 "Create",
                                 "GetCollection Packages",
                                 "Packages.Populate",
                                 "Packages.Count",
                                 "Packages.Item 0",
                                 "Name Other",
                                 "Packages.Item 1",
                                 "Name Server",
                                 "MTSEvent Removing Package: Server",
                                 "Packages.Remove 1",
                                 "Packages.SaveChanges",
                                 "Create",
                                 "GetCollection Packages",
                                 "Packages.Add",
                                 "Set Name = \"Server\"",
                                 "Set Description = \"The server\"",
                                 "Set Deleteable = \"N\"",
                                 "Set Changeable = \"Y\"",
                                 "Set ShutdownAfter = 7",
                                 "Set RunForever = \"Y\"",
                                 "Set SecurityEnabled = \"Y\"",
                                 "Set Identity = \"Domain\\Me\"",
                                 "Set Password = \"secret\"",
                                 "Packages.SaveChanges",
                                 "Key",
                                 "Packages.GetCollection ComponentsInPackage",
                                 "Components.GetUtilInterface",
                                 "MTSEvent Adding component Lib to Package Server",
                                 "InstallComponent C:\\src\\Lib.dll, C:\\src\\Lib.dll, \"\"",
                                 "MTSEvent Adding component Remote to Package Server",
                                 "InstallComponent C:\\src\\Remote.dll, C:\\src\\Remote.tlb, \"\"",
                                 "Components.SaveChanges",
                                 "MTSEvent Exporting package: Server",
                                 "Packages.GetUtilInterface",
                                 "ExportPackage C:\\out\\Server.pak, 0",
                             }));
  ASSERT_EQ(scene.mts->packages.size(), 2U);
  EXPECT_EQ(scene.mts->packages[1].components, (Steps{"C:\\src\\Lib.dll", "C:\\src\\Remote.dll"}));
}

TEST(MTSPackage, APackageWithoutUserIsThatOfTheInteractiveUserWithoutPassword) {
  PackageScene scene;
  scene.server->SetPassword("of nobody");
  EXPECT_TRUE(scene.server->CreatePackage());
  ASSERT_EQ(scene.mts->packages.size(), 1U);
  EXPECT_EQ(scene.mts->packages[0].Get("Identity"), "\"Interactive User\"");
  EXPECT_EQ(scene.mts->packages[0].Get("Password"), "\"\"");
}

TEST(MTSPackage, WhatIsSwitchedOffIsWrittenToo) {
  PackageScene scene;
  scene.server->SetDisableChanges(true);
  EXPECT_TRUE(scene.server->CreatePackage());
  const auto& stored = scene.mts->packages.at(0);
  EXPECT_EQ(stored.Get("Deleteable"), "\"Y\"");
  EXPECT_EQ(stored.Get("Changeable"), "\"N\"");
  EXPECT_EQ(stored.Get("ShutdownAfter"), "3");
  EXPECT_EQ(stored.Get("RunForever"), "\"N\"");
  EXPECT_EQ(stored.Get("SecurityEnabled"), "\"N\"");
  EXPECT_EQ(stored.Get("Description"), "\"\"");
}

TEST(MTSPackage, ALibraryPackageIsCreatedLikeAnyOther) {
  PackageScene scene;
  EXPECT_TRUE(scene.server->CreatePackage());
  const Steps steps = scene.log.steps;
  scene.mts->packages.clear();
  scene.log.Clear();
  scene.server->SetLibraryPackage(true);
  EXPECT_TRUE(scene.server->CreatePackage());
  EXPECT_EQ(scene.log.steps, steps);
}

TEST(MTSPackage, WithoutExportPathNothingIsExported) {
  PackageScene scene;
  EXPECT_TRUE(scene.server->CreatePackage());
  EXPECT_EQ(scene.log.steps.back(), "Components.SaveChanges");
}

TEST(MTSPackage, APackageThatNoProjectReferencesIsCreatedEmptyAndExported) {
  DeployScene scene;
  const auto package = scene.NewOf<MTSPackage>("Empty");
  scene.Add("Lib");
  package->SetExportPath("C:\\Empty.pak");
  EXPECT_TRUE(package->CreatePackage());
  ASSERT_EQ(scene.mts->packages.size(), 1U);
  EXPECT_TRUE(scene.mts->packages[0].components.empty());
  EXPECT_EQ(scene.log.steps.back(), "ExportPackage C:\\Empty.pak, 0");
}

TEST(MTSPackage, APackageThatWasNeverStoredTakesNoProjects) {
  DeployScene scene;
  scene.Add("Lib");
  const auto package = scene.build->MTSPackages().Create();
  package->SetName("New");
  EXPECT_TRUE(package->CreatePackage());
  EXPECT_TRUE(scene.mts->packages.at(0).components.empty());
}

TEST(MTSPackage, EveryRunMakesThePackageAnew) {
  PackageScene scene;
  EXPECT_TRUE(scene.server->CreatePackage());
  const std::string key = scene.mts->packages.at(0).key;
  EXPECT_TRUE(scene.server->CreatePackage());
  ASSERT_EQ(scene.mts->packages.size(), 1U);
  EXPECT_NE(scene.mts->packages[0].key, key);
}

TEST(MTSPackage, RemovePackageRemovesOnlyTheFirstOfItsName) {
  PackageScene scene;
  scene.mts->packages = {EntryNamed("A", "{1}"), EntryNamed("Server", "{2}"), EntryNamed("Server", "{3}")};
  scene.server->RemovePackage();
  ASSERT_EQ(scene.mts->packages.size(), 2U);
  EXPECT_EQ(scene.mts->packages[0].key, "{1}");
  EXPECT_EQ(scene.mts->packages[1].key, "{3}");
  EXPECT_EQ(scene.events.heard, (Steps{"MTSEvent Removing Package: Server"}));
}

TEST(MTSPackage, RemovePackageLooksForTheExactName) {
  PackageScene scene;
  scene.mts->packages = {EntryNamed("SERVER", "{1}"), EntryNamed("Server2", "{2}")};
  scene.server->RemovePackage();
  EXPECT_EQ(scene.mts->packages.size(), 2U);
  EXPECT_TRUE(scene.events.heard.empty());
  EXPECT_EQ(scene.log.steps.back(), "Name Server2") << "nothing was saved";
}

TEST(MTSPackage, ErrorsOfTheCatalogLeaveRemovePackage) {
  PackageScene scene;
  scene.mts->packages = {EntryNamed("Server", "{1}")};
  scene.log.failAt = 3;
  ExpectError([&] { scene.server->RemovePackage(); }, -1, "Catalog", "call 3 failed");
  EXPECT_TRUE(scene.events.heard.empty());
}

TEST(MTSPackage, AuthorizationKeepsTheLevelThatTheRowHasAsAnApplication) {
  const DeployScene scene;
  const auto application = scene.NewOf<COMApplication>("Both");
  application->BeginEdit();
  application->SetAutentication(AutenticationLevels::CallLevel);
  application->ApplyEdit();
  const auto package = scene.Again<MTSPackage>(application->Id());
  EXPECT_TRUE(package->Authorization());
  package->BeginEdit();
  package->SetAuthorization(true);
  package->SetDescription("changed");
  package->ApplyEdit();
  EXPECT_EQ(scene.Again<COMApplication>(package->Id())->Autentication(), AutenticationLevels::CallLevel);
  package->BeginEdit();
  package->SetAuthorization(false);
  package->ApplyEdit();
  EXPECT_EQ(scene.Again<COMApplication>(package->Id())->Autentication(), AutenticationLevels{});
}

TEST(MTSPackage, StoresEveryColumnOfItsOwn) {
  const DeployScene scene;
  const auto package = scene.NewOf<MTSPackage>("Server");
  const std::vector<std::pair<const char*, Variant>> values = {
      {"Name", Variant::FromText("Renamed")},
      {"User", Variant::FromText("me")},
      {"Password", Variant::FromText("secret")},
      {"Description", Variant::FromText("The server")},
      {"Authorization", Variant::FromBoolean(true)},
      {"LeaveRunningIdle", Variant::FromBoolean(true)},
      {"Shutdowntime", Variant::FromLong(-2147483647 - 1)},
      {"DisableDelete", Variant::FromBoolean(true)},
      {"DisableChanges", Variant::FromBoolean(true)},
      {"LibraryPackage", Variant::FromBoolean(true)},
      {"ExportPath", Variant::FromText("C:\\Server.pak")},
  };
  package->BeginEdit();
  for (const auto& [name, value] : values) package->Let(name, {value});
  package->ApplyEdit();
  const auto again = scene.Again<MTSPackage>(package->Id());
  for (const auto& [name, value] : values)
    EXPECT_EQ(support::Shown(again->Get(name)), support::Shown(value)) << name;
  EXPECT_EQ(DeployScene::CountRows("MTSPackages",
                                   "idBuild = 1 AND Name = 'Renamed' AND User = 'me' AND Password = 'secret' "
                                   "AND Description = 'The server' AND Autentication = -1 AND "
                                   "ExportFile = 'C:\\Server.pak' AND DisableDelete = True"),
            1);
}

TEST(MTSPackage, LeavesTheColumnsOfApplicationsAlone) {
  const DeployScene scene;
  const auto application = scene.NewOf<COMApplication>("Both");
  application->BeginEdit();
  application->SetCRMLogFile("C:\\crm.log");
  application->SetImpersonationLevel(ImpersonationLevels::Delegate);
  application->SetEventsEnabled(true);
  application->SetCreateNew(true);
  application->SetExportOptions(COMApplicationExportOptions::ExportProxy);
  application->ApplyEdit();
  const auto package = scene.Again<MTSPackage>(application->Id());
  package->BeginEdit();
  package->SetName("Renamed");
  package->ApplyEdit();
  const auto again = scene.Again<COMApplication>(application->Id());
  EXPECT_EQ(again->Name(), "Renamed");
  EXPECT_EQ(again->CRMLogFile(), "C:\\crm.log");
  EXPECT_EQ(again->ImpersonationLevel(), ImpersonationLevels::Delegate);
  EXPECT_TRUE(again->EventsEnabled());
  EXPECT_TRUE(again->CreateNew());
  EXPECT_EQ(again->ExportOptions(), COMApplicationExportOptions::ExportProxy);
}

TEST(MTSPackage, WritesNoColumnOfApplicationsForANewRow) {
  const DeployScene scene;
  const auto package = scene.NewOf<MTSPackage>("Server");
  EXPECT_EQ(
      DeployScene::CountRows("MTSPackages",
                             "ImpersonationLevel IS NULL AND CommandLine IS NULL AND CRMLogFile IS NULL "
                             "AND ExportFlags IS NULL AND AccessChecksLevel IS NULL AND "
                             "AuthenticationCapability IS NULL AND ApplicationProxyServerName IS NULL"),
      1);
}

}  // namespace
}  // namespace hearthmake
