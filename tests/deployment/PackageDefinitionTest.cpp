// What packages and applications have in common.

#include "deployment/PackageDefinition.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/DeployScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::Ref;
using automation::Variant;
using support::DeployScene;
using support::EntryNamed;
using support::ErrorOf;
using support::ExpectError;
using support::KindOf;
using Steps = std::vector<std::string>;

constexpr const char* kIsUsed = "This package is used by one or many projects and can't be deleted!";
constexpr const char* kBlankName = "Name can't be an empty string!";

template <class T>
class PackageDefinitionTest : public testing::Test {
 protected:
  static std::string Source(const char* member) { return std::string(KindOf<T>::kClass) + "." + member; }
  static void Delete(T& definition) {
    definition.BeginEdit();
    definition.Delete();
    definition.ApplyEdit();
  }
  static support::CatalogEntries& Catalog(DeployScene& scene) {
    if constexpr (std::is_same_v<T, MTSPackage>) {
      return scene.mts->packages;
    } else {
      return scene.comPlus->applications;
    }
  }
  auto& In(DeployScene& scene) { return KindOf<T>::In(*scene.build); }

  // A definition that every call of the catalog is needed for.
  Ref<T> Whole(DeployScene& scene) {
    const auto definition = scene.NewOf<T>("Server");
    definition->SetExportPath("C:\\Server.out");
    if constexpr (std::is_same_v<T, COMApplication>) definition->SetCreateNew(true);
    scene.AddTo(definition->Id(), "A");
    scene.AddTo(definition->Id(), "B");
    Present(scene);
    return definition;
  }
  static void Present(DeployScene& scene) {
    Catalog(scene) = {EntryNamed("Other", "{1}"), EntryNamed("Server", "{2}")};
    scene.log.Clear();
    scene.events.heard.clear();
  }
  static std::string Contents(DeployScene& scene) {
    std::string text;
    for (const auto& entry : Catalog(scene)) text += entry.Text() + "--\n";
    return text;
  }
};

using Kinds = testing::Types<MTSPackage, COMApplication>;
TYPED_TEST_SUITE(PackageDefinitionTest, Kinds);

TYPED_TEST(PackageDefinitionTest, TextsAreCutAtTheirWidths) {
  const DeployScene scene;
  const auto definition = KindOf<TypeParam>::In(*scene.build).Create();
  const auto width = [&](const char* name) {
    definition->Let(name, {Variant::FromText(std::string(300, 'x'))});
    return automation::ToText(definition->Get(name)).size();
  };
  for (const char* name : {"Name", "User", "Password"}) EXPECT_EQ(width(name), 50U) << name;
  for (const char* name : {"Description", "ExportPath"}) EXPECT_EQ(width(name), 255U) << name;
  if constexpr (std::is_same_v<TypeParam, COMApplication>) {
    EXPECT_EQ(width("ApplicationProxyServerName"), 50U);
    for (const char* name : {"CommandLine", "CRMLogFile"}) EXPECT_EQ(width(name), 255U) << name;
  }
  definition->SetDescription("  padded  ");
  EXPECT_EQ(definition->Description(), "padded");
}

TYPED_TEST(PackageDefinitionTest, ABlankNameIsRefused) {
  const DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  for (const char* blank : {"", "   "})
    ExpectError([&] { definition->SetName(blank); }, 45, this->Source("Name"), kBlankName);
  EXPECT_EQ(definition->Name(), "Server");
}

TYPED_TEST(PackageDefinitionTest, FailsCleanlyAtEachCallOfTheCatalog) {
  DeployScene scene;
  const auto definition = this->Whole(scene);
  ASSERT_TRUE(definition->CreatePackage());
  const int calls = scene.log.calls;
  const std::string whole = this->Contents(scene);
  const Steps steps = scene.log.steps;
  EXPECT_GT(calls, 30);
  for (int i = 1; i <= calls; ++i) {
    this->Present(scene);
    scene.log.failAt = i;
    const std::string failure = "MTSEvent Error occured: call " + std::to_string(i) + " failed";
    EXPECT_FALSE(definition->CreatePackage()) << i;
    EXPECT_EQ(scene.events.heard.back(), failure);
    EXPECT_EQ(std::count(scene.events.heard.begin(), scene.events.heard.end(), failure), 1) << i;
    // What came before is as in the run that succeeds, and nothing more is asked of the catalog.
    EXPECT_EQ(scene.log.calls, i);
    EXPECT_EQ(scene.log.steps.back(), failure);
    scene.log.steps.pop_back();
    EXPECT_EQ(scene.log.steps,
              Steps(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(scene.log.steps.size())))
        << i;
    this->Present(scene);
    EXPECT_TRUE(definition->CreatePackage()) << i;
    EXPECT_EQ(this->Contents(scene), whole) << i;
  }
}

