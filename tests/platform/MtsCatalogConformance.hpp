#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/MtsCatalog.hpp"
#include "support/ErrorExpect.hpp"

// What every catalog of MTS packages does, whatever it stands on. An adapter's test instantiates the suite:
//
//   INSTANTIATE_TEST_SUITE_P(File, MtsCatalogConformance, ::testing::Values(MakeCatalogs));

namespace hearthmake::platform {

struct MtsCatalogPlayground {
  std::shared_ptr<MtsCatalogs> catalogs;  // of a machine without packages
  std::string binary;                     // DOS path of a server
  std::vector<std::string> progIds;       // of its classes, in order
  std::string freeFile;                   // DOS path of no file yet, in a folder that is there
  std::function<bool(const std::string&)> exists;
  std::shared_ptr<void> keepAlive;
};

using MtsCatalogFactory = std::function<MtsCatalogPlayground()>;

class MtsCatalogConformance : public ::testing::TestWithParam<MtsCatalogFactory> {
 protected:
  void SetUp() override { m_playground = GetParam()(); }

  // The packages as somebody else sees them now.
  std::shared_ptr<MtsCollection> Packages() {
    auto packages = m_playground.catalogs->Create()->GetCollection("Packages");
    packages->Populate();
    return packages;
  }
  std::shared_ptr<CatalogObject> AddPackage(MtsCollection& packages, const std::string& name) {
    auto package = packages.Add();
    package->SetValue("Name", automation::Variant::FromText(name));
    packages.SaveChanges();
    return package;
  }
  static std::vector<std::string> Names(CatalogCollection& collection) {
    std::vector<std::string> names;
    for (std::int32_t i = 0; i < collection.Count(); ++i) names.push_back(collection.Item(i)->Name());
    return names;
  }
  std::vector<std::string> InstalledNames() { return Names(*Packages()); }
  std::vector<std::string> Components(const std::string& packageKey) {
    const auto components = Packages()->GetCollection("ComponentsInPackage", packageKey);
    components->Populate();
    return Names(*components);
  }

