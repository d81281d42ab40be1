#pragma once

#include "automation/RefCounted.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

// The type library that the module carries as a resource, opened when first asked for.
class TypeLibrary {
 public:
  // The description of a type; an error of the system when there is none.
  HRESULT Find(REFGUID id, ITypeInfo** info);

 private:
  automation::Ref<ITypeLib> m_library;
};

}  // namespace hearthmake::com
