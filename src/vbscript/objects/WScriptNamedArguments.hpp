#pragma once

#include <string>
#include <vector>

#include "automation/Object.hpp"

namespace hearthmake::vbscript {

// WScript.Arguments.Named: the arguments of the form /name, /name:value, /name+ and /name-. Names do not
// regard case; of several with one name the first counts.
class WScriptNamedArguments final : public automation::Object {
 public:
  explicit WScriptNamedArguments(const std::vector<std::string>& arguments);
  static bool IsNamed(const std::string& argument);
  const automation::Interface& Declaration() const override;
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  // The text behind the colon; True and False for + and -; Empty without either or when there is none.
  automation::Variant Item(const std::string& name);
  bool Exists(const std::string& name);
  std::int32_t Count() { return static_cast<std::int32_t>(m_arguments.size()); }
  // The names.
  automation::Ref<automation::Enumerator> NewEnum();

 private:
  struct Argument {
    std::string name;
    automation::Variant value;
  };
  static Argument Parse(const std::string& argument);
  const Argument* Find(const std::string& name) const;

  std::vector<Argument> m_arguments;
};

}  // namespace hearthmake::vbscript