  MtsCatalogPlayground m_playground;
};

TEST_P(MtsCatalogConformance, HasNothingBeforePopulate) {
  AddPackage(*Packages(), "Orders");
  const auto packages = m_playground.catalogs->Create()->GetCollection("Packages");
  EXPECT_EQ(packages->Count(), 0);
  packages->Populate();
  EXPECT_EQ(packages->Count(), 1);
}

TEST_P(MtsCatalogConformance, ShowsAdditionsToOthersAfterSaveChanges) {
  const auto packages = m_playground.catalogs->Create()->GetCollection("Packages");
  const auto package = packages->Add();
  package->SetValue("Name", automation::Variant::FromText("Orders"));
  EXPECT_EQ(package->Name(), "Orders");
  EXPECT_EQ(packages->Count(), 1);
  EXPECT_EQ(InstalledNames(), std::vector<std::string>());
  packages->SaveChanges();
  EXPECT_EQ(InstalledNames(), std::vector<std::string>{"Orders"});
  EXPECT_EQ(Packages()->Item(0)->Key(), package->Key());
}

TEST_P(MtsCatalogConformance, GivesAKeyFromTheStart) {
  const auto packages = Packages();
  const std::string first = packages->Add()->Key();
  const std::string second = packages->Add()->Key();
  EXPECT_EQ(first.size(), 38U);
  EXPECT_EQ(first.front(), '{');
  EXPECT_EQ(first.back(), '}');
  EXPECT_NE(first, second);
}

TEST_P(MtsCatalogConformance, ShowsChangesToOthersAfterSaveChanges) {
  const auto packages = Packages();
  const auto package = AddPackage(*packages, "Orders");
  package->SetValue("Description", automation::Variant::FromText("new"));
  EXPECT_EQ(automation::ToText(package->Value("Description")), "new");
  EXPECT_TRUE(Packages()->Item(0)->Value("Description").IsEmpty());
  packages->SaveChanges();
  EXPECT_EQ(automation::ToText(Packages()->Item(0)->Value("Description")), "new");
}

TEST_P(MtsCatalogConformance, KeepsTheTypeOfAValue) {
  const auto packages = Packages();
  const auto package = AddPackage(*packages, "Orders");
  package->SetValue("ShutdownAfter", automation::Variant::FromLong(3));
  package->SetValue("RunForever", automation::Variant::FromText("Y"));
  packages->SaveChanges();
  const auto stored = Packages()->Item(0);
  EXPECT_EQ(stored->Value("ShutdownAfter").Type(), automation::VariantType::Long);
  EXPECT_EQ(stored->Value("ShutdownAfter").AsLong(), 3);
  EXPECT_EQ(automation::ToText(stored->Value("RunForever")), "Y");
}

TEST_P(MtsCatalogConformance, NeverGivesAPasswordAway) {
  const auto packages = Packages();
  const auto package = AddPackage(*packages, "Orders");
  package->SetValue("Password", automation::Variant::FromText("s3cret"));
  EXPECT_TRUE(package->Value("Password").IsEmpty());
  packages->SaveChanges();
  EXPECT_TRUE(Packages()->Item(0)->Value("Password").IsEmpty());
}

TEST_P(MtsCatalogConformance, CountsPositionsFromZero) {
  const auto packages = Packages();
  AddPackage(*packages, "First");
  AddPackage(*packages, "Second");
  EXPECT_EQ(packages->Item(0)->Name(), "First");
  EXPECT_EQ(packages->Item(1)->Name(), "Second");
  for (const std::int32_t wrong : {-1, 2}) {
    EXPECT_EQ(support::ErrorOf([&] { packages->Item(wrong); }).Number(), 9);
    EXPECT_EQ(support::ErrorOf([&] { packages->Remove(wrong); }).Number(), 9);
  }
}

TEST_P(MtsCatalogConformance, RemovesAtSaveChanges) {
  const auto packages = Packages();
  AddPackage(*packages, "First");
  AddPackage(*packages, "Second");
  packages->Remove(0);
  EXPECT_EQ(Names(*packages), std::vector<std::string>{"Second"});
  EXPECT_EQ(InstalledNames(), (std::vector<std::string>{"First", "Second"}));
  packages->SaveChanges();
  EXPECT_EQ(InstalledNames(), std::vector<std::string>{"Second"});
}

TEST_P(MtsCatalogConformance, DropsWhatIsPendingAtPopulate) {
  const auto packages = Packages();
  AddPackage(*packages, "First");
  packages->Remove(0);
  packages->Add()->SetValue("Name", automation::Variant::FromText("Second"));
  packages->Populate();
  EXPECT_EQ(Names(*packages), std::vector<std::string>{"First"});
  packages->SaveChanges();
  EXPECT_EQ(InstalledNames(), std::vector<std::string>{"First"});
}

TEST_P(MtsCatalogConformance, MayHaveTwoPackagesOfOneName) {
  const auto packages = Packages();
  AddPackage(*packages, "Orders");
  AddPackage(*packages, "Orders");
  EXPECT_EQ(InstalledNames(), (std::vector<std::string>{"Orders", "Orders"}));
  packages->Remove(0);
  packages->SaveChanges();
  EXPECT_EQ(InstalledNames(), std::vector<std::string>{"Orders"});
}

TEST_P(MtsCatalogConformance, LosesNothingThatOthersSaveMeanwhile) {
  const auto mine = Packages();
  const auto orders = AddPackage(*mine, "Orders");
  const auto theirs = Packages();
  AddPackage(*theirs, "Stock");
  orders->SetValue("Description", automation::Variant::FromText("mine"));
  mine->SaveChanges();
  EXPECT_EQ(InstalledNames(), (std::vector<std::string>{"Orders", "Stock"}));
}

TEST_P(MtsCatalogConformance, InstallsAllClassesOfABinary) {
  const auto packages = Packages();
  const std::string key = AddPackage(*packages, "Orders")->Key();
  const auto components = packages->GetCollection("ComponentsInPackage", key);
  components->GetUtilInterface()->InstallComponent(m_playground.binary, m_playground.binary, "");
  components->SaveChanges();
  EXPECT_EQ(Components(key), m_playground.progIds);
}

TEST_P(MtsCatalogConformance, NamesTheBinaryThatIsMissing) {
  const auto packages = Packages();
  const std::string key = AddPackage(*packages, "Orders")->Key();
  const auto util = packages->GetCollection("ComponentsInPackage", key)->GetUtilInterface();
  const auto error =
      support::ErrorOf([&] { util->InstallComponent(m_playground.freeFile, m_playground.freeFile, ""); });
  EXPECT_EQ(error.Number(), 53);
  EXPECT_NE(error.Description().find(m_playground.freeFile), std::string::npos) << error.Description();
  EXPECT_EQ(Components(key), std::vector<std::string>());
}

TEST_P(MtsCatalogConformance, ForgetsTheComponentsOfARemovedPackage) {
  const auto packages = Packages();
  const std::string key = AddPackage(*packages, "Orders")->Key();
  packages->GetCollection("ComponentsInPackage", key)
      ->GetUtilInterface()
      ->InstallComponent(m_playground.binary, "", "");
  packages->Remove(0);
  packages->SaveChanges();
  const std::string again = AddPackage(*packages, "Orders")->Key();
  EXPECT_NE(again, key);
  EXPECT_EQ(Components(again), std::vector<std::string>());
  EXPECT_NE(support::ErrorOf([&] { Packages()->GetCollection("ComponentsInPackage", key); }).Number(), 0);
}

TEST_P(MtsCatalogConformance, ExportsAPackageAgainAndAgain) {
  const auto packages = Packages();
  const std::string key = AddPackage(*packages, "Orders")->Key();
  for (int i = 0; i < 2; ++i) packages->GetUtilInterface()->ExportPackage(key, m_playground.freeFile, 0);
  EXPECT_TRUE(m_playground.exists(m_playground.freeFile));
}

TEST_P(MtsCatalogConformance, RefusesWhatAUtilityDoesNotHave) {
  const auto packages = Packages();
  const std::string key = AddPackage(*packages, "Orders")->Key();
  const auto components = packages->GetCollection("ComponentsInPackage", key);
  EXPECT_EQ(support::ErrorOf([&] {
              packages->GetUtilInterface()->InstallComponent(m_playground.binary, "", "");
            }).Number(),
            438);
  EXPECT_EQ(support::ErrorOf([&] {
              components->GetUtilInterface()->ExportPackage(key, m_playground.freeFile, 0);
            }).Number(),
            438);
}

}  // namespace hearthmake::platform
