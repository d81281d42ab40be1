#include "build/Projects.hpp"

#include "automation/Declare.hpp"
#include "build/Build.hpp"

namespace hearthmake {

const automation::Interface& Projects::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Projects", "_Projects", "{89999619-5797-4FB9-A923-F9C5E9C18834}")
          .newEnum<&Projects::NewEnum>()
          .get<&Projects::Count>("Count")
          .byDefault()
          .get<&Projects::Item>("item", {"vIndex"})
          .method<&Projects::Add>("Add", {"strFile"})
          .method<&Projects::Build>("Build", {"bResume"})
          .method<&Projects::SetCompileOrder>("SetCompileOrder")
          .method<&Projects::GetByName>("GetByName", {"sProjectName"})
          .build();
  return kInterface;
}

}  // namespace hearthmake
