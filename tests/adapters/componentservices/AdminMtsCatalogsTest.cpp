#include "adapters/componentservices/AdminMtsCatalogs.hpp"

#include <gmock/gmock.h>

#include "platform/MtsCatalogConformance.hpp"
#include "support/CatalogDoublesBench.hpp"

namespace hearthmake::platform {

INSTANTIATE_TEST_SUITE_P(Admin, MtsCatalogConformance, ::testing::Values([] {
                           const auto bench = std::make_shared<support::CatalogDoublesBench>();
                           return MtsCatalogPlayground{
                               std::make_shared<componentservices::AdminMtsCatalogs>(),
                               bench->Binary(),
                               {"Orders.Order", "Orders.Line"},
                               bench->FreeFile(),
                               [bench](const std::string& path) { return bench->Exists(path); },
                               bench};
                         }));

}  // namespace hearthmake::platform

namespace hearthmake::componentservices {
namespace {

using automation::Variant;
using testing::ElementsAre;

TEST(AdminMtsCatalogs, CallsTheAdministrationObjectsByTheirNames) {
  const support::CatalogDoublesBench bench;
  const auto packages = AdminMtsCatalogs().Create()->GetCollection("Packages");
  packages->Populate();
  const auto package = packages->Add();
  package->SetValue("Name", Variant::FromText("Orders"));
  package->SetValue("ShutdownAfter", Variant::FromLong(3));
  packages->SaveChanges();
  const std::string key = package->Key();
  const auto components = packages->GetCollection("ComponentsInPackage", key);
  components->GetUtilInterface()->InstallComponent(bench.Binary(), bench.Binary(), "");
  components->SaveChanges();
  packages->GetUtilInterface()->ExportPackage(key, bench.FreeFile(), 0);
  packages->Remove(0);
  const std::string quotedKey = '"' + key + '"';
  const std::string binary = '"' + bench.Binary() + '"';
  EXPECT_THAT(bench.log->calls,
              ElementsAre("Catalog.GetCollection(\"Packages\")", "CatalogCollection.Populate",
                          "CatalogCollection.Add", "CatalogObject.Value=(\"Name\", \"Orders\")",
                          "CatalogObject.Value=(\"ShutdownAfter\", 3)", "CatalogCollection.SaveChanges",
                          "CatalogObject.Key",
                          "CatalogCollection.GetCollection(\"ComponentsInPackage\", " + quotedKey + ")",
                          "CatalogCollection.GetUtilInterface",
                          "Util.InstallComponent(" + binary + ", " + binary + ", \"\")",
                          "CatalogCollection.SaveChanges", "CatalogCollection.GetUtilInterface",
                          "Util.ExportPackage(" + quotedKey + ", \"" + bench.FreeFile() + "\", 0)",
                          "CatalogCollection.Count", "CatalogCollection.Remove(0)"));
}

TEST(AdminMtsCatalogs, PassesTheCatalogsErrorsOn) {
  const support::CatalogDoublesBench bench;
  const auto packages = AdminMtsCatalogs().Create()->GetCollection("Packages");
  support::ExpectError(
      [&] { packages->GetCollection("ComponentsInPackage", "{none}"); }, 45, "Catalog",
      support::ErrorOf([&] { packages->GetCollection("ComponentsInPackage", "{none}"); }).Description());
}

TEST(AdminMtsCatalogs, SaysThatAMachineHasNoMts) {
  const doubles::ComThread com;
  const automation::Error error = support::ErrorOf([] { AdminMtsCatalogs().Create(); });
  EXPECT_EQ(error.Number(), 429);
  EXPECT_THAT(error.Description(),
              testing::StartsWith("ActiveX component can't create object: MTSAdmin.Catalog.1"));
}

}  // namespace
}  // namespace hearthmake::componentservices
