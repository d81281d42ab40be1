#include "vbscript/objects/WScriptNamedArguments.hpp"

#include "automation/Declare.hpp"
#include "automation/Text.hpp"
#include "vbscript/objects/ItemEnumerator.hpp"

namespace hearthmake::vbscript {

using automation::Variant;

WScriptNamedArguments::WScriptNamedArguments(const std::vector<std::string>& arguments) {
  for (const std::string& argument : arguments) {
    if (!IsNamed(argument)) continue;
    Argument parsed = Parse(argument);
    if (Find(parsed.name) == nullptr) m_arguments.push_back(std::move(parsed));
  }
}

bool WScriptNamedArguments::IsNamed(const std::string& argument) {
  return argument.size() > 1 && argument.front() == '/';
}

const automation::Interface& WScriptNamedArguments::Declaration() const {
  using Self = WScriptNamedArguments;
  static const automation::Interface kDeclaration =
      automation::Declare("IWSHNamedArguments", "IWSHNamedArguments", "", "")
          .byDefault()
          .get<&Self::Item>("Item", {"Name"})
          .get<&Self::Count>("Count")
          .get<&Self::Count>("Length")
          .newEnum<&Self::NewEnum>()
          .method<&Self::Exists>("Exists", {"Key"})
          .build();
  return kDeclaration;
}

Variant WScriptNamedArguments::Item(const std::string& name) {
  const Argument* found = Find(name);
  return found != nullptr ? found->value : Variant();
}

bool WScriptNamedArguments::Exists(const std::string& name) { return Find(name) != nullptr; }

automation::Ref<automation::Enumerator> WScriptNamedArguments::NewEnum() {
  std::vector<Variant> names;
  for (const Argument& argument : m_arguments) names.push_back(Variant::FromText(argument.name));
  return automation::Make<ItemEnumerator>(std::move(names));
}

WScriptNamedArguments::Argument WScriptNamedArguments::Parse(const std::string& argument) {
  const std::string text = argument.substr(1);
  const std::size_t colon = text.find(':');
  if (colon != std::string::npos) return {text.substr(0, colon), Variant::FromText(text.substr(colon + 1))};
  if (text.size() > 1 && (text.back() == '+' || text.back() == '-')) {
    return {text.substr(0, text.size() - 1), Variant::FromBoolean(text.back() == '+')};
  }
  return {text, Variant()};
}

const WScriptNamedArguments::Argument* WScriptNamedArguments::Find(const std::string& name) const {
  for (const Argument& argument : m_arguments) {
    if (automation::EqualsIgnoreCase(argument.name, name)) return &argument;
  }
  return nullptr;
}

}  // namespace hearthmake::vbscript
