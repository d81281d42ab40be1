#include "adapters/catalog/FileMtsCatalogs.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "adapters/catalog/OpenCatalog.hpp"
#include "platform/MtsCatalogConformance.hpp"
#include "support/CatalogBench.hpp"

namespace hearthmake::platform {

INSTANTIATE_TEST_SUITE_P(File, MtsCatalogConformance, ::testing::Values([] {
                           const auto bench = std::make_shared<support::CatalogBench>();
                           return MtsCatalogPlayground{
                               std::make_shared<catalog::FileMtsCatalogs>(bench->File(), bench->Components()),
                               support::CatalogBench::kBinary,
                               {"Orders.Order", "Orders.Line"},
                               "C:\\free.pak",
                               [bench](const std::string& path) { return bench->files->FileExists(path); },
                               bench};
                         }));

}  // namespace hearthmake::platform

namespace hearthmake::catalog {
namespace {

using automation::Variant;
using nlohmann::ordered_json;
using platform::MtsCollection;
using support::ErrorOf;
using support::ExpectError;
using testing::HasSubstr;
using testing::Not;

class FileMtsCatalogsTest : public testing::Test {
 protected:
  std::shared_ptr<MtsCollection> Packages() {
    auto packages = FileMtsCatalogs(bench.File(), bench.Components()).Create()->GetCollection("Packages");
    packages->Populate();
    return packages;
  }
  // With one property of the value "N".
  std::string MakePackage(const std::string& name, const std::string& protection = "none") {
    const auto packages = Packages();
    const auto package = packages->Add();
    package->SetValue("Name", Variant::FromText(name));
    package->SetValue(protection, Variant::FromText("N"));
    packages->SaveChanges();
    return package->Key();
  }
  ordered_json Stored() const { return ordered_json::parse(bench.Text()); }

