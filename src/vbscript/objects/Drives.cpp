#include "vbscript/objects/Drives.hpp"

#include "automation/Declare.hpp"
#include "automation/Text.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/Drive.hpp"
#include "vbscript/objects/ItemEnumerator.hpp"

namespace hearthmake::vbscript {

const automation::Interface& Drives::Declaration() const {
  static const automation::Interface kDeclaration = automation::Declare("Drives", "IDriveCollection", "", "")
                                                        .byDefault()
                                                        .get<&Drives::Item>("Item", {"Key"})
                                                        .newEnum<&Drives::NewEnum>()
                                                        .get<&Drives::Count>("Count")
                                                        .build();
  return kDeclaration;
}

automation::Ref<Drive> Drives::Item(const std::string& key) {
  if (key.empty() || key.size() > 3) RaiseRuntime(number::kDeviceUnavailable);
  return OpenDrive(m_context, automation::Upper(key).front());
}

std::int32_t Drives::Count() {
  return static_cast<std::int32_t>(m_context.host.Platform().files->DriveLetters().size());
}

automation::Ref<automation::Enumerator> Drives::NewEnum() {
  std::vector<automation::Variant> items;
  for (const char letter : m_context.host.Platform().files->DriveLetters()) {
    items.push_back(automation::Variant::FromObject(automation::Make<Drive>(m_context, letter)));
  }
  return automation::Make<ItemEnumerator>(std::move(items));
}

}  // namespace hearthmake::vbscript
