#include "host/run/RunJournal.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <system_error>

#include "host/HostError.hpp"
#include "project/Project.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::json;

// A journal is some bytes for each project; a file beyond this is none.
constexpr std::int64_t kLimit = std::int64_t{64} * 1024 * 1024;

[[noreturn]] void Fail(const std::string& path, const std::error_code& error) {
  throw HostError(fmt::format("The journal of the run can't be written: {}: {}.", path, error.message()),
                  "Make the data folder writable.");
}

}  // namespace

std::string RunJournal::FileName(std::int32_t idBuild) { return fmt::format("run-{}.json", idBuild); }

RunJournal::RunJournal(std::string path, std::int32_t idBuild, std::vector<std::int32_t> projects)
    : m_path(std::move(path)), m_idBuild(idBuild), m_projects(std::move(projects)) {
  std::sort(m_projects.begin(), m_projects.end());
  OpenLocked();
  Read();
}

void RunJournal::OpenLocked() {
  std::error_code error;
  switch (m_file.Open(m_path, error)) {
    case LockedFile::Outcome::Opened: return;
    case LockedFile::Outcome::Held:
      throw HostError("Another process is running this build.", "Wait until it has ended.");
    case LockedFile::Outcome::Failed: Fail(m_path, error);
  }
}

void RunJournal::Read() {
  const std::int64_t size = m_file.Size();
  if (size == 0) return;
  m_isOutdated = true;
  if (size < 0 || size > kLimit) return;
  const std::string text = m_file.Read(static_cast<std::size_t>(size));
  std::string_view rest = text;
  for (std::size_t end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
    if (!ReadLine(rest.substr(0, end), m_wholeLines == 0)) return;
    m_wholeLines += static_cast<std::int64_t>(end) + 1;
    rest.remove_prefix(end + 1);
  }
  m_isOfThisBuild = m_wholeLines > 0;
  m_isOutdated = !m_isOfThisBuild;
}

bool RunJournal::ReadLine(std::string_view line, bool isFirst) {
  if (isFirst) return line == Header();
  const json entry = json::parse(line, nullptr, false);
  if (!entry.is_object()) return false;
  if (entry.contains("asked")) return ReadAsked(entry["asked"]);
  if (!entry.contains("compiled") || !entry["compiled"].is_number_integer()) return false;
  m_compiled.insert(entry["compiled"].get<std::int32_t>());
  return true;
}

bool RunJournal::ReadAsked(const json& asked) {
  if (!asked.is_array()) return false;
  std::unordered_set<std::int32_t> projects;
  for (const json& id : asked) {
    if (!id.is_number_integer()) return false;
    projects.insert(id.get<std::int32_t>());
  }
  m_asked = std::move(projects);
  return true;
}

std::string RunJournal::Header() const { return json{{"build", m_idBuild}, {"projects", m_projects}}.dump(); }

void RunJournal::StartFresh() {
  m_compiled.clear();
  m_asked.reset();
  m_wholeLines = 0;
  if (const std::error_code error = m_file.Cut(0)) Fail(m_path, error);
  if (const std::error_code error = m_file.Append(Header() + "\n")) Fail(m_path, error);
}

void RunJournal::Continue() {
  if (const std::error_code error = m_file.Cut(m_wholeLines)) Fail(m_path, error);
}

void RunJournal::AskFor(const std::vector<std::int32_t>& projects) {
  m_asked.emplace(projects.begin(), projects.end());
  if (const std::error_code error = m_file.Append(json{{"asked", projects}}.dump() + "\n"))
    Fail(m_path, error);
}

void RunJournal::Remove() { m_file.Remove(); }

// A line that can't be written costs no more than a second compile of this project after a resume, so the
// run goes on.
void RunJournal::ProjectCompiled(Project& objProject) {
  static_cast<void>(m_file.Append(fmt::format("{{\"compiled\":{}}}\n", objProject.Id())));
}

}  // namespace hearthmake::host
