#include "vbscript/objects/SpecialFolders.hpp"

#include <algorithm>
#include <iterator>

#include "automation/Declare.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/EnvironmentText.hpp"
#include "vbscript/objects/ItemEnumerator.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

using platform::RegistryRoot;

namespace {

constexpr const char* kShellFolders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

enum class Base { Profile, AllUsers, Windows };

struct KnownFolder {
  const char* name;
  Base base;
  const char* registryName;
  const char* usualPath;
};

constexpr const char* kStartMenu = "Microsoft\\Windows\\Start Menu";

constexpr KnownFolder kFolders[] = {
    {"AllUsersDesktop", Base::AllUsers, "Common Desktop", "Desktop"},
    {"AllUsersStartMenu", Base::AllUsers, "Common Start Menu", kStartMenu},
    {"AllUsersPrograms", Base::AllUsers, "Common Programs", "Microsoft\\Windows\\Start Menu\\Programs"},
    {"AllUsersStartup", Base::AllUsers, "Common Startup",
     "Microsoft\\Windows\\Start Menu\\Programs\\StartUp"},
    {"Desktop", Base::Profile, "Desktop", "Desktop"},
    {"AppData", Base::Profile, "AppData", "AppData\\Roaming"},
    {"PrintHood", Base::Profile, "PrintHood", "AppData\\Roaming\\Microsoft\\Windows\\Printer Shortcuts"},
    {"Templates", Base::Profile, "Templates", "AppData\\Roaming\\Microsoft\\Windows\\Templates"},
    {"Fonts", Base::Windows, "Fonts", "Fonts"},
    {"NetHood", Base::Profile, "NetHood", "AppData\\Roaming\\Microsoft\\Windows\\Network Shortcuts"},
    {"StartMenu", Base::Profile, "Start Menu", "AppData\\Roaming\\Microsoft\\Windows\\Start Menu"},
    {"SendTo", Base::Profile, "SendTo", "AppData\\Roaming\\Microsoft\\Windows\\SendTo"},
    {"Recent", Base::Profile, "Recent", "AppData\\Roaming\\Microsoft\\Windows\\Recent"},
    {"Startup", Base::Profile, "Startup",
     "AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs\\Startup"},
    {"Favorites", Base::Profile, "Favorites", "Favorites"},
    {"MyDocuments", Base::Profile, "Personal", "Documents"},
    {"Programs", Base::Profile, "Programs", "AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs"},
};

}  // namespace

const automation::Interface& SpecialFolders::Declaration() const {
  using Self = SpecialFolders;
  static const automation::Interface kDeclaration =
      automation::Declare("IWshCollection", "IWshCollection", "", "")
          .byDefault()
          .get<&Self::Item>("Item", {"Index"})
          .get<&Self::Count>("Count")
          .get<&Self::Count>("Length")
          .newEnum<&Self::NewEnum>()
          .build();
  return kDeclaration;
}

std::string SpecialFolders::Item(const automation::Variant& nameOrNumber) {
  if (nameOrNumber.Type() != automation::VariantType::String) {
    const std::int32_t index = ToLong32(nameOrNumber);
    if (index < 0 || index >= Count()) RaiseRuntime(number::kInvalidProcedureCall);
    return PathOf(static_cast<std::size_t>(index));
  }
  const std::string name = automation::Utf16ToUtf8(nameOrNumber.AsUtf16());
  const auto* found = std::find_if(std::begin(kFolders), std::end(kFolders), [&](const KnownFolder& folder) {
    return automation::EqualsIgnoreCaseAscii(folder.name, name);
  });
  return found == std::end(kFolders) ? "" : PathOf(static_cast<std::size_t>(found - std::begin(kFolders)));
}

std::int32_t SpecialFolders::Count() { return static_cast<std::int32_t>(std::size(kFolders)); }

automation::Ref<automation::Enumerator> SpecialFolders::NewEnum() {
  std::vector<automation::Variant> items;
  for (std::size_t i = 0; i < std::size(kFolders); ++i) {
    items.push_back(automation::Variant::FromText(PathOf(i)));
  }
  return automation::Make<ItemEnumerator>(std::move(items));
}

std::string SpecialFolders::PathOf(std::size_t index) {
  const KnownFolder& folder = kFolders[index];
  const platform::Platform& ports = m_context.host.Platform();
  if (ports.registry) {
    const RegistryRoot root =
        folder.base == Base::AllUsers ? RegistryRoot::LocalMachine : RegistryRoot::CurrentUser;
    const auto value = ports.registry->Query(root, kShellFolders, folder.registryName);
    if (value && !value->data.empty()) return ExpandEnvironment(*ports.system, value->data);
  }
  switch (folder.base) {
    case Base::AllUsers: return dospath::Join(CommonBase(), folder.usualPath);
    case Base::Windows:
      return dospath::Join(dospath::ParentFolderName(ports.system->SystemFolder()), folder.usualPath);
    default:
      return dospath::Join(ports.system->EnvironmentVariable("USERPROFILE").value_or("C:\\users\\Public"),
                           folder.usualPath);
  }
}

std::string SpecialFolders::CommonBase() {
  return m_context.host.Platform().system->EnvironmentVariable("ALLUSERSPROFILE").value_or("C:\\ProgramData");
}

}  // namespace hearthmake::vbscript
