#pragma once

#include <string>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

class Drive;

// The drives, by letter.
class Drives final : public automation::Object {
 public:
  explicit Drives(Context& context) : m_context(context) {}
  const automation::Interface& Declaration() const override;
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }

  // By letter, with or without a colon. Error 68 when there is none.
  automation::Ref<Drive> Item(const std::string& key);
  std::int32_t Count();
  automation::Ref<automation::Enumerator> NewEnum();

 private:
  Context& m_context;
};

}  // namespace hearthmake::vbscript
