#include "adapters/catalog/Properties.hpp"

#include <algorithm>
#include <cmath>

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::catalog {

namespace {

using automation::Variant;
using automation::VariantType;

constexpr std::string_view kPassword = "Password";

bool IsFinite(const Variant& value) {
  switch (value.Type()) {
    case VariantType::Single: return std::isfinite(value.AsSingle());
    case VariantType::Double:
    case VariantType::Date: return std::isfinite(value.AsDouble());
    default: return true;
  }
}

void RequireStorable(std::string_view name, const Variant& value) {
  const bool isPlain = value.Type() != VariantType::Object && value.Type() != VariantType::Array;
  if (isPlain && IsFinite(value)) return;
  automation::Raise(automation::RuntimeError::TypeMismatch, "Catalog", std::string(name));
}

}  // namespace

const Property* Properties::Find(std::string_view name) const {
  const auto found = std::find_if(m_properties.begin(), m_properties.end(), [&](const Property& property) {
    return automation::EqualsIgnoreCaseAscii(property.name, name);
  });
  return found == m_properties.end() ? nullptr : &*found;
}

Variant Properties::Value(std::string_view name) const {
  const Property* property = Find(name);
  return property == nullptr || property->isSecret ? Variant() : property->value;
}

void Properties::Set(std::string_view name, const Variant& value) {
  const Variant& plain = value.Target();
  RequireStorable(name, plain);
  if (!automation::EqualsIgnoreCaseAscii(name, kPassword)) return Put({std::string(name), plain, false});
  const bool isGiven = !plain.IsEmpty() && !plain.IsNull() && !automation::ToText(plain).empty();
  Put({std::string(name), Variant::FromBoolean(isGiven), true});
}

void Properties::Put(Property property) {
  if (const Property* known = Find(property.name)) {
    Property& place = m_properties[static_cast<std::size_t>(known - m_properties.data())];
    place.value = std::move(property.value);
    place.isSecret = property.isSecret;
  } else {
    m_properties.push_back(std::move(property));
  }
}

bool IsSame(const Property& left, const Property& right) {
  if (left.isSecret != right.isSecret || left.value.Type() != right.value.Type()) return false;
  switch (left.value.Type()) {
    case VariantType::Empty:
    case VariantType::Null: return true;
    case VariantType::String: return left.value.AsUtf16() == right.value.AsUtf16();
    case VariantType::Single: return left.value.AsSingle() == right.value.AsSingle();
    case VariantType::Double:
    case VariantType::Date: return left.value.AsDouble() == right.value.AsDouble();
    case VariantType::Currency: return left.value.AsCurrency() == right.value.AsCurrency();
    default: return left.value.AsLong() == right.value.AsLong();
  }
}

}  // namespace hearthmake::catalog
