#pragma once

#include <string>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// WshShell.SpecialFolders: folders by what they are for ("Desktop", "MyDocuments" …), as the registry has
// them, else where they usually are below %USERPROFILE%.
class SpecialFolders final : public automation::Object {
 public:
  explicit SpecialFolders(Context& context) : m_context(context) {}
  const automation::Interface& Declaration() const override;
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  // By name, or by number from 0. "" for an unknown name, error 5 for a wrong number.
  std::string Item(const automation::Variant& nameOrNumber);
  std::int32_t Count();
  automation::Ref<automation::Enumerator> NewEnum();

 private:
  std::string PathOf(std::size_t index);
  std::string CommonBase();

  Context& m_context;
};

}  // namespace hearthmake::vbscript
