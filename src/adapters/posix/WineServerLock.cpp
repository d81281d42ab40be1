#include "adapters/posix/WineServerLock.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>

#include "automation/Error.hpp"

namespace hearthmake::posix {

namespace {

[[noreturn]] void Refuse(const std::string& what) {
  automation::Raise(automation::RuntimeError::PermissionDenied, "Registry", what);
}

// The server's folder is named by what the file system tells the prefix from others by.
std::string FolderName(const struct stat& prefix) {
  char name[64];
  std::snprintf(name, sizeof name, "/server-%jx-%jx", static_cast<std::uintmax_t>(prefix.st_dev),
                static_cast<std::uintmax_t>(prefix.st_ino));
  return name;
}

}  // namespace

WineServerLock::WineServerLock(const std::string& prefix, const std::string& serverRoot) {
  struct stat status {};
  if (::stat(prefix.c_str(), &status) != 0) Refuse(prefix + " is no Wine prefix");
  const std::string folder = serverRoot + FolderName(status);
  ::mkdir(serverRoot.c_str(), 0700);
  ::mkdir(folder.c_str(), 0700);
  const std::string path = folder + "/lock";
  m_lock = FileDescriptor(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!m_lock) Refuse(path);
  struct flock request {};
  request.l_type = F_WRLCK;
  request.l_whence = SEEK_SET;
  request.l_start = 0;
  request.l_len = 1;
  if (::fcntl(m_lock.Get(), F_SETLK, &request) != 0)
    Refuse("a Wine server runs in " + prefix +
           " and would overwrite the change; end it (wineserver -k), or make the change through "
           "\"wine regedit\"");
}

std::string WineServerLock::DefaultServerRoot() { return "/tmp/.wine-" + std::to_string(::getuid()); }

}  // namespace hearthmake::posix
