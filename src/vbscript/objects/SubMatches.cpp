#include "vbscript/objects/SubMatches.hpp"

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/IndexEnumerator.hpp"

namespace hearthmake::vbscript {

const automation::Interface& SubMatches::Describe() {
  static const automation::Interface kInterface = automation::Declare("ISubMatches", "ISubMatches", "")
                                                      .byDefault()
                                                      .get<&SubMatches::Item>("Item", {"index"})
                                                      .get<&SubMatches::Count>("Count")
                                                      .newEnum<&SubMatches::NewEnum>()
                                                      .build();
  return kInterface;
}

automation::Variant SubMatches::Item(std::int32_t index) const {
  if (index < 0 || index >= Count()) RaiseRuntime(number::kInvalidProcedureCall);
  return m_matches->GroupValue(m_index, static_cast<std::size_t>(index));
}

automation::Ref<automation::Enumerator> SubMatches::NewEnum() {
  return automation::Make<IndexEnumerator<SubMatches>>(this);
}

}  // namespace hearthmake::vbscript
