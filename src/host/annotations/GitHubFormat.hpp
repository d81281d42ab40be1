#pragma once

#include "host/annotations/AnnotationFormat.hpp"

namespace hearthmake::host {

// Workflow commands of GitHub Actions: ::error file=a.cls,line=12,title=Lib::Variable not defined
class GitHubFormat final : public AnnotationFormat {
 public:
  std::string Open(const AnnotationGroup& group) override;
  std::string Close(const AnnotationGroup& group) override;
  std::string Problem(const RunProblem& problem, const std::string& relative) override;
};

}  // namespace hearthmake::host
