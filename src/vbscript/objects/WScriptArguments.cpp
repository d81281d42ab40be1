#include "vbscript/objects/WScriptArguments.hpp"

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/ItemEnumerator.hpp"
#include "vbscript/objects/WScriptNamedArguments.hpp"

namespace hearthmake::vbscript {

const automation::Interface& WScriptArguments::Declaration() const {
  using Self = WScriptArguments;
  static const automation::Interface kDeclaration = automation::Declare("IArguments2", "IArguments2", "", "")
                                                        .byDefault()
                                                        .get<&Self::Item>("Item", {"Index"})
                                                        .get<&Self::Count>("Count")
                                                        .get<&Self::Count>("Length")
                                                        .newEnum<&Self::NewEnum>()
                                                        .get<&Self::Named>("Named")
                                                        .get<&Self::Unnamed>("Unnamed")
                                                        .method<&Self::ShowUsage>("ShowUsage")
                                                        .build();
  return kDeclaration;
}

std::string WScriptArguments::Item(std::int32_t index) {
  if (index < 0 || index >= Count()) RaiseRuntime(number::kSubscriptOutOfRange);
  return m_arguments[static_cast<std::size_t>(index)];
}

automation::Ref<WScriptNamedArguments> WScriptArguments::Named() {
  return automation::Make<WScriptNamedArguments>(m_arguments);
}

automation::Ref<WScriptArguments> WScriptArguments::Unnamed() {
  std::vector<std::string> unnamed;
  for (const std::string& argument : m_arguments) {
    if (!WScriptNamedArguments::IsNamed(argument)) unnamed.push_back(argument);
  }
  return automation::Make<WScriptArguments>(m_host, std::move(unnamed));
}

void WScriptArguments::ShowUsage() {
  constexpr std::string_view kNoUsage = "There is no usage information for this script.\n";
  if (Console* console = m_host.StandardStreams(); console != nullptr) console->Output().Write(kNoUsage);
}

automation::Ref<automation::Enumerator> WScriptArguments::NewEnum() {
  std::vector<automation::Variant> items;
  for (const std::string& argument : m_arguments) items.push_back(automation::Variant::FromText(argument));
  return automation::Make<ItemEnumerator>(std::move(items));
}

}  // namespace hearthmake::vbscript
