#include "host/annotations/Annotations.hpp"

#include <algorithm>

#include "project/Project.hpp"

namespace hearthmake::host {

Annotations::Annotations(Session& session, const RunRecord& record, const SourceRoot& root,
                         std::unique_ptr<AnnotationFormat> format, Stream stream)
    : m_session(session), m_record(record), m_root(root), m_format(std::move(format)), m_stream(stream) {}

Annotations::~Annotations() { Close(); }

void Annotations::Print(const std::string& lines) const {
  if (lines.empty()) return;
  m_stream == Stream::Output ? m_session.Out().Out(lines) : m_session.Out().Err(lines);
}

void Annotations::Close() {
  if (m_open) Print(m_format->Close(*m_open));
  m_open.reset();
}

void Annotations::WillCompile(Project& objProject, bool& bCancel) {
  Close();
  if (bCancel || m_stream == Stream::Error) return;
  m_open = AnnotationGroup{objProject.Id(), objProject.Name()};
  Print(m_format->Open(*m_open));
}

void Annotations::Tell(const RunProblem& problem) {
  Print(m_format->Problem(problem, m_root.Relative(problem.file)));
}

void Annotations::BuildFaild(Project* objProject, const std::string& /*strMessage*/, bool /*bCompileError*/) {
  std::vector<RunProblem> problems;
  const auto& projects = m_record.Projects();
  const auto found = std::find_if(projects.begin(), projects.end(), [&](const ProjectRecord& project) {
    return objProject != nullptr && project.id == objProject->Id();
  });
  // A second failure of the same project is one of the record's own.
  if (found != projects.end() && m_record.Failures().size() == m_toldFailures) {
    problems = ProblemsOf(m_session, *found);
  }
  for (const RunProblem& problem : problems) {
    if (m_open) Print(m_format->ProblemInside(problem));
  }
  Close();
  for (const RunProblem& problem : problems) Tell(problem);
  TellRest();
}

void Annotations::TellRest() {
  const auto& failures = m_record.Failures();
  for (; m_toldFailures < failures.size(); ++m_toldFailures) {
    Tell({"", 0, Printable(failures[m_toldFailures]), "", false});
  }
}

void Annotations::BuildCancled(Project& /*objProject*/) { Close(); }

void Annotations::BuildComplete() { Close(); }

}  // namespace hearthmake::host
