#include "adapters/catalog/FileComPlusCatalogs.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "adapters/catalog/FileMtsCatalogs.hpp"
#include "adapters/catalog/OpenCatalog.hpp"
#include "platform/ComPlusCatalogConformance.hpp"
#include "support/CatalogBench.hpp"

namespace hearthmake::platform {

INSTANTIATE_TEST_SUITE_P(File, ComPlusCatalogConformance, ::testing::Values([] {
                           const auto bench = std::make_shared<support::CatalogBench>();
                           return ComPlusCatalogPlayground{
                               std::make_shared<catalog::FileComPlusCatalogs>(bench->File(),
                                                                              bench->Components()),
                               support::CatalogBench::kBinary, "C:\\free.msi",
                               [bench](const std::string& path) { return bench->files->FileExists(path); },
                               bench};
                         }));

}  // namespace hearthmake::platform

namespace hearthmake::catalog {
namespace {

using automation::Variant;
using nlohmann::ordered_json;
using support::ErrorOf;
using support::ExpectError;
using testing::HasSubstr;

class FileComPlusCatalogsTest : public testing::Test {
 protected:
  std::shared_ptr<platform::CatalogObject> MakeApplication(const std::string& name) {
    const auto applications = catalog->GetCollection("Applications");
    auto application = applications->Add();
    application->SetValue("Name", Variant::FromText(name));
    applications->SaveChanges();
    return application;
  }
  ordered_json Stored() const { return ordered_json::parse(bench.Text()); }

  support::CatalogBench bench;
  std::unique_ptr<platform::ComPlusCatalog> catalog =
      FileComPlusCatalogs(bench.File(), bench.Components()).Create();
};

TEST_F(FileComPlusCatalogsTest, SharesItsFileWithThePackages) {
  MakeApplication("Orders");
  const auto packages = FileMtsCatalogs(bench.File(), bench.Components()).Create()->GetCollection("Packages");
  packages->Add()->SetValue("Name", Variant::FromText("Old"));
  packages->SaveChanges();
  EXPECT_EQ(Stored()["applications"][0]["properties"]["Name"], "Orders");
  EXPECT_EQ(Stored()["packages"][0]["properties"]["Name"], "Old");
  packages->Populate();
  EXPECT_EQ(packages->Count(), 1);
}

TEST_F(FileComPlusCatalogsTest, FindsAnApplicationByNameOrKey) {
  const std::string key = MakeApplication("Orders")->Key();
  catalog->ShutdownApplication("Orders");
  catalog->InstallComponent(key, support::CatalogBench::kBinary, "", "");
  ExpectError([&] { catalog->ShutdownApplication("ORDERS"); }, 45, "Catalog",
              "There is no application 'ORDERS' in the catalog.");
  EXPECT_EQ(Stored()["applications"][0]["components"].size(), 1U);
}

TEST_F(FileComPlusCatalogsTest, RefreshesTheClassesOfItsComponents) {
  MakeApplication("Orders");
  catalog->InstallComponent("Orders", support::CatalogBench::kBinary, "", "");
  bench.typeLibs->Put(support::CatalogBench::kBinary, "Orders", {"Order", "Line", "Basket"}, '1');
  catalog->RefreshComponents();
  const auto classes = Stored()["applications"][0]["components"][0]["classes"];
  ASSERT_EQ(classes.size(), 3U);
  EXPECT_EQ(classes[2]["progId"], "Orders.Basket");
}

TEST_F(FileComPlusCatalogsTest, RefreshKeepsThePropertiesOfAClassThatStays) {
  MakeApplication("Orders");
  catalog->InstallComponent("Orders", support::CatalogBench::kBinary, "", "");
  bench.File()->Change([](CatalogData& data) {
    data.applications[0].components[0].classes[0].properties.Set("Transaction",
                                                                 Variant::FromText("Required"));
  });
  catalog->RefreshComponents();
  EXPECT_EQ(Stored()["applications"][0]["components"][0]["classes"][0]["properties"]["Transaction"],
            "Required");
}

TEST_F(FileComPlusCatalogsTest, RefreshTellsOfABinaryThatIsGoneAndRefreshesTheOthers) {
  MakeApplication("Orders");
  bench.root.MakeFile("drive_c/Stock.dll", "binary");
  bench.typeLibs->Put("C:\\Stock.dll", "Stock", {"Shelf"}, '5');
  catalog->InstallComponent("Orders", support::CatalogBench::kBinary, "", "");
  catalog->InstallComponent("Orders", "C:\\Stock.dll", "", "");
  std::filesystem::remove(bench.root.Path("drive_c/Orders.dll"));
  bench.typeLibs->Put("C:\\Stock.dll", "Stock", {"Shelf", "Box"}, '5');
  ExpectError([&] { catalog->RefreshComponents(); }, 53, "Catalog", "Orders: File not found: C:\\Orders.dll");
  const auto components = Stored()["applications"][0]["components"];
  EXPECT_EQ(components[0]["classes"].size(), 2U);
  EXPECT_EQ(components[1]["classes"].size(), 2U);
}

TEST_F(FileComPlusCatalogsTest, ExportsAsTheOptionsSay) {
  MakeApplication("Orders");
  bench.File()->Change([](CatalogData& data) { data.applications[0].roles.push_back({"{r}", {}}); });
  const auto exported = [&](std::int32_t options) {
    catalog->ExportApplication("Orders", "C:\\Orders.msi", options);
    return ordered_json::parse(bench.files->Read("C:\\Orders.msi"));
  };
  EXPECT_EQ(exported(4)["kind"], "application");
  EXPECT_FALSE(exported(4).contains("roles"));
  EXPECT_EQ(exported(5)["roles"].size(), 1U);
  EXPECT_EQ(exported(6)["kind"], "application proxy");
  EXPECT_EQ(Stored()["applications"][0]["exports"].dump(), R"([{"file":"C:\\Orders.msi","options":2}])");
}

TEST_F(FileComPlusCatalogsTest, LeavesAFileThatItMayNotOverwrite) {
  MakeApplication("Orders");
  bench.root.MakeFile("drive_c/Orders.msi", "another's");
  ExpectError([&] { catalog->ExportApplication("Orders", "C:\\Orders.msi", 0); }, 58, "Catalog",
              "File already exists: C:\\Orders.msi");
  EXPECT_EQ(bench.root.Content("drive_c/Orders.msi"), "another's");
}

TEST_F(FileComPlusCatalogsTest, RefusesToReplaceAProtectedApplication) {
  MakeApplication("Orders")->SetValue("Deleteable", Variant::FromText("N"));
  const auto applications = catalog->GetCollection("Applications");
  applications->Populate();
  applications->Item(0)->SetValue("Deleteable", Variant::FromText("N"));
  applications->SaveChanges();
  applications->Remove(0);
  EXPECT_EQ(ErrorOf([&] { applications->SaveChanges(); }).Number(), 70);
  RemovePackage(*bench.File(), PackageKind::ComPlus, "Orders");
  applications->Populate();
  EXPECT_EQ(applications->Count(), 0);
}

}  // namespace
}  // namespace hearthmake::catalog