TYPED_TEST(PackageDefinitionTest, TheNextRunRepairsWhatAFailedOneLeft) {
  DeployScene scene;
  const auto definition = this->Whole(scene);
  ASSERT_TRUE(definition->CreatePackage());
  const int calls = scene.log.calls;
  const std::string whole = this->Contents(scene);
  for (int i = 1; i <= calls; ++i) {
    this->Present(scene);
    scene.log.failAt = i;
    EXPECT_FALSE(definition->CreatePackage()) << i;
    scene.log.failAt = 0;
    EXPECT_TRUE(definition->CreatePackage()) << i;
    // An application that was added without its values yet has no name to be found by.
    std::erase_if(this->Catalog(scene), [](const auto& entry) { return entry.Name().empty(); });
    EXPECT_EQ(this->Contents(scene), whole) << i;
  }
}

TYPED_TEST(PackageDefinitionTest, CancellingHasNoEffect) {
  DeployScene scene;
  const auto definition = this->Whole(scene);
  ASSERT_TRUE(definition->CreatePackage());
  const Steps heard = scene.events.heard;
  const std::string whole = this->Contents(scene);
  this->Present(scene);
  for (const std::string& event : heard) scene.events.On(event, [](bool& cancel) { cancel = true; });
  EXPECT_TRUE(definition->CreatePackage());
  EXPECT_EQ(this->Contents(scene), whole);
}

TYPED_TEST(PackageDefinitionTest, AnErrorOfAListenerEndsTheDeployment) {
  DeployScene scene;
  const auto definition = this->Whole(scene);
  ASSERT_TRUE(definition->CreatePackage());
  const std::string event = scene.events.heard.back();
  scene.events.On(event, [](bool&) { automation::Raise(5, "Host", "not today"); });
  this->Present(scene);
  EXPECT_FALSE(definition->CreatePackage());
  EXPECT_EQ(scene.events.heard.back(), "MTSEvent Error occured: not today");
}

TYPED_TEST(PackageDefinitionTest, AnErrorOfAListenerToTheErrorIsItsOwn) {
  DeployScene scene;
  const auto definition = this->Whole(scene);
  scene.log.failAt = 1;
  scene.events.On("MTSEvent Error occured: call 1 failed",
                  [](bool&) { automation::Raise(5, "Host", "not today"); });
  EXPECT_FALSE(definition->CreatePackage());
}

TYPED_TEST(PackageDefinitionTest, AProjectThatAListenerTakesOutIsNotInstalled) {
  DeployScene scene;
  const auto definition = this->Whole(scene);
  const auto& where =
      std::is_same_v<TypeParam, MTSPackage> ? " to Package Server" : " to COM+ Application Server";
  scene.events.On(std::string("MTSEvent Adding component A") + where, [&](bool&) {
    const auto project = scene.build->Projects().GetByName("B");
    project->BeginEdit();
    project->Delete();
    project->ApplyEdit();
  });
  EXPECT_TRUE(definition->CreatePackage());
  EXPECT_EQ(this->Catalog(scene).back().components, (Steps{"C:\\src\\A.dll"}));
}

TYPED_TEST(PackageDefinitionTest, EndsInPeaceWhenAListenerKillsTheBuild) {
  DeployScene scene;
  const auto definition = this->Whole(scene);
  const auto& where =
      std::is_same_v<TypeParam, MTSPackage> ? " to Package Server" : " to COM+ Application Server";
  scene.events.On(std::string("MTSEvent Adding component A") + where, [&](bool&) { scene.build->Kill(); });
  EXPECT_FALSE(definition->CreatePackage());
  EXPECT_EQ(this->Catalog(scene).back().components, (Steps{"C:\\src\\A.dll"}));
  EXPECT_EQ(scene.events.heard.back(),
            "MTSEvent Error occured: Object variable or With block variable not set");
}

TYPED_TEST(PackageDefinitionTest, LivesOnWhenAListenerDropsEverything) {
  DeployScene scene;
  auto definition = this->Whole(scene);
  PackageDefinition& running = *definition;
  const auto& where =
      std::is_same_v<TypeParam, MTSPackage> ? " to Package Server" : " to COM+ Application Server";
  scene.events.On(std::string("MTSEvent Adding component A") + where, [&](bool&) {
    scene.build = nullptr;
    definition = nullptr;
  });
  EXPECT_TRUE(running.CreatePackage());
}

