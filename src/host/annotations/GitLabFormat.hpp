#pragma once

#include "host/annotations/AnnotationFormat.hpp"

namespace hearthmake::host {

// Sections of GitLab's job log. GitLab has no line of a log that becomes an annotation: it takes problems
// from files, the JUnit report and the code-quality report.
class GitLabFormat final : public AnnotationFormat {
 public:
  std::string Open(const AnnotationGroup& group) override;
  std::string Close(const AnnotationGroup& group) override;
  std::string Problem(const RunProblem& problem, const std::string& relative) override;
};

}  // namespace hearthmake::host