  support::CatalogBench bench;
};

TEST_F(FileMtsCatalogsTest, MakesTheFileAndItsFolderAtTheFirstChange) {
  EXPECT_EQ(Packages()->Count(), 0);
  EXPECT_FALSE(std::filesystem::exists(bench.Path()));
  MakePackage("Orders");
  EXPECT_THAT(bench.Text(), HasSubstr("\"Name\": \"Orders\""));
}

TEST_F(FileMtsCatalogsTest, WritesNothingWhenNothingIsPending) {
  MakePackage("Orders");
  const auto before = std::filesystem::last_write_time(bench.Path());
  std::filesystem::last_write_time(bench.Path(), before - std::chrono::hours(1));
  const auto packages = Packages();
  packages->SaveChanges();
  packages->Item(0)->SetValue("Name", Variant::FromText("Orders"));
  packages->SaveChanges();
  EXPECT_EQ(std::filesystem::last_write_time(bench.Path()), before - std::chrono::hours(1));
}

TEST_F(FileMtsCatalogsTest, KeepsThePropertiesInTheOrderTheyWereSet) {
  const auto packages = Packages();
  const auto package = packages->Add();
  for (const char* name : {"Zeta", "Name", "Alpha", "Zeta"}) package->SetValue(name, Variant::FromText("x"));
  packages->SaveChanges();
  package->SetValue("Alpha", Variant::FromText("y"));
  package->SetValue("Last", Variant::FromLong(1));
  packages->SaveChanges();
  EXPECT_EQ(Stored()["packages"][0]["properties"].dump(), R"({"Zeta":"x","Name":"x","Alpha":"y","Last":1})");
}

TEST_F(FileMtsCatalogsTest, NeverWritesAPassword) {
  const auto packages = Packages();
  packages->Add()->SetValue("Password", Variant::FromText("s3cret"));
  packages->SaveChanges();
  packages->GetUtilInterface()->ExportPackage(packages->Item(0)->Key(), "C:\\x.pak", 0);
  EXPECT_THAT(bench.Text(), Not(HasSubstr("s3cret")));
  EXPECT_EQ(Stored()["packages"][0]["properties"].dump(), R"({"Password":{"Secret":true}})");
  EXPECT_THAT(bench.files->Read("C:\\x.pak"), Not(HasSubstr("Password")));
}

TEST_F(FileMtsCatalogsTest, ListsAComponentWithItsFilesAndClasses) {
  const std::string key = MakePackage("Orders");
  bench.root.MakeFile("drive_c/Orders.tlb", "library");
  bench.typeLibs->Put("C:\\Orders.tlb", "Orders", {"Remote"}, '2');
  const auto components = Packages()->GetCollection("ComponentsInPackage", key);
  components->GetUtilInterface()->InstallComponent(support::CatalogBench::kBinary, "C:\\Orders.tlb", "");
  EXPECT_EQ(Stored()["packages"][0]["components"].dump(),
            R"([{"dll":"C:\\Orders.dll","typeLib":"C:\\Orders.tlb","proxyStub":"",)"
            R"("library":{"guid":"{00000002-0000-0000-0000-00000000000F}","name":"Orders","version":"2.b"},)"
            R"("classes":[{"clsid":"{00000002-0000-0000-0000-000000000000}","progId":"Orders.Remote"}]}])");
  components->Populate();
  ASSERT_EQ(components->Count(), 1);
  EXPECT_EQ(components->Item(0)->Key(), "{00000002-0000-0000-0000-000000000000}");
  EXPECT_EQ(automation::ToText(components->Item(0)->Value("DLL")), support::CatalogBench::kBinary);
}

TEST_F(FileMtsCatalogsTest, ReplacesAComponentThatIsInstalledAgain) {
  const auto components = Packages()->GetCollection("ComponentsInPackage", MakePackage("Orders"));
  components->GetUtilInterface()->InstallComponent(support::CatalogBench::kBinary, "", "");
  bench.typeLibs->Put(support::CatalogBench::kBinary, "Orders", {"Basket"}, '3');
  components->GetUtilInterface()->InstallComponent(support::CatalogBench::kBinary, "", "");
  components->Populate();
  ASSERT_EQ(components->Count(), 1);
  EXPECT_EQ(components->Item(0)->Name(), "Orders.Basket");
}

TEST_F(FileMtsCatalogsTest, RefusesABinaryWithoutATypeLibraryOrClasses) {
  const auto util =
      Packages()->GetCollection("ComponentsInPackage", MakePackage("Orders"))->GetUtilInterface();
  bench.root.MakeFile("drive_c/plain.dll", "binary");
  ExpectError([&] { util->InstallComponent("C:\\plain.dll", "", ""); }, 45, "Catalog",
              "C:\\plain.dll is no library");
  bench.typeLibs->Put("C:\\plain.dll", "Plain", {"Hidden"}, '4');
  bench.typeLibs->libraries["C:\\plain.dll"].types[0].flags = 0;
  ExpectError([&] { util->InstallComponent("C:\\plain.dll", "", ""); }, 45, "Catalog",
              "C:\\plain.dll: there is no class in its type library that can be created.");
}

TEST_F(FileMtsCatalogsTest, RefusesFilesThatAreMissing) {
  const auto util =
      Packages()->GetCollection("ComponentsInPackage", MakePackage("Orders"))->GetUtilInterface();
  ExpectError([&] { util->InstallComponent("C:\\none.dll", "C:\\none.dll", ""); }, 53, "Catalog",
              "File not found: C:\\none.dll");
  ExpectError([&] { util->InstallComponent(support::CatalogBench::kBinary, "C:\\none.tlb", ""); }, 53,
              "Catalog", "File not found: C:\\none.tlb");
  ExpectError([&] { util->InstallComponent(support::CatalogBench::kBinary, "", "C:\\ps.dll"); }, 53,
              "Catalog", "File not found: C:\\ps.dll");
}

TEST_F(FileMtsCatalogsTest, KeepsPropertiesOfAClassAndRefusesToRenameIt) {
  const std::string key = MakePackage("Orders");
  const auto components = Packages()->GetCollection("ComponentsInPackage", key);
  components->GetUtilInterface()->InstallComponent(support::CatalogBench::kBinary, "", "");
  components->Populate();
  components->Item(1)->SetValue("Transaction", Variant::FromText("Required"));
  components->SaveChanges();
  EXPECT_EQ(Stored()["packages"][0]["components"][0]["classes"][1]["properties"].dump(),
            R"({"Transaction":"Required"})");
  components->Item(0)->SetValue("ProgID", Variant::FromText("Other"));
  EXPECT_EQ(ErrorOf([&] { components->SaveChanges(); }).Number(), 45);
}

TEST_F(FileMtsCatalogsTest, RemovesClassesAndThenTheirBinary) {
  const std::string key = MakePackage("Orders");
  const auto components = Packages()->GetCollection("ComponentsInPackage", key);
  components->GetUtilInterface()->InstallComponent(support::CatalogBench::kBinary, "", "");
  components->Populate();
  components->Remove(0);
  components->SaveChanges();
  EXPECT_EQ(Stored()["packages"][0]["components"][0]["classes"].size(), 1U);
  components->Remove(0);
  components->SaveChanges();
  EXPECT_TRUE(Stored()["packages"][0]["components"].empty());
}

TEST_F(FileMtsCatalogsTest, RefusesToAddAClassWithoutABinary) {
  const auto components = Packages()->GetCollection("ComponentsInPackage", MakePackage("Orders"));
  components->Add();
  EXPECT_EQ(ErrorOf([&] { components->SaveChanges(); }).Number(), 45);
}

TEST_F(FileMtsCatalogsTest, KeepsTheRolesOfAPackage) {
  const std::string key = MakePackage("Orders");
  const auto roles = Packages()->GetCollection("RolesInPackage", key);
  for (const char* name : {"Clerks", "Guests"}) roles->Add()->SetValue("Name", Variant::FromText(name));
  roles->SaveChanges();
  roles->Item(0)->SetValue("Description", Variant::FromText("who sell"));
  roles->Remove(1);
  roles->SaveChanges();
  const auto again = Packages()->GetCollection("RolesInPackage", key);
  again->Populate();
  ASSERT_EQ(again->Count(), 1);
  EXPECT_EQ(again->Item(0)->Name(), "Clerks");
  EXPECT_EQ(automation::ToText(again->Item(0)->Value("Description")), "who sell");
}

TEST_F(FileMtsCatalogsTest, RefusesToRemoveAProtectedPackage) {
  MakePackage("Orders", "Deleteable");
  const auto packages = Packages();
  packages->Remove(0);
  packages->Add()->SetValue("Name", Variant::FromText("Stock"));
  ExpectError([&] { packages->SaveChanges(); }, 70, "Catalog",
              "Permission denied: the package 'Orders' is protected against deletion (Deleteable is \"N\")");
  EXPECT_EQ(Packages()->Count(), 1);  // the addition did not happen either
  Unprotect(*bench.File(), PackageKind::Mts, "Orders");
  packages->SaveChanges();
  EXPECT_EQ(Packages()->Item(0)->Name(), "Stock");
}

TEST_F(FileMtsCatalogsTest, RefusesToChangeAProtectedPackage) {
  const std::string key = MakePackage("Orders", "Changeable");
  const auto packages = Packages();
  packages->Item(0)->SetValue("Name", Variant::FromText("Orders"));
  packages->SaveChanges();  // what it is already is no change
  packages->Item(0)->SetValue("Description", Variant::FromText("new"));
  ExpectError([&] { packages->SaveChanges(); }, 70, "Catalog",
              "Permission denied: the package 'Orders' is protected against changes (Changeable is \"N\")");
  const auto components = packages->GetCollection("ComponentsInPackage", key);
  EXPECT_EQ(ErrorOf([&] {
              components->GetUtilInterface()->InstallComponent(support::CatalogBench::kBinary, "", "");
            }).Number(),
            70);
  const auto roles = packages->GetCollection("RolesInPackage", key);
  roles->Add();
  EXPECT_EQ(ErrorOf([&] { roles->SaveChanges(); }).Number(), 70);
}

TEST_F(FileMtsCatalogsTest, LiftsProtectionWithASaveThatSaysSo) {
  MakePackage("Orders", "Changeable");
  const auto packages = Packages();
  packages->Item(0)->SetValue("Description", Variant::FromText("new"));
  packages->Item(0)->SetValue("Changeable", Variant::FromText("Y"));
  packages->SaveChanges();
  EXPECT_EQ(automation::ToText(Packages()->Item(0)->Value("Description")), "new");
}

// A deployment says Changeable before it installs the components.
TEST_F(FileMtsCatalogsTest, LetsWhoeverAddedAProtectedPackageGoOn) {
  const auto packages = Packages();
  const auto package = packages->Add();
  package->SetValue("Changeable", Variant::FromText("N"));
  packages->SaveChanges();
  packages->GetCollection("ComponentsInPackage", package->Key())
      ->GetUtilInterface()
      ->InstallComponent(support::CatalogBench::kBinary, "", "");
  EXPECT_EQ(Stored()["packages"][0]["components"].size(), 1U);
}

TEST_F(FileMtsCatalogsTest, TellsOfAPackageThatIsGone) {
  MakePackage("Orders");
  const auto packages = Packages();
  const auto others = Packages();
  others->Remove(0);
  others->SaveChanges();
  packages->Item(0)->SetValue("Description", Variant::FromText("new"));
  const auto error = ErrorOf([&] { packages->SaveChanges(); });
  EXPECT_EQ(error.Number(), 45);
  EXPECT_THAT(error.Description(), HasSubstr("There is no package '{"));
  packages->Populate();
  others->Populate();
  EXPECT_EQ(packages->Count(), 0);
}

TEST_F(FileMtsCatalogsTest, ExportsWhatAPackageHolds) {
  const std::string key = MakePackage("Orders");
  const auto packages = Packages();
  packages->GetCollection("ComponentsInPackage", key)
      ->GetUtilInterface()
      ->InstallComponent(support::CatalogBench::kBinary, "", "");
  packages->GetUtilInterface()->ExportPackage(key, "C:\\Orders.pak", 0);
  const auto json = ordered_json::parse(bench.files->Read("C:\\Orders.pak"));
  EXPECT_EQ(json["kind"], "package");
  EXPECT_EQ(json["key"], key);
  EXPECT_EQ(json["properties"]["Name"], "Orders");
  EXPECT_EQ(json["components"][0]["classes"][1]["progId"], "Orders.Line");
  EXPECT_EQ(Stored()["packages"][0]["exports"].dump(), R"([{"file":"C:\\Orders.pak","options":0}])");
}

TEST_F(FileMtsCatalogsTest, TellsOfAnExportIntoNoFolder) {
  const std::string key = MakePackage("Orders");
  const std::string before = bench.Text();
  EXPECT_EQ(ErrorOf([&] {
              Packages()->GetUtilInterface()->ExportPackage(key, "C:\\none\\Orders.pak", 0);
            }).Number(),
            76);
  EXPECT_EQ(bench.Text(), before);
}

TEST_F(FileMtsCatalogsTest, LeavesADamagedFileAsItIs) {
  const std::string damaged = "{\n  \"format\": \"hearthmake catalog\",\n  oops\n}\n";
  bench.Write(damaged);
  const auto packages = FileMtsCatalogs(bench.File(), bench.Components()).Create()->GetCollection("Packages");
  packages->Add();
  for (const auto& attempt : {std::function<void()>([&] { packages->SaveChanges(); }),
                              std::function<void()>([&] { packages->Populate(); })}) {
    ExpectError(attempt, 45, "Catalog",
                bench.Path() +
                    ", line 3: this is damaged or no JSON. Nothing was changed; repair the file or "
                    "move it away.");
  }
  EXPECT_EQ(bench.Text(), damaged);
}

// A process that may write little stands for a full disk.
TEST_F(FileMtsCatalogsTest, KeepsTheOldContentsWhenTheDiskIsFull) {
  MakePackage("Orders");
  const std::string before = bench.Text();
  const pid_t child = fork();
  if (child == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit little{100, 100};
    setrlimit(RLIMIT_FSIZE, &little);
    try {
      MakePackage("Lost");
    } catch (const automation::Error& error) {
      _exit(error.Number());
    }
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(WEXITSTATUS(status), 61);
  EXPECT_EQ(bench.Text(), before);
  for (const auto& entry : std::filesystem::directory_iterator(bench.root.Path()))
    EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
}

// Each process adds packages to the same catalog, all at once.
TEST_F(FileMtsCatalogsTest, LosesNoAdditionOfSeveralProcesses) {
  constexpr int kProcesses = 4;
  constexpr int kPackages = 20;
  std::vector<pid_t> children;
  for (int process = 0; process < kProcesses; ++process) {
    const pid_t child = fork();
    if (child == 0) {
      for (int i = 0; i < kPackages; ++i) MakePackage(std::to_string(process) + "/" + std::to_string(i));
      _exit(0);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  EXPECT_EQ(Packages()->Count(), kProcesses * kPackages);
}

// A process that is killed in the middle of its changes leaves one catalog or the next.
TEST_F(FileMtsCatalogsTest, SurvivesAKillAtAnyTime) {
  for (int round = 0; round < 20; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      for (;;) MakePackage("Orders");
    }
    usleep(static_cast<useconds_t>(1000 + round * 700));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const auto packages = Packages();
    for (std::int32_t i = 0; i < packages->Count(); ++i) EXPECT_EQ(packages->Item(i)->Name(), "Orders");
  }
  EXPECT_GT(Packages()->Count(), 0);
}

}  // namespace
}  // namespace hearthmake::catalog