TYPED_TEST(PackageDefinitionTest, WithoutABuildNothingIsCreatedAndNobodyHears) {
  DeployScene scene;
  const auto definition = this->Whole(scene);
  scene.build->Kill();
  EXPECT_FALSE(definition->CreatePackage());
  EXPECT_TRUE(scene.events.heard.empty());
}

// --- the edit cycle ---

TYPED_TEST(PackageDefinitionTest, MisuseOfTheEditCycleIsRefused) {
  const DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  const std::string cancel = this->Source("CancelEdit");
  ExpectError([&] { definition->ApplyEdit(); }, 1004, cancel, "Not in edit mode");
  ExpectError([&] { definition->Delete(); }, 1004, cancel, "Not in edit mode");
  ExpectError([&] { definition->CancelEdit(); }, 1004, cancel, "Not in edit mode");
  definition->BeginEdit();
  ExpectError([&] { definition->BeginEdit(); }, 1004, this->Source("BeginEdit"), "Already in edit mode");
}

TYPED_TEST(PackageDefinitionTest, ANewOneIsListedOnceItIsStored) {
  DeployScene scene;
  const auto definition = this->In(scene).Create();
  definition->BeginEdit();
  EXPECT_EQ(this->In(scene).Count(), 0);
  definition->SetName("Server");
  definition->ApplyEdit();
  EXPECT_GT(definition->Id(), 0);
  ASSERT_EQ(this->In(scene).Count(), 1);
  EXPECT_EQ(this->In(scene).Item(Variant::FromText(automation::Decimal(definition->Id()))), definition);
  definition->BeginEdit();
  definition->SetName("Renamed");
  definition->ApplyEdit();
  EXPECT_EQ(this->In(scene).Count(), 1);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 1);
}

TYPED_TEST(PackageDefinitionTest, ANewOneWithoutNameCanNotBeStored) {
  DeployScene scene;
  const auto definition = this->In(scene).Create();
  definition->BeginEdit();
  ExpectError([&] { definition->ApplyEdit(); }, 45, this->Source("Name"), kBlankName);
  // Its width leaves only blanks of this one.
  definition->SetName(std::string(60, ' ') + "x");
  ExpectError([&] { definition->ApplyEdit(); }, 45, this->Source("Name"), kBlankName);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 0);
  definition->SetName("Server");
  definition->ApplyEdit();
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 1);
}

TYPED_TEST(PackageDefinitionTest, ANewOneThatIsDeletedLeavesNothing) {
  DeployScene scene;
  const auto definition = this->In(scene).Create();
  definition->BeginEdit();
  definition->SetName("Server");
  definition->Delete();
  definition->ApplyEdit();
  EXPECT_EQ(this->In(scene).Count(), 0);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 0);
}

TYPED_TEST(PackageDefinitionTest, WritesItsColumnsInTheirOrder) {
  DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  const std::string id = automation::Decimal(definition->Id());
  Steps expected = {"SELECT * FROM MTSPackages where id = " + id,
                    "Edit",
                    "Name",
                    "User",
                    "Description",
                    "Password",
                    "Autentication",
                    "LeaveRunningIdle",
                    "Shutdowntime",
                    "DisableDelete",
                    "DisableChanges",
                    "LibraryPackage",
                    "idBuild",
                    "ExportFile"};
  if constexpr (std::is_same_v<TypeParam, COMApplication>) {
    const Steps own = {"CreateFlags",          "IsSystem",
                       "AccessChecksLevel",    "ApplicationAccessChecksEnabled",
                       "CommandLine",          "ImpersonationLevel",
                       "CRMEnabled",           "AuthenticationCapability",
                       "GigSupportEnabled",    "QueuingEnabled",
                       "QueueListenerEnabled", "EventsEnabled",
                       "ApplicationProxy",     "ApplicationProxyServerName",
                       "CRMLogFile",           "ExportFlags"};
    expected.insert(expected.end(), own.begin(), own.end());
  }
  expected.emplace_back("Update");
  scene.workspace->lines->clear();
  definition->BeginEdit();
  definition->SetName("Renamed");
  definition->ApplyEdit();
  EXPECT_EQ(*scene.workspace->lines, expected);
}

TYPED_TEST(PackageDefinitionTest, ADeletionAsksFirstWhetherProjectsUseIt) {
  DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  const std::string id = automation::Decimal(definition->Id());
  scene.workspace->lines->clear();
  this->Delete(*definition);
  EXPECT_EQ(*scene.workspace->lines, (Steps{"SELECT * FROM MTSPackages where id = " + id,
                                            "SELECT COUNT(MTSPackage)FROM Project WHERE MTSPackage = " + id,
                                            "DELETE FROM MTSPackages WHERE id = " + id}));
}

