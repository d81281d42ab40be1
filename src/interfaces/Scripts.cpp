#include "scripting/Scripts.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& Scripts::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Scripts", "_Scripts", "{1CA55CFE-2CF2-40F1-B81A-238560F8B314}")
          .get<&Scripts::BeforeSourceSafe>("BeforeSourceSafe")
          .let<&Scripts::SetBeforeSourceSafe>("BeforeSourceSafe")
          .get<&Scripts::BeforeComplie>("BeforeComplie")
          .let<&Scripts::SetBeforeComplie>("BeforeComplie")
          .get<&Scripts::BeforeProjectComplie>("BeforeProjectComplie")
          .let<&Scripts::SetBeforeProjectComplie>("BeforeProjectComplie")
          .get<&Scripts::AfterProjectCompile>("AfterProjectCompile")
          .let<&Scripts::SetAfterProjectCompile>("AfterProjectCompile")
          .get<&Scripts::BuildFailed>("BuildFailed")
          .let<&Scripts::SetBuildFailed>("BuildFailed")
          .get<&Scripts::CompileComplete>("CompileComplete")
          .let<&Scripts::SetCompileComplete>("CompileComplete")
          .get<&Scripts::AfterMTSpackage>("AfterMTSpackage")
          .let<&Scripts::SetAfterMTSpackage>("AfterMTSpackage")
          .method<&Scripts::Save>("Save")
          .method<&Scripts::Execute>("Execute", {"Script"})
          .get<&Scripts::ErrorText>("ErrorText")
          .get<&Scripts::ErrorLine>("ErrorLine")
          .method<&Scripts::Notify>("Notify", {"strMessage", "Cancel", "Progress"})
          .method<&Scripts::AddObject>("AddObject", {"oObject", "strname"})
          .build();
  return kInterface;
}

}  // namespace hearthmake
