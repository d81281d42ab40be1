#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/run/RunProblem.hpp"

namespace hearthmake::host {

// The project that a part of the log is about.
struct AnnotationGroup {
  std::int32_t id = 0;  // of the project
  std::string name;
};

// How a CI service wants to be told of a run: lines among the output of the command that it takes out or
// marks. Each member gives whole lines, or nothing where the service has nothing of the kind.
class AnnotationFormat {
 public:
  AnnotationFormat() = default;
  AnnotationFormat(const AnnotationFormat&) = delete;
  AnnotationFormat& operator=(const AnnotationFormat&) = delete;
  virtual ~AnnotationFormat() = default;

  // The lines of a project that can be folded.
  virtual std::string Open(const AnnotationGroup& group) = 0;
  virtual std::string Close(const AnnotationGroup& group) = 0;
  // Inside the open group, for services that count errors by group.
  virtual std::string ProblemInside(const RunProblem& /*problem*/) { return {}; }
  // Outside of any group. The file is an absolute path, relative the same seen from the repository.
  virtual std::string Problem(const RunProblem& problem, const std::string& relative) = 0;
};

// The names of the services, as they are typed.
const std::vector<std::string>& AnnotationServices();
// The service by its name; "auto" asks the environment variables that the services set. Null for none.
std::unique_ptr<AnnotationFormat> MakeAnnotationFormat(std::string_view service);

}  // namespace hearthmake::host
