#include "vbscript/objects/Match.hpp"

#include "automation/Declare.hpp"

namespace hearthmake::vbscript {

const automation::Interface& Match::Describe() {
  static const automation::Interface kInterface = automation::Declare("IMatch2", "IMatch2", "")
                                                      .byDefault()
                                                      .get<&Match::Value>("Value")
                                                      .get<&Match::FirstIndex>("FirstIndex")
                                                      .get<&Match::Length>("Length")
                                                      .get<&Match::Groups>("SubMatches")
                                                      .build();
  return kInterface;
}

}  // namespace hearthmake::vbscript
