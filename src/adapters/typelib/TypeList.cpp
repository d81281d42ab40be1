#include "adapters/typelib/TypeList.hpp"

namespace hearthmake::typelib {

void TypeList::Add(platform::TypeDescription type) {
  m_text += type.name.size() + type.helpString.size();
  if (m_text > kMostText) m_library.Fail("is damaged: the texts of its types pass 64 MB");
  m_types.push_back(std::move(type));
}

}  // namespace hearthmake::typelib
