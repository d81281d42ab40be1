#pragma once

#include "host/annotations/AnnotationFormat.hpp"

namespace hearthmake::host {

// Service messages of TeamCity: each project is a compilation, its errors are messages in it, inspections
// with file and line, and problems of the build.
class TeamCityFormat final : public AnnotationFormat {
 public:
  std::string Open(const AnnotationGroup& group) override;
  std::string Close(const AnnotationGroup& group) override;
  std::string ProblemInside(const RunProblem& problem) override;
  std::string Problem(const RunProblem& problem, const std::string& relative) override;

 private:
  bool m_hasType = false;  // the type of the inspections has been told
};

}  // namespace hearthmake::host
