#include "vbscript/objects/Matches.hpp"

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/IndexEnumerator.hpp"
#include "vbscript/objects/Match.hpp"

namespace hearthmake::vbscript {

const automation::Interface& Matches::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("IMatchCollection2", "IMatchCollection2", "")
          .byDefault()
          .get<&Matches::Item>("Item", {"index"})
          .get<&Matches::Count>("Count")
          .newEnum<&Matches::NewEnum>()
          .build();
  return kInterface;
}

automation::Variant Matches::Item(std::int32_t index) const {
  if (index < 0 || index >= Count()) RaiseRuntime(number::kInvalidProcedureCall);
  return automation::Variant::FromObject(automation::Make<Match>(m_matches, static_cast<std::size_t>(index)));
}

automation::Ref<automation::Enumerator> Matches::NewEnum() {
  return automation::Make<IndexEnumerator<Matches>>(this);
}

}  // namespace hearthmake::vbscript
