#pragma once

#include "host/annotations/AnnotationFormat.hpp"

namespace hearthmake::host {

// Logging commands of Azure Pipelines: ##vso[task.logissue type=error;sourcepath=...;linenumber=12;]Lib: ...
class AzureFormat final : public AnnotationFormat {
 public:
  std::string Open(const AnnotationGroup& group) override;
  std::string Close(const AnnotationGroup& group) override;
  // The agent wants full paths and finds the repository itself.
  std::string Problem(const RunProblem& problem, const std::string& relative) override;
};

}  // namespace hearthmake::host