TYPED_TEST(PackageDefinitionTest, CancelEditRestoresTheRecord) {
  DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  definition->BeginEdit();
  definition->SetName("Other");
  definition->SetShutdowntime(9);
  definition->SetLeaveRunningIdle(true);
  definition->Delete();
  definition->CancelEdit();
  EXPECT_EQ(definition->Name(), "Server");
  EXPECT_EQ(definition->Shutdowntime(), 3);
  EXPECT_FALSE(definition->LeaveRunningIdle());
  definition->BeginEdit();
  definition->ApplyEdit();
  EXPECT_EQ(this->In(scene).Count(), 1) << "the deletion was cancelled, too";
  EXPECT_EQ(scene.template Again<TypeParam>(definition->Id())->Name(), "Server");
}

TYPED_TEST(PackageDefinitionTest, WithoutAChangeNothingIsStored) {
  DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  DeployScene::Database().Execute("UPDATE MTSPackages SET Description = 'of somebody else'");
  definition->BeginEdit();
  definition->ApplyEdit();
  EXPECT_EQ(scene.template Again<TypeParam>(definition->Id())->Description(), "of somebody else");
}

TYPED_TEST(PackageDefinitionTest, AFailedApplyEditCanBeTriedAgain) {
  DeployScene scene;
  const auto definition = this->In(scene).Create();
  definition->BeginEdit();
  definition->SetName("Server");
  modDatabase::CloseDatabase();
  const std::string bytes = scene.Read("C:\\data\\Build.mdb");
  scene.WriteBytes("C:\\data\\Build.mdb", "damaged");
  EXPECT_EQ(ErrorOf([&] { definition->ApplyEdit(); }).Description(), "The database is unavailable.");
  EXPECT_EQ(definition->Id(), 0);
  scene.WriteBytes("C:\\data\\Build.mdb", bytes);
  definition->ApplyEdit();
  EXPECT_EQ(this->In(scene).Count(), 1);
}

TYPED_TEST(PackageDefinitionTest, ADeletedOneTakesItsRowAlong) {
  DeployScene scene;
  const auto kept = scene.NewOf<TypeParam>("Kept");
  const auto deleted = scene.NewOf<TypeParam>("Deleted");
  this->Delete(*deleted);
  EXPECT_EQ(this->In(scene).Count(), 1);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 1);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages", "Name = 'Kept'"), 1);
  EXPECT_EQ(deleted->ParentOrNull(), nullptr);
  EXPECT_EQ(deleted->Name(), "Deleted");
}

TYPED_TEST(PackageDefinitionTest, OneThatProjectsUseCanNotBeDeleted) {
  DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  const auto project = scene.AddTo(definition->Id(), "Lib");
  definition->BeginEdit();
  definition->Delete();
  ExpectError([&] { definition->ApplyEdit(); }, 45, KindOf<TypeParam>::kSaveSource, kIsUsed);
  EXPECT_EQ(this->In(scene).Count(), 1);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 1);
  project->BeginEdit();
  project->SetMtsPackageId(0);
  project->ApplyEdit();
  definition->ApplyEdit();
  EXPECT_EQ(this->In(scene).Count(), 0);
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 0);
}

TYPED_TEST(PackageDefinitionTest, OneWhoseRowIsGoneIsStoredAnew) {
  DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  const std::string id = automation::Decimal(definition->Id());
  DeployScene::Database().Execute("DELETE FROM MTSPackages WHERE id = " + id);
  definition->BeginEdit();
  definition->SetName("Renamed");
  definition->ApplyEdit();
  ASSERT_EQ(this->In(scene).Count(), 1);
  EXPECT_EQ(this->In(scene).Item(Variant::FromText(automation::Decimal(definition->Id()))), definition);
  DeployScene::Database().Execute("DELETE FROM MTSPackages");
  this->Delete(*definition);
  EXPECT_EQ(this->In(scene).Count(), 0);
}

TYPED_TEST(PackageDefinitionTest, SkipIsNotStored) {
  DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  definition->BeginEdit();
  definition->Let("Skip", {Variant::FromBoolean(true)});
  definition->ApplyEdit();
  EXPECT_TRUE(automation::ToBoolean(definition->Get("Skip")));
  EXPECT_FALSE(scene.template Again<TypeParam>(definition->Id())->Skip());
}

}  // namespace
}  // namespace hearthmake
