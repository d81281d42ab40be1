#include "adapters/componentservices/AdminObject.hpp"

namespace hearthmake::componentservices {

std::string AdminObject::Name() const { return automation::ToText(m_object.Call("Name")); }

std::string AdminObject::Key() const { return automation::ToText(m_object.Call("Key")); }

automation::Variant AdminObject::Value(std::string_view strName) const {
  return m_object.Call("Value", {strName});
}

void AdminObject::SetValue(std::string_view strName, const automation::Variant& vValue) {
  m_object.Let("Value", {strName, vValue});
}

}  // namespace hearthmake::componentservices
