#include "project/Reference.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& Reference::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Reference", "_Reference", "{CB25E07D-8C9F-4561-9F05-205FA4A410E3}")
          .get<&Reference::Id>("Id")
          .get<&Reference::GUID>("GUID")
          .let<&Reference::SetGUID>("GUID")
          .get<&Reference::BinaryVersion>("BinaryVersion")
          .let<&Reference::SetBinaryVersion>("BinaryVersion")
          .get<&Reference::Description>("Description")
          .let<&Reference::SetDescription>("Description")
          .get<&Reference::Path>("Path")
          .let<&Reference::SetPath>("Path")
          .get<&Reference::ReferencedProject>("ReferencedProject")
          .get<&Reference::IsExternal>("IsExternal")
          .get<&Reference::ReferenceString>("ReferenceString")
          .get<&Reference::IsUserControl>("IsUserControl")
          .get<&Reference::ReferenceType>("ReferenceType")
          .build();
  return kInterface;
}

}  // namespace hearthmake
