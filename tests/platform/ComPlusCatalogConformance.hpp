#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/ComPlusCatalog.hpp"
#include "support/ErrorExpect.hpp"

// What every catalog of COM+ applications does, whatever it stands on. An adapter's test instantiates the
// suite:
//
//   INSTANTIATE_TEST_SUITE_P(File, ComPlusCatalogConformance, ::testing::Values(MakeCatalogs));

namespace hearthmake::platform {

struct ComPlusCatalogPlayground {
  std::shared_ptr<ComPlusCatalogs> catalogs;  // of a machine without applications
  std::string binary;                         // DOS path of a server
  std::string freeFile;                       // DOS path of no file yet, in a folder that is there
  std::function<bool(const std::string&)> exists;
  std::shared_ptr<void> keepAlive;
};

using ComPlusCatalogFactory = std::function<ComPlusCatalogPlayground()>;

class ComPlusCatalogConformance : public ::testing::TestWithParam<ComPlusCatalogFactory> {
 protected:
  void SetUp() override {
    m_playground = GetParam()();
    m_catalog = m_playground.catalogs->Create();
  }

  // The applications as somebody else sees them now.
  std::shared_ptr<CatalogCollection> Applications() {
    auto applications = m_playground.catalogs->Create()->GetCollection("Applications");
    applications->Populate();
    return applications;
  }
  std::shared_ptr<CatalogObject> AddApplication(const std::string& name) {
    const auto applications = m_catalog->GetCollection("Applications");
    auto application = applications->Add();
    application->SetValue("Name", automation::Variant::FromText(name));
    applications->SaveChanges();
    return application;
  }
  std::vector<std::string> InstalledNames() {
    const auto applications = Applications();
    std::vector<std::string> names;
    for (std::int32_t i = 0; i < applications->Count(); ++i) names.push_back(applications->Item(i)->Name());
    return names;
  }

  ComPlusCatalogPlayground m_playground;
  std::unique_ptr<ComPlusCatalog> m_catalog;
};

TEST_P(ComPlusCatalogConformance, HasNoOtherCollection) {
  EXPECT_NE(support::ErrorOf([&] { m_catalog->GetCollection("Nonsense")->Populate(); }).Number(), 0);
}

TEST_P(ComPlusCatalogConformance, TakesAnApplicationBeforeItHasAName) {
  const auto applications = m_catalog->GetCollection("Applications");
  const auto application = applications->Add();
  applications->SaveChanges();
  EXPECT_EQ(Applications()->Count(), 1);
  application->SetValue("Name", automation::Variant::FromText("Orders"));
  application->SetValue("CRMEnabled", automation::Variant::FromBoolean(true));
  applications->SaveChanges();
  EXPECT_EQ(InstalledNames(), std::vector<std::string>{"Orders"});
  EXPECT_TRUE(automation::ToBoolean(Applications()->Item(0)->Value("CRMEnabled")));
}

TEST_P(ComPlusCatalogConformance, ReplacesAnApplicationInOneSave) {
  AddApplication("Orders");
  const auto applications = Applications();
  const std::string before = applications->Item(0)->Key();
  applications->Remove(0);
  applications->Add()->SetValue("Name", automation::Variant::FromText("Orders"));
  applications->SaveChanges();
  EXPECT_EQ(InstalledNames(), std::vector<std::string>{"Orders"});
  EXPECT_NE(Applications()->Item(0)->Key(), before);
}

TEST_P(ComPlusCatalogConformance, NeverGivesAPasswordAway) {
  const auto applications = m_catalog->GetCollection("Applications");
  applications->Add()->SetValue("Password", automation::Variant::FromText("s3cret"));
  applications->SaveChanges();
  EXPECT_TRUE(Applications()->Item(0)->Value("Password").IsEmpty());
}

TEST_P(ComPlusCatalogConformance, InstallsAndRefreshesABinary) {
  AddApplication("Orders");
  m_catalog->InstallComponent("Orders", m_playground.binary, "", "");
  m_catalog->RefreshComponents();
  EXPECT_EQ(InstalledNames(), std::vector<std::string>{"Orders"});
}

TEST_P(ComPlusCatalogConformance, NamesTheBinaryThatIsMissing) {
  AddApplication("Orders");
  const auto error =
      support::ErrorOf([&] { m_catalog->InstallComponent("Orders", m_playground.freeFile, "", ""); });
  EXPECT_EQ(error.Number(), 53);
  EXPECT_NE(error.Description().find(m_playground.freeFile), std::string::npos) << error.Description();
}

TEST_P(ComPlusCatalogConformance, RefusesAnApplicationThatIsNotInstalled) {
  EXPECT_NE(support::ErrorOf([&] { m_catalog->ShutdownApplication("Orders"); }).Number(), 0);
  EXPECT_NE(
      support::ErrorOf([&] { m_catalog->InstallComponent("Orders", m_playground.binary, "", ""); }).Number(),
      0);
  EXPECT_NE(
      support::ErrorOf([&] { m_catalog->ExportApplication("Orders", m_playground.freeFile, 4); }).Number(),
      0);
  EXPECT_FALSE(m_playground.exists(m_playground.freeFile));
}

TEST_P(ComPlusCatalogConformance, ShutsAnInstalledApplicationDown) {
  AddApplication("Orders");
  m_catalog->ShutdownApplication("Orders");
  EXPECT_EQ(InstalledNames(), std::vector<std::string>{"Orders"});
}

TEST_P(ComPlusCatalogConformance, OverwritesAnExportOnlyWhenAsked) {
  AddApplication("Orders");
  m_catalog->ExportApplication("Orders", m_playground.freeFile, 0);
  EXPECT_TRUE(m_playground.exists(m_playground.freeFile));
  EXPECT_NE(
      support::ErrorOf([&] { m_catalog->ExportApplication("Orders", m_playground.freeFile, 0); }).Number(),
      0);
  m_catalog->ExportApplication("Orders", m_playground.freeFile, 4);
  EXPECT_TRUE(m_playground.exists(m_playground.freeFile));
}

}  // namespace hearthmake::platform
