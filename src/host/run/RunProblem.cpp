#include "host/run/RunProblem.hpp"

#include "foundation/Paths.hpp"
#include "host/run/CompilerLog.hpp"

namespace hearthmake::host {

namespace {

std::string PlaceOf(Session& session, const ProjectRecord& project, const CompilerError& error) {
  if (error.file.empty()) return session.PosixPath(project.path);
  return session.PosixPath(AbsolutePath(FolderPart(project.path), error.file));
}

std::vector<RunProblem> CompileProblems(Session& session, const ProjectRecord& project) {
  std::vector<RunProblem> problems;
  for (const CompilerError& error : CompilerErrors(project.log)) {
    problems.push_back({PlaceOf(session, project, error), error.line, error.text, project.name, true});
  }
  if (problems.empty()) {
    problems.push_back(
        {session.PosixPath(project.path), 0, "The compiler wrote no log.", project.name, true});
  }
  return problems;
}

}  // namespace

std::vector<RunProblem> ProblemsOf(Session& session, const ProjectRecord& project) {
  if (project.outcome != ProjectOutcome::Failed) return {};
  if (project.isCompileError) return CompileProblems(session, project);
  return {{session.PosixPath(project.path), 0, Printable(project.message), project.name, false}};
}

std::vector<RunProblem> ProblemsOf(Session& session, const RunRecord& record) {
  std::vector<RunProblem> problems;
  for (const ProjectRecord& project : record.Projects()) {
    auto own = ProblemsOf(session, project);
    problems.insert(problems.end(), std::make_move_iterator(own.begin()), std::make_move_iterator(own.end()));
  }
  for (const std::string& failure : record.Failures()) {
    problems.push_back({"", 0, Printable(failure), "", false});
  }
  return problems;
}

}  // namespace hearthmake::host
