#pragma once

#include <string>
#include <utility>
#include <vector>

#include "automation/Object.hpp"
#include "vbscript/Host.hpp"

namespace hearthmake::vbscript {

class WScriptNamedArguments;

// WScript.Arguments and WScript.Arguments.Unnamed: what was typed behind the script's name.
class WScriptArguments final : public automation::Object {
 public:
  // The host outlives the object.
  WScriptArguments(Host& host, std::vector<std::string> arguments)
      : m_host(host), m_arguments(std::move(arguments)) {}
  const automation::Interface& Declaration() const override;
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  // From 0. Error 9 "Subscript out of range".
  std::string Item(std::int32_t index);
  std::int32_t Count() { return static_cast<std::int32_t>(m_arguments.size()); }
  automation::Ref<WScriptNamedArguments> Named();
  automation::Ref<WScriptArguments> Unnamed();
  // There is no usage text in a script file that stands alone: shows nothing but that.
  void ShowUsage();
  automation::Ref<automation::Enumerator> NewEnum();

 private:
  Host& m_host;
  std::vector<std::string> m_arguments;
};

}  // namespace hearthmake::vbscript
