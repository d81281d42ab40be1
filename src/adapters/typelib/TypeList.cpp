#include "adapters/typelib/TypeList.hpp"

#include "adapters/typelib/TypeLibText.hpp"

namespace hearthmake::typelib {

namespace {

constexpr std::uint16_t kOleAutomation = 0x100;

}  // namespace

void TypeList::Add(platform::TypeDescription type) {
  if (type.guid == kNullGuid) type.guid.clear();
  if (type.kind == platform::TypeKind::Dispatch) type.flags &= static_cast<std::uint16_t>(~kOleAutomation);
  m_text += type.name.size() + type.helpString.size();
  if (m_text > kMostText) m_library.Fail("is damaged: the texts of its types pass 64 MB");
  m_types.push_back(std::move(type));
}

}  // namespace hearthmake::typelib
