#include "host/run/RunLock.hpp"

#include <fmt/format.h>

#include <system_error>

#include "host/Console.hpp"
#include "host/HostError.hpp"
#include "host/run/RunJournal.hpp"

namespace hearthmake::host {

RunLock::RunLock(const std::string& folder, std::int32_t idBuild, const std::string& buildName) {
  const std::string path = folder + "/" + RunJournal::FileName(idBuild);
  std::error_code error;
  switch (m_journal.Open(path, error)) {
    case LockedFile::Outcome::Opened: return;
    case LockedFile::Outcome::Held:
      throw HostError(fmt::format("Another process is running the build '{}'.", Printable(buildName)),
                      "Wait until it has ended. Nothing was written.");
    case LockedFile::Outcome::Failed:
      throw HostError(
          fmt::format("The journal of the build's runs can't be opened: {}: {}.", path, error.message()),
          "Make the data folder writable. Nothing was written.");
  }
}

RunLock::~RunLock() {
  if (m_isNamed && m_journal.Size() == 0) m_journal.Remove();
}

void RunLock::RemoveJournal() {
  m_journal.Remove();
  m_isNamed = false;
}

}  // namespace hearthmake::host
