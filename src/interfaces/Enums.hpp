#pragma once

#include "automation/Interface.hpp"

namespace hearthmake {

// The class under which the type library carries the enumerations. It has no members.
class Enums final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }
};

}  // namespace hearthmake
