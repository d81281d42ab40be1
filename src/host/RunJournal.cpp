#include "host/RunJournal.hpp"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <nlohmann/json.hpp>
#include <system_error>

#include "host/HostError.hpp"
#include "project/Project.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::json;

constexpr mode_t kMode = 0666;  // and what the umask takes from it
// A journal is some bytes for each project; a file beyond this is none.
constexpr off_t kLimit = off_t{64} * 1024 * 1024;

[[noreturn]] void Fail(const std::string& path, int error) {
  throw HostError(fmt::format("The journal of the run can't be written: {}: {}.", path,
                              std::generic_category().message(error)),
                  "Make the data folder writable.");
}

bool IsFileAt(int descriptor, const std::string& path) {
  struct stat open {};
  struct stat named {};
  return fstat(descriptor, &open) == 0 && stat(path.c_str(), &named) == 0 && open.st_ino == named.st_ino &&
         open.st_dev == named.st_dev;
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
  while (true) {
    m_file = posix::FileDescriptor(open(m_path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, kMode));
    if (!m_file) Fail(m_path, errno);
    if (flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0) {
      if (errno != EWOULDBLOCK) Fail(m_path, errno);
      throw HostError("Another process is running this build.", "Wait until it has ended.");
    }
    // A run that completes removes its journal: the one that is locked now may be that.
    if (IsFileAt(m_file.Get(), m_path)) return;
  }
}

void RunJournal::Read() {
  struct stat status {};
  if (fstat(m_file.Get(), &status) != 0) Fail(m_path, errno);
  if (status.st_size == 0) return;
  m_isOutdated = true;
  if (!S_ISREG(status.st_mode) || status.st_size > kLimit) return;
  std::string text(static_cast<std::size_t>(status.st_size), '\0');
  const ssize_t count = m_file.ReadFully(text.data(), text.size());
  text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
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
  if (!entry.is_object() || !entry.contains("compiled") || !entry["compiled"].is_number_integer())
    return false;
  m_compiled.insert(entry["compiled"].get<std::int32_t>());
  return true;
}

std::string RunJournal::Header() const { return json{{"build", m_idBuild}, {"projects", m_projects}}.dump(); }

void RunJournal::StartFresh() {
  m_compiled.clear();
  m_wholeLines = 0;
  if (ftruncate(m_file.Get(), 0) != 0) Fail(m_path, errno);
  if (const int error = m_file.WriteAll(Header() + "\n"); error != 0) Fail(m_path, error);
}

void RunJournal::Continue() {
  if (ftruncate(m_file.Get(), m_wholeLines) != 0) Fail(m_path, errno);
}

void RunJournal::Remove() { unlink(m_path.c_str()); }

// A line that can't be written costs no more than a second compile of this project after a resume, so the
// run goes on.
void RunJournal::ProjectCompiled(Project& objProject) {
  static_cast<void>(m_file.WriteAll(fmt::format("{{\"compiled\":{}}}\n", objProject.Id())));
}

}  // namespace hearthmake::host
