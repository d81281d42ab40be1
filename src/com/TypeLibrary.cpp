#include "com/TypeLibrary.hpp"

#include "com/Module.hpp"

namespace hearthmake::com {

HRESULT TypeLibrary::Find(REFGUID id, ITypeInfo** info) {
  *info = nullptr;
  if (!m_library) {
    ITypeLib* loaded = nullptr;
    const HRESULT result = LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, &loaded);
    if (FAILED(result)) return result;
    m_library = automation::Ref<ITypeLib>::Adopt(loaded);
  }
  return m_library->GetTypeInfoOfGuid(id, info);
}

}  // namespace hearthmake::com
