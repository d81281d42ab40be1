#include "adapters/componentservices/AdminComPlusCatalogs.hpp"

#include <gmock/gmock.h>

#include "platform/ComPlusCatalogConformance.hpp"
#include "support/CatalogDoublesBench.hpp"

namespace hearthmake::platform {

INSTANTIATE_TEST_SUITE_P(Admin, ComPlusCatalogConformance, ::testing::Values([] {
                           const auto bench = std::make_shared<support::CatalogDoublesBench>();
                           return ComPlusCatalogPlayground{
                               std::make_shared<componentservices::AdminComPlusCatalogs>(), bench->Binary(),
                               bench->FreeFile(),
                               [bench](const std::string& path) { return bench->Exists(path); }, bench};
                         }));

}  // namespace hearthmake::platform

namespace hearthmake::componentservices {
namespace {

using automation::Variant;
using testing::ElementsAre;

TEST(AdminComPlusCatalogs, CallsTheAdministrationObjectsByTheirNames) {
  const support::CatalogDoublesBench bench;
  const auto catalog = AdminComPlusCatalogs().Create();
  const auto applications = catalog->GetCollection("Applications");
  applications->Populate();
  const auto application = applications->Add();
  application->SetValue("Name", Variant::FromText("Orders"));
  application->SetValue("EventsEnabled", Variant::FromBoolean(true));
  applications->SaveChanges();
  EXPECT_EQ(applications->Item(0)->Name(), "Orders");
  catalog->InstallComponent("Orders", bench.Binary(), "", "");
  catalog->RefreshComponents();
  catalog->ExportApplication("Orders", bench.FreeFile(), 4);
  catalog->ShutdownApplication("Orders");
  EXPECT_THAT(
      bench.log->calls,
      ElementsAre("COMAdminCatalog.GetCollection(\"Applications\")", "CatalogCollection.Populate",
                  "CatalogCollection.Add", "CatalogObject.Value=(\"Name\", \"Orders\")",
                  "CatalogObject.Value=(\"EventsEnabled\", True)", "CatalogCollection.SaveChanges",
                  "CatalogCollection.Count", "CatalogCollection.Item(0)", "CatalogObject.Name",
                  "COMAdminCatalog.InstallComponent(\"Orders\", \"" + bench.Binary() + "\", \"\", \"\")",
                  "COMAdminCatalog.RefreshComponents",
                  "COMAdminCatalog.ExportApplication(\"Orders\", \"" + bench.FreeFile() + "\", 4)",
                  "COMAdminCatalog.ShutdownApplication(\"Orders\")"));
}

TEST(AdminComPlusCatalogs, PassesTheCatalogsErrorsOn) {
  const support::CatalogDoublesBench bench;
  const automation::Error error =
      support::ErrorOf([] { AdminComPlusCatalogs().Create()->ShutdownApplication("None"); });
  EXPECT_EQ(error.Number(), 45);
  EXPECT_EQ(error.Source(), "Catalog");
  EXPECT_THAT(error.Description(), testing::HasSubstr("None"));
}

}  // namespace
}  // namespace hearthmake::componentservices
