// What the collections of packages and applications have in common.

#include "deployment/PackageDefinitions.hpp"

#include <gtest/gtest.h>

#include "support/DeployScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::Ref;
using automation::Variant;
using support::DeployScene;
using support::ExpectError;
using support::KindOf;
using Steps = std::vector<std::string>;

template <class T>
class PackageDefinitionsTest : public testing::Test {
 protected:
  static auto& In(const DeployScene& scene) { return KindOf<T>::In(*scene.build); }
  // Names of what is in the catalog.
  static std::string Created(const DeployScene& scene) {
    std::string names;
    const auto add = [&](const support::CatalogEntries& entries) {
      for (const auto& entry : entries) names += entry.Name();
    };
    add(scene.mts->packages);
    add(scene.comPlus->applications);
    return names;
  }
  static void WriteScript(const DeployScene& scene, const std::string& text) {
    scene.SetOption("RunScripts", "-1");
    scene.build->Scripts().SetAfterMTSpackage(text);
  }
  static std::string Report(const DeployScene& scene) { return scene.Read("C:\\data\\BUILD_Suite.log"); }
};

using Kinds = testing::Types<MTSPackage, COMApplication>;
TYPED_TEST_SUITE(PackageDefinitionsTest, Kinds);

TYPED_TEST(PackageDefinitionsTest, AreThoseOfTheBuildInTheOrderOfTheirRows) {
  DeployScene scene;
  const auto other = DeployScene::Stored("Other");
  scene.NewOf<MTSPackage>("B");
  scene.NewIn<COMApplication>(*other, "Elsewhere");
  scene.NewOf<COMApplication>("A");
  const auto loaded = DeployScene::Loaded(scene.build->Id());
  auto& definitions = KindOf<TypeParam>::In(*loaded);
  ASSERT_EQ(definitions.Count(), 2);
  EXPECT_EQ(definitions.Item(Variant::FromLong(1))->Name(), "B");
  EXPECT_EQ(definitions.Item(Variant::FromLong(2))->Name(), "A");
  EXPECT_EQ(definitions.Parent(), loaded.Get());
}

TYPED_TEST(PackageDefinitionsTest, AreFoundByPositionAndById) {
  DeployScene scene;
  const auto definition = scene.NewOf<TypeParam>("Server");
  auto& definitions = this->In(scene);
  const std::string source = definitions.Declaration().Name() + ".item";
  EXPECT_EQ(definitions.Item(Variant::FromLong(1)), definition);
  EXPECT_EQ(definitions.Item(Variant::FromText(automation::Decimal(definition->Id()))), definition);
  ExpectError([&] { definitions.Item(Variant::FromLong(2)); }, 9, source, "Subscript out of range");
  ExpectError([&] { definitions.Item(Variant::FromLong(0)); }, 9, source, "Subscript out of range");
  ExpectError([&] { definitions.Item(Variant::FromText("Server")); }, 5, source,
              "Invalid procedure call or argument");
}

TYPED_TEST(PackageDefinitionsTest, CanBeUsedByName) {
  DeployScene scene;
  const Variant definitions = scene.build->Get(this->In(scene).Declaration().Name());
  const Variant made = definitions.AsObject()->Call("create");
  made.AsObject()->Call("BeginEdit");
  made.AsObject()->Let("name", {Variant::FromText("Server")});
  made.AsObject()->Call("ApplyEdit");
  EXPECT_EQ(automation::ToLong(definitions.AsObject()->Get("Count")), 1);
  EXPECT_EQ(definitions.AsObject()->Get("Parent").AsObject(), scene.build.Get());
  const Variant result = definitions.AsObject()->Call("CreateAllPackages");
  EXPECT_EQ(support::Shown(result), "True");
  Variant item;
  const auto walk = definitions.AsObject()->Enumerate();
  ASSERT_TRUE(walk->Next(item));
  EXPECT_EQ(item.AsObject(), made.AsObject());
  EXPECT_FALSE(walk->Next(item));
}

TYPED_TEST(PackageDefinitionsTest, AreLoadedAtTheirFirstUse) {
  DeployScene scene;
  const auto loaded = DeployScene::Loaded(scene.build->Id());
  scene.NewOf<TypeParam>("Late");
  auto& definitions = KindOf<TypeParam>::In(*loaded);
  EXPECT_EQ(definitions.Count(), 1);
  scene.NewOf<TypeParam>("Later");
  EXPECT_EQ(&KindOf<TypeParam>::In(*loaded), &definitions);
  EXPECT_EQ(definitions.Count(), 1);
  const auto known = definitions.Item(Variant::FromLong(1));
  definitions.Load();
  EXPECT_EQ(definitions.Count(), 2);
  EXPECT_EQ(definitions.Item(Variant::FromLong(1)), known) << "only new rows were read";
}

TYPED_TEST(PackageDefinitionsTest, AreReadWithOneSelection) {
  const DeployScene scene;
  const auto loaded = DeployScene::Loaded(scene.build->Id());
  scene.workspace->lines->clear();
  KindOf<TypeParam>::In(*loaded);
  EXPECT_EQ(*scene.workspace->lines, (Steps{"SELECT * FROM MTSPackages WHERE idBuild = 1"}));
}

