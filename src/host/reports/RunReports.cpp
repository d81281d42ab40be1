#include "host/reports/RunReports.hpp"

#include <fmt/format.h>

#include <filesystem>

#include "automation/Error.hpp"
#include "foundation/Apartment.hpp"
#include "host/page/PageReport.hpp"
#include "host/reports/CodeQualityReport.hpp"
#include "host/reports/JUnitReport.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

namespace fs = std::filesystem;

void RequirePlace(const char* option, const std::string& path) {
  std::error_code ignored;
  const std::string folder = fs::path(path).parent_path().string();
  if (!fs::is_directory(folder, ignored)) {
    throw HostError(fmt::format("There is no folder for the file of {}: {}", option, path),
                    fmt::format("Make it with: mkdir -p '{}'", folder));
  }
  if (fs::is_directory(path, ignored)) {
    throw HostError(fmt::format("{} takes a file, and this is a folder: {}", option, path),
                    "Say what the file is to be called.");
  }
  std::string why;
  if (!IsWritable(folder, why)) {
    throw HostError(fmt::format("The file of {} can't be written: {}: {}.", option, path, why),
                    fmt::format("Make {} writable, or choose another folder.", folder));
  }
}

}  // namespace

RunReports::RunReports(Session& session, ReportOptions options, bool outputIsTaken)
    : m_session(session),
      m_options(std::move(options)),
      m_stream(outputIsTaken ? Annotations::Stream::Error : Annotations::Stream::Output) {
  AddFile("--html", m_options.html,
          [this](Session&, const RunRecord& record, const SourceRoot&) { return m_page->Text(record); });
  AddFile("--junit", m_options.junit, &JUnitReport);
  AddFile("--code-quality", m_options.codeQuality, &CodeQualityReport);
}

RunReports::~RunReports() = default;

void RunReports::AddFile(const char* option, const std::string& typed, decltype(File::make) make) {
  if (typed.empty()) return;
  const std::string dosPath = m_session.DosPath(typed);
  RequirePlace(option, AbsoluteSystemPath(m_session.PosixPath(dosPath)));
  m_files.push_back({typed, dosPath, std::move(make)});
}

void RunReports::Follow(Build& build) {
  m_record = std::make_unique<RunRecord>(build);
  const auto& projects = m_record->Projects();
  m_root = std::make_unique<SourceRoot>(
      SourceRoot::Find(projects.empty() ? "." : m_session.PosixPath(projects.front().path)));
  if (!m_options.html.empty()) m_page = std::make_unique<PageReport>(m_session, build);
  if (auto format = MakeAnnotationFormat(m_options.annotations)) {
    m_annotations = std::make_unique<Annotations>(m_session, *m_record, *m_root, std::move(format), m_stream);
  }
}

bool RunReports::IsAnyWanted() const { return !m_files.empty() || !m_options.annotations.empty(); }

std::vector<BuildEvents*> RunReports::Begin(Build& build, const RunPlan& plan) {
  if (!IsAnyWanted()) return {};
  Follow(build);
  m_record->LeaveOut(plan);
  std::vector<BuildEvents*> sinks = {m_record.get()};
  if (m_page) {
    m_page->Expect(plan);
    sinks.push_back(&m_page->Facts());
  }
  if (m_annotations) sinks.push_back(m_annotations.get());
  return sinks;
}

void RunReports::End(const RunPlan& plan) {
  if (!m_record) return;
  m_record->LeaveOut(plan);
  m_record->End();
  if (m_annotations) m_annotations->Close();
}

ExitStatus RunReports::Finish(Build& build, ExitStatus status) {
  if (!IsAnyWanted()) return status;
  if (!m_record) Follow(build);
  bool isWritten = true;
  for (const File& file : m_files) isWritten = Write(file) && isWritten;
  if (m_page) m_page->Remember();
  return isWritten || status != ExitStatus::Done ? status : ExitStatus::Failed;
}

void RunReports::Fail(Build& build, const std::string& message) {
  if (!IsAnyWanted()) return;
  if (!m_record) Follow(build);
  m_record->Fail(message);
  if (m_annotations) m_annotations->TellRest();
  Finish(build, ExitStatus::Failed);
}

bool RunReports::Write(const File& file) {
  try {
    Ports().files->Replace(file.dosPath, file.make(m_session, *m_record, *m_root));
    return true;
  } catch (const automation::Error& error) {
    m_session.Out().Note(
        fmt::format("The report {} can't be written: {}", file.typed, Printable(error.Description())));
    return false;
  }
}

ExitStatus ReportedRun(Session& session, Build& build, const ReportOptions& options, bool outputIsTaken,
                       const std::function<ExitStatus(RunReports& reports)>& run) {
  RunReports reports(session, options, outputIsTaken);
  try {
    return reports.Finish(build, run(reports));
  } catch (const HostError& error) {
    reports.Fail(build, error.what());
    throw;
  } catch (const automation::Error& error) {
    reports.Fail(build, error.Description());
    throw;
  }
}

}  // namespace hearthmake::host
