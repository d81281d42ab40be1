#include "deployment/MTSPackage.hpp"

#include "build/Build.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake {

namespace {

using automation::Variant;

constexpr PackageErrorSources kSources = {
    .name = "MTSPackage.Name",
    .beginEdit = "MTSPackage.BeginEdit",
    .cancelEdit = "MTSPackage.CancelEdit",
    .save = "MTSPackage.Save",
};

constexpr const char* kPackages = "Packages";
constexpr std::int32_t kNoExportOptions = 0;
// Jet's True.
constexpr std::int32_t kYes = -1;

}  // namespace

MTSPackage::MTSPackage() : PackageDefinition(kSources) {}

void MTSPackage::SetAuthorization(bool value) {
  // A level that the row has as an application is a yes, and stays when nothing else is wanted.
  const std::int32_t present = Record().autentication;
  const bool isKept = value && present != 0;
  SetAutenticationColumn(isKept ? present : value ? kYes : 0);
}

void MTSPackage::RemovePackage() {
  const automation::Ref<MTSPackage> self(this);  // an event handler may drop it
  const auto catalog = Ports().mtsCatalogs->Create();
  const auto packages = catalog->GetCollection(kPackages);
  packages->Populate();
  const std::int32_t position = PositionIn(*packages);
  if (position == 0) return;
  Tell("Removing Package: " + Name());
  packages->Remove(position - 1);
  packages->SaveChanges();
}

void MTSPackage::Deploy() {
  RemovePackage();
  const auto catalog = Ports().mtsCatalogs->Create();
  const auto packages = catalog->GetCollection(kPackages);
  const auto package = packages->Add();
  SetCommonValues(*package);
  package->SetValue("SecurityEnabled", YesOrNo(Authorization()));
  SetIdentity(*package);
  packages->SaveChanges();
  const std::string key = package->Key();

  const auto components = packages->GetCollection("ComponentsInPackage", key);
  const auto componentUtil = components->GetUtilInterface();
  InstallProjects(" to Package " + Name(), [&](Project& project) {
    const std::string binary = project.FullPath32();
    componentUtil->InstallComponent(
        binary, project.RemoteServerFiles() ? project.RemoteServerFilePath() : binary, "");
  });
  components->SaveChanges();

  if (ExportPath().empty()) return;
  Tell("Exporting package: " + Name());
  packages->GetUtilInterface()->ExportPackage(key, ExportPath(), kNoExportOptions);
}

}  // namespace hearthmake