TYPED_TEST(PackageDefinitionsTest, AFailedLoadIsTriedAgain) {
  DeployScene scene;
  scene.NewOf<TypeParam>("Server");
  modDatabase::CloseDatabase();
  const std::string bytes = scene.Read("C:\\data\\Build.mdb");
  const auto loaded = DeployScene::Loaded(scene.build->Id());
  modDatabase::CloseDatabase();
  scene.WriteBytes("C:\\data\\Build.mdb", "damaged");
  EXPECT_EQ(support::ErrorOf([&] { KindOf<TypeParam>::In(*loaded); }).Source(), "DB");
  scene.WriteBytes("C:\\data\\Build.mdb", bytes);
  EXPECT_EQ(KindOf<TypeParam>::In(*loaded).Count(), 1);
}

TYPED_TEST(PackageDefinitionsTest, AMemberThatAHostKeepsKeepsItsBuild) {
  DeployScene scene;
  auto made = this->In(scene).Create();
  made->SetName("New");
  scene.build = nullptr;
  made->BeginEdit();
  made->ApplyEdit();
  EXPECT_EQ(DeployScene::CountRows("MTSPackages", "idBuild = 1"), 1);
}

TYPED_TEST(PackageDefinitionsTest, OfAKilledBuildAreEmptyAndWithoutParent) {
  DeployScene scene;
  const auto kept = scene.NewOf<TypeParam>("Server");
  const auto fresh = this->In(scene).Create();
  const Ref<automation::Object> definitions(&this->In(scene));
  auto& list = this->In(scene);
  scene.build->Kill();
  EXPECT_EQ(list.Count(), 0);
  EXPECT_EQ(list.Parent(), nullptr);
  EXPECT_EQ(kept->Name(), "Server");
  EXPECT_EQ(support::ErrorOf([&] { list.Create(); }).Number(), 91);
  fresh->SetName("Orphan");
  fresh->BeginEdit();
  EXPECT_EQ(support::ErrorOf([&] { fresh->ApplyEdit(); }).Number(), 91);
  EXPECT_FALSE(list.CreateAllPackages());
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 1);
}

// --- CreateAllPackages ---

TYPED_TEST(PackageDefinitionsTest, CreateAllPackagesCreatesEachInOrder) {
  DeployScene scene;
  for (const char* name : {"C", "A", "B"}) scene.NewOf<TypeParam>(name);
  EXPECT_TRUE(this->In(scene).CreateAllPackages());
  EXPECT_EQ(this->Created(scene), "CAB");
}

TYPED_TEST(PackageDefinitionsTest, CreateAllPackagesWritesTheHeaderOfTheReport) {
  DeployScene scene;
  scene.SetOption("CreateReport", "True");
  EXPECT_FALSE(this->In(scene).CreateAllPackages());
  const std::string report = this->Report(scene);
  const std::string header = "[Createing COM+ Applications]\r\n\r\n";
  ASSERT_GT(report.size(), header.size());
  EXPECT_EQ(report.substr(report.size() - header.size()), header);
}

TYPED_TEST(PackageDefinitionsTest, CreateAllPackagesPassesOverThoseToBeSkipped) {
  DeployScene scene;
  for (const char* name : {"A", "B", "C"}) scene.NewOf<TypeParam>(name)->SetSkip(name[0] != 'B');
  EXPECT_TRUE(this->In(scene).CreateAllPackages());
  EXPECT_EQ(this->Created(scene), "B");
}

TYPED_TEST(PackageDefinitionsTest, CreateAllPackagesOfNoneIsNoSuccess) {
  const DeployScene scene;
  EXPECT_FALSE(this->In(scene).CreateAllPackages());
  EXPECT_TRUE(scene.events.heard.empty());
}

TYPED_TEST(PackageDefinitionsTest, CreateAllPackagesStopsAtTheFirstFailure) {
  DeployScene scene;
  for (const char* name : {"A", "B"}) scene.NewOf<TypeParam>(name);
  EXPECT_TRUE(this->In(scene).CreateAllPackages());
  scene.mts->packages.clear();
  scene.comPlus->applications.clear();
  const auto third = scene.NewOf<TypeParam>("C");
  scene.log.Clear();
  scene.log.failAt = 1;
  EXPECT_FALSE(this->In(scene).CreateAllPackages());
  EXPECT_EQ(this->Created(scene), "");
  EXPECT_EQ(scene.events.heard.back(), "MTSEvent Error occured: call 1 failed");
}

TYPED_TEST(PackageDefinitionsTest, AFailureAfterASuccessIsTheResult) {
  DeployScene scene;
  for (const char* name : {"A", "B", "C"}) scene.NewOf<TypeParam>(name);
  this->In(scene).Item(Variant::FromLong(1))->CreatePackage();
  const int calls = scene.log.calls;
  scene.mts->packages.clear();
  scene.comPlus->applications.clear();
  scene.log.Clear();
  scene.log.failAt = calls + 1;
  EXPECT_FALSE(this->In(scene).CreateAllPackages());
  EXPECT_EQ(this->Created(scene), "A") << "what was done stays done";
}

