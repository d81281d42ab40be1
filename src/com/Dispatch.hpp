#pragma once

#include "automation/Object.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

// IDispatch::Invoke and GetIDsOfNames over the declarations (ITypeInfo::Invoke refuses a VARIANT by reference
// for a typed in/out parameter, which is what scripts pass). With a further interface of the class, its
// members; else those that the object says it has.
HRESULT InvokeMember(automation::Object& object, const automation::Interface* further, DISPID member,
                     WORD flags, DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* failure);
HRESULT FindNames(automation::Object& object, const automation::Interface* further, LPOLESTR* names,
                  UINT count, DISPID* ids);

}  // namespace hearthmake::com
