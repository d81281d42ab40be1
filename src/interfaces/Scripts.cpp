#include "scripting/Scripts.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& Scripts::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Scripts", "_Scripts", "{1CA55CFE-2CF2-40F1-B81A-238560F8B314}")
          .get<&Scripts::BeforeSourceSafe>("BeforeSourceSafe")
          .get<&Scripts::BeforeComplie>("BeforeComplie")
          .get<&Scripts::BeforeProjectComplie>("BeforeProjectComplie")
          .get<&Scripts::AfterProjectCompile>("AfterProjectCompile")
          .get<&Scripts::BuildFailed>("BuildFailed")
          .get<&Scripts::CompileComplete>("CompileComplete")
          .get<&Scripts::AfterMTSpackage>("AfterMTSpackage")
          .build();
  return kInterface;
}

}  // namespace hearthmake
