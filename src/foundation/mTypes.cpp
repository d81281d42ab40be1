#include "foundation/mTypes.hpp"

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake {

namespace {

class NameEnumerator final : public automation::Enumerator {
 public:
  bool Next(automation::Variant& item) override {
    if (m_next == kSettingCount) return false;
    item = automation::Variant::FromText(AllSettings()[m_next++].name);
    return true;
  }

 private:
  std::size_t m_next = 0;
};

}  // namespace

const std::array<SettingInfo, kSettingCount>& AllSettings() {
  static constexpr std::array<SettingInfo, kSettingCount> kSettings = {{
      {Setting::Name, "Name", "Name=", 30},
      {Setting::Startup, "Startup", "Startup=", 40},
      {Setting::HelpFile, "HelpFile", "HelpFile=", 50},
      {Setting::ProjectType, "ProjectType", "Type=", 10},
      {Setting::Title, "Title", "Title=", 50},
      {Setting::ExeName32, "ExeName32", "ExeName32=", 30},
      {Setting::Command32, "Command32", "Command32=", 255},
      {Setting::HelpContextID, "HelpContextID", "HelpContextID=", 9},
      {Setting::CompatibleMode, "CompatibleMode", "CompatibleMode=", 3},
      {Setting::CompatibleEXE32, "CompatibleEXE32", "CompatibleEXE32=", 255},
      {Setting::MajorVer, "MajorVer", "MajorVer=", 4},
      {Setting::MinorVer, "MinorVer", "MinorVer=", 4},
      {Setting::RevisionVer, "RevisionVer", "RevisionVer=", 4},
      {Setting::AutoIncrementVer, "AutoIncrementVer", "AutoIncrementVer=", 1},
      {Setting::ServerSupportFiles, "ServerSupportFiles", "ServerSupportFiles=", 1},
      {Setting::VersionComments, "VersionComments", "VersionComments=", 255},
      {Setting::VersionCompanyName, "VersionCompanyName", "VersionCompanyName=", 255},
      {Setting::VersionLegalCopyRight, "VersionLegalCopyRight", "VersionLegalCopyRight=", 255},
      {Setting::VersionProductName, "VersionProductName", "VersionProductName=", 255},
      {Setting::CompilationType, "CompilationType", "CompilationType=", 2},
      {Setting::OptimizationType, "OptimizationType", "OptimizationType=", 1},
      {Setting::FavorPentiumPro, "FavorPentiumPro", "FavorPentiumPro(tm)=", 2},
      {Setting::CodeViewDebugInfo, "CodeViewDebugInfo", "CodeViewDebugInfo=", 2},
      {Setting::NoAliasing, "NoAliasing", "NoAliasing=", 2},
      {Setting::BoundsCheck, "BoundsCheck", "BoundsCheck=", 2},
      {Setting::OverflowCheck, "OverflowCheck", "OverflowCheck=", 2},
      {Setting::FlPointCheck, "FlPointCheck", "FlPointCheck=", 2},
      {Setting::FDIVCheck, "FDIVCheck", "FDIVCheck=", 2},
      {Setting::UnroundedFP, "UnroundedFP", "UnroundedFP=", 2},
      {Setting::StartMode, "StartMode", "StartMode=", 1},
      {Setting::Unattended, "Unattended", "Unattended=", 2},
      {Setting::Retained, "Retained", "Retained=", 1},
      {Setting::ThreadPerObject, "ThreadPerObject", "ThreadPerObject=", 2},
      {Setting::MaxNumberOfThreads, "MaxNumberOfThreads", "MaxNumberOfThreads=", 9},
      {Setting::Path32, "Path32", "Path32=", 255},
      {Setting::DllBaseAddress, "DllBaseAddress", "DllBaseAddress=", 10},
      {Setting::VersionFileDescription, "VersionFileDescription", "VersionFileDescription=", 255},
      {Setting::VersionLegalTrademarks, "VersionLegalTrademarks", "VersionLegalTrademarks=", 255},
      {Setting::CondComp, "CondComp", "CondComp=", 255},
      {Setting::Description, "Description", "Description=", 255},
      {Setting::RemoveUnusedControlInfo, "RemoveUnusedControlInfo", "RemoveUnusedControlInfo=", 1},
      {Setting::ThreadingModel, "ThreadingModel", "ThreadingModel=", 1},
      {Setting::NoControlUpgrade, "NoControlUpgrade", "NoControlUpgrade=", 1},
  }};
  return kSettings;
}

std::optional<Setting> FindSetting(std::string_view name) {
  for (const SettingInfo& info : AllSettings()) {
    if (automation::EqualsIgnoreCaseAscii(info.name, name)) return info.setting;
  }
  return std::nullopt;
}

std::string SettingNames::Item(const automation::Variant& vIndex) const {
  const automation::Variant& index = vIndex.Target();
  if (index.Type() == automation::VariantType::String) {
    const auto setting = FindSetting(automation::ToText(index));
    if (!setting) automation::Raise(automation::RuntimeError::InvalidProcedureCall, "Properties.item");
    return std::string(InfoOf(*setting).name);
  }
  const std::int32_t position = automation::ToLong(index);
  if (position < 1 || position > Count()) {
    automation::Raise(automation::RuntimeError::SubscriptOutOfRange, "Properties.item");
  }
  return std::string(AllSettings()[static_cast<std::size_t>(position) - 1].name);
}

automation::Ref<automation::Enumerator> SettingNames::NewEnum() { return automation::Make<NameEnumerator>(); }

SettingNames& mTypes::GetSettingNames() {
  auto& slot = Apartment::Current().SettingNamesSlot();
  if (!slot) slot = automation::Make<SettingNames>();
  return *slot;
}

}  // namespace hearthmake
