#pragma once

#include "adapters/win32/ComHeaders.hpp"
#include "adapters/win32/ObjectBorder.hpp"
#include "automation/Interface.hpp"
#include "automation/Variant.hpp"

namespace hearthmake::win32 {

// How the library's variants become those of COM, and back.

// A VARIANT that frees what it holds.
class OwnedVariant : public VARIANT {
 public:
  OwnedVariant() { VariantInit(this); }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
  ~OwnedVariant() { VariantClear(this); }
};

// The type that a declared value has in COM. Objects are VT_DISPATCH.
VARTYPE TypeOf(const automation::ValueType& type);

// The value of a type that lies at a place; FromVariant follows a reference. Error 13 for a type that
// automation does not know.
automation::Variant FromPlace(VARTYPE type, const void* place, ObjectBorder& border);
automation::Variant FromVariant(const VARIANT& value, ObjectBorder& border);

// Stores a value, converted to the type, in place of what is there. Error 13 where it can't be converted.
// An object stands there as the interface that was declared, or as IDispatch.
void ToPlace(VARTYPE type, void* place, const automation::Variant& value, ObjectBorder& border,
             const automation::Interface* object = nullptr);
// Gives a new VARIANT to the caller, who owns it.
VARIANT ToVariant(const automation::Variant& value, ObjectBorder& border);

}  // namespace hearthmake::win32
