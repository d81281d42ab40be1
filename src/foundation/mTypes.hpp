#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "automation/Object.hpp"

namespace hearthmake {

// The settings of a project file that a build keeps, in the order of the shared list that reading,
// writing and the Project table follow.
enum class Setting : std::uint8_t {
  Name,
  Startup,
  HelpFile,
  ProjectType,
  Title,
  ExeName32,
  Command32,
  HelpContextID,
  CompatibleMode,
  CompatibleEXE32,
  MajorVer,
  MinorVer,
  RevisionVer,
  AutoIncrementVer,
  ServerSupportFiles,
  VersionComments,
  VersionCompanyName,
  VersionLegalCopyRight,
  VersionProductName,
  CompilationType,
  OptimizationType,
  FavorPentiumPro,
  CodeViewDebugInfo,
  NoAliasing,
  BoundsCheck,
  OverflowCheck,
  FlPointCheck,
  FDIVCheck,
  UnroundedFP,
  StartMode,
  Unattended,
  Retained,
  ThreadPerObject,
  MaxNumberOfThreads,
  Path32,
  DllBaseAddress,
  VersionFileDescription,
  VersionLegalTrademarks,
  CondComp,
  Description,
  RemoveUnusedControlInfo,
  ThreadingModel,
  NoControlUpgrade,
};

inline constexpr std::size_t kSettingCount = 43;

struct SettingInfo {
  Setting setting;
  std::string_view name;    // of the setting, its property and its column
  std::string_view marker;  // the key in the project file with its equals sign
  std::uint16_t width;      // in characters
};

const std::array<SettingInfo, kSettingCount>& AllSettings();
inline const SettingInfo& InfoOf(Setting setting) { return AllSettings()[static_cast<std::size_t>(setting)]; }
// Without regard to case.
std::optional<Setting> FindSetting(std::string_view name);

// The list object that Project.Properties gives out: the names of the settings, in order.
class SettingNames final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  std::int32_t Count() const { return static_cast<std::int32_t>(kSettingCount); }
  // By position from 1 (error 9) or by name (error 5).
  std::string Item(const automation::Variant& vIndex) const;
  automation::Ref<automation::Enumerator> NewEnum();
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }
};

namespace mTypes {
// The apartment's one list, made at first use.
SettingNames& GetSettingNames();
}  // namespace mTypes

}  // namespace hearthmake