TYPED_TEST(PackageDefinitionsTest, TheScriptRunsAfterAllPackages) {
  DeployScene scene;
  scene.NewOf<TypeParam>("A");
  this->WriteScript(scene, "Build.Scripts.Notify \"after\"");
  EXPECT_TRUE(this->In(scene).CreateAllPackages());
  EXPECT_EQ(scene.events.heard.back(), "ScriptNotify 0 after");
}

TYPED_TEST(PackageDefinitionsTest, TheScriptRunsThoughAllAreSkipped) {
  DeployScene scene;
  scene.NewOf<TypeParam>("A")->SetSkip(true);
  this->WriteScript(scene, "Build.Scripts.Notify \"after\"");
  EXPECT_FALSE(this->In(scene).CreateAllPackages());
  EXPECT_EQ(scene.events.heard, (Steps{"ScriptNotify 0 after"}));
}

TYPED_TEST(PackageDefinitionsTest, TheScriptRunsThoughAPackageFailed) {
  DeployScene scene;
  scene.NewOf<TypeParam>("A");
  this->WriteScript(scene, "Build.Scripts.Notify \"after\"");
  scene.log.failAt = 1;
  EXPECT_FALSE(this->In(scene).CreateAllPackages());
  EXPECT_EQ(scene.events.heard, (Steps{"MTSEvent Error occured: call 1 failed", "ScriptNotify 0 after"}));
}

TYPED_TEST(PackageDefinitionsTest, TheScriptDoesNotRunWhenScriptsAreOff) {
  DeployScene scene;
  scene.NewOf<TypeParam>("A")->SetSkip(true);
  this->WriteScript(scene, "Build.Scripts.Notify \"after\"");
  scene.SetOption("RunScripts", "0");
  EXPECT_FALSE(this->In(scene).CreateAllPackages());
  EXPECT_TRUE(scene.events.heard.empty());
}

TYPED_TEST(PackageDefinitionsTest, AScriptThatFailsIsToldAndChangesNoResult) {
  DeployScene scene;
  scene.NewOf<TypeParam>("A");
  this->WriteScript(scene, "Err.Raise 1000, \"Script\", \"no luck\"");
  EXPECT_TRUE(this->In(scene).CreateAllPackages());
  EXPECT_EQ(scene.events.heard.back().find("MTSEvent Error occured: Script Error: no luck"), 0U)
      << scene.events.heard.back();
}

TYPED_TEST(PackageDefinitionsTest, AReportThatCanNotBeWrittenIsToldBeforeAnythingIsCreated) {
  DeployScene scene;
  scene.NewOf<TypeParam>("A");
  scene.SetOption("CreateReport", "True");
  scene.root.MakeFolder("drive_c/data/BUILD_Suite.log");
  EXPECT_FALSE(this->In(scene).CreateAllPackages());
  ASSERT_EQ(scene.events.heard.size(), 1U);
  EXPECT_EQ(scene.events.heard[0].find("MTSEvent Error occured: "), 0U);
  EXPECT_EQ(this->Created(scene), "");
}

TYPED_TEST(PackageDefinitionsTest, OneThatAListenerDeletesIsNotCreated) {
  DeployScene scene;
  scene.NewOf<TypeParam>("A")->SetExportPath("C:\\A.out");
  const auto second = scene.NewOf<TypeParam>("B");
  const std::string event = std::is_same_v<TypeParam, MTSPackage> ? "MTSEvent Exporting package: A"
                                                                  : "MTSEvent Exporting COM+ Application: A";
  scene.events.On(event, [&](bool&) {
    second->BeginEdit();
    second->Delete();
    second->ApplyEdit();
  });
  EXPECT_TRUE(this->In(scene).CreateAllPackages());
  EXPECT_EQ(this->Created(scene), "A");
}

TYPED_TEST(PackageDefinitionsTest, EndsInPeaceWhenAListenerKillsTheBuildBetweenTwo) {
  DeployScene scene;
  scene.NewOf<TypeParam>("A")->SetExportPath("C:\\A.out");
  scene.NewOf<TypeParam>("B");
  const std::string event = std::is_same_v<TypeParam, MTSPackage> ? "MTSEvent Exporting package: A"
                                                                  : "MTSEvent Exporting COM+ Application: A";
  scene.events.On(event, [&](bool&) { scene.build->Kill(); });
  this->In(scene).CreateAllPackages();
  EXPECT_EQ(this->Created(scene), "A");
  EXPECT_EQ(scene.events.heard.back(),
            "MTSEvent Error occured: Object variable or With block variable not set");
}

// --- one row, two objects ---

TEST(PackageDefinitions, ARowIsAPackageAndAnApplicationAtOnce) {
  const DeployScene scene;
  const auto package = scene.NewOf<MTSPackage>("Server");
  const auto application = scene.build->COMApplications().Item(Variant::FromLong(1));
  EXPECT_EQ(application->Id(), package->Id());
  EXPECT_EQ(application->Name(), "Server");
  EXPECT_EQ(DeployScene::CountRows("MTSPackages"), 1);
}

}  // namespace
}  // namespace hearthmake
