#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/Variant.hpp"

namespace hearthmake::catalog {

// A named value of a catalog object. A password is never kept: its value is whether there is one.
struct Property {
  std::string name;
  automation::Variant value;
  bool isSecret = false;
};

// The properties of a catalog object in the order in which they were first set. Names are matched without
// regard to case.
class Properties {
 public:
  // Null when it was never set.
  const Property* Find(std::string_view name) const;
  // The value; Empty when it was never set, and for a password, which is not given away.
  automation::Variant Value(std::string_view name) const;
  // A property that is there keeps its place. Error 13 for an object, an array and a number that is none
  // (infinity).
  void Set(std::string_view name, const automation::Variant& value);
  void Put(Property property);

  const std::vector<Property>& All() const { return m_properties; }
  bool IsEmpty() const { return m_properties.empty(); }

 private:
  std::vector<Property> m_properties;
};

// Whether two properties have the same value, of the same type.
bool IsSame(const Property& left, const Property& right);

}  // namespace hearthmake::catalog
