#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/HostError.hpp"
#include "host/Session.hpp"
#include "host/annotations/Annotations.hpp"
#include "host/annotations/SourceRoot.hpp"
#include "host/run/RunPlan.hpp"
#include "host/run/RunRecord.hpp"

namespace hearthmake::host {

class PageReport;

// The reports that a run is asked for, as they were typed; empty: none.
struct ReportOptions {
  std::string html;         // a file
  std::string junit;        // a file
  std::string codeQuality;  // a file
  std::string annotations;  // one of AnnotationServices()
};

// Writes the reports of a run, and follows it for them.
class RunReports {
 public:
  // HostError when a file can't be written where it is to go: better told before a run than behind it.
  // Annotations go to standard error while standard output belongs to a program.
  RunReports(Session& session, ReportOptions options, bool outputIsTaken);
  RunReports(const RunReports&) = delete;
  RunReports& operator=(const RunReports&) = delete;
  ~RunReports();

  // Before the run, with the build in compile order: what is to hear its events, before any display.
  std::vector<BuildEvents*> Begin(Build& build, const RunPlan& plan);
  // Behind it, with what the plan came to.
  void End(const RunPlan& plan);

  // Writes the files of the run that is over; of a run that was cancelled before it began, that. A file that
  // can't be written after all is told of, and fails what was done otherwise.
  ExitStatus Finish(Build& build, ExitStatus status);
  // The same for a run that was ended by an error which no event told of, or never began.
  void Fail(Build& build, const std::string& message);

 private:
  struct File {
    std::string typed;
    std::string dosPath;
    std::function<std::string(Session& session, const RunRecord& record, const SourceRoot& root)> make;
  };

  void AddFile(const char* option, const std::string& typed, decltype(File::make) make);
  void Follow(Build& build);
  // A run that nobody wants a report of is not followed: its record would cost it time.
  bool IsAnyWanted() const;
  bool Write(const File& file);

  Session& m_session;
  ReportOptions m_options;
  Annotations::Stream m_stream;
  std::vector<File> m_files;
  std::unique_ptr<RunRecord> m_record;
  std::unique_ptr<SourceRoot> m_root;
  std::unique_ptr<Annotations> m_annotations;  // null when nobody wants any
  std::unique_ptr<PageReport> m_page;          // null when nobody wants one
};

// Does the run with its reports, which are written whatever becomes of it: errors that end it are in them
// too.
ExitStatus ReportedRun(Session& session, Build& build, const ReportOptions& options, bool outputIsTaken,
                       const std::function<ExitStatus(RunReports& reports)>& run);

}  // namespace hearthmake::host
