#pragma once

#include <memory>
#include <optional>
#include <string>

#include "build/BuildEvents.hpp"
#include "host/Session.hpp"
#include "host/annotations/AnnotationFormat.hpp"
#include "host/annotations/SourceRoot.hpp"
#include "host/run/RunRecord.hpp"

namespace hearthmake::host {

// Tells a CI service of a run while it goes on: the output of each project can be folded, and what failed is
// marked at its place in the sources. To hear of an event between the record and the display: what a display
// prints of a project then stands in its fold, and what it prints of a failure below it.
class Annotations final : public BuildEvents {
 public:
  enum class Stream {
    Output,
    Error,  // standard output belongs to a program; problems only, for there is nothing to fold
  };

  // Session, record and root stay alive meanwhile.
  Annotations(Session& session, const RunRecord& record, const SourceRoot& root,
              std::unique_ptr<AnnotationFormat> format, Stream stream);
  ~Annotations() override;

  // Ends the fold of the last project.
  void Close();
  // Failures of the record that no event told of.
  void TellRest();

  void WillCompile(Project& objProject, bool& bCancel) override;
  void BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) override;
  void BuildCancled(Project& objProject) override;
  void BuildComplete() override;

 private:
  void Print(const std::string& lines) const;
  void Tell(const RunProblem& problem);

  Session& m_session;
  const RunRecord& m_record;
  const SourceRoot& m_root;
  std::unique_ptr<AnnotationFormat> m_format;
  Stream m_stream;
  std::optional<AnnotationGroup> m_open;
  std::size_t m_toldFailures = 0;  // of the record's own
};

}  // namespace hearthmake::host
