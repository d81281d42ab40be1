#include "vbscript/objects/ShellEnvironment.hpp"

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/ItemEnumerator.hpp"

namespace hearthmake::vbscript {

const automation::Interface& ShellEnvironment::Declaration() const {
  using Self = ShellEnvironment;
  static const automation::Interface kDeclaration =
      automation::Declare("IWshEnvironment", "IWshEnvironment", "", "")
          .byDefault()
          .get<&Self::Item>("Item", {"Name"})
          .let<&Self::SetItem>("Item", {"Name", "Value"})
          .get<&Self::Count>("Count")
          .get<&Self::Count>("Length")
          .newEnum<&Self::NewEnum>()
          .method<&Self::Remove>("Remove", {"Name"})
          .build();
  return kDeclaration;
}

std::string ShellEnvironment::Item(const std::string& name) {
  return System().EnvironmentVariable(name).value_or("");
}

void ShellEnvironment::SetItem(const std::string& name, const std::string& value) {
  RequireWritable();
  if (name.empty() || name.find('=') != std::string::npos) RaiseRuntime(number::kInvalidProcedureCall);
  System().SetEnvironmentVariable(name, value);
}

std::int32_t ShellEnvironment::Count() { return static_cast<std::int32_t>(System().Environment().size()); }

void ShellEnvironment::Remove(const std::string& name) {
  RequireWritable();
  System().SetEnvironmentVariable(name, std::nullopt);
}

automation::Ref<automation::Enumerator> ShellEnvironment::NewEnum() {
  std::vector<automation::Variant> items;
  for (const std::string& variable : System().Environment()) {
    items.push_back(automation::Variant::FromText(variable));
  }
  return automation::Make<ItemEnumerator>(std::move(items));
}

void ShellEnvironment::RequireWritable() const {
  if (!m_isWritable) RaiseRuntime(number::kPermissionDenied);
}

}  // namespace hearthmake::vbscript
