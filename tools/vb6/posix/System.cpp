#include "vb6/System.hpp"

#include <sys/random.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

#include "adapters/posix/DriveMap.hpp"
#include "adapters/posix/PosixFileSystem.hpp"

namespace hearthmake::vb6 {
namespace {

posix::DriveMap Drives() {
  if (auto drives = posix::DriveMap::FromEnvironment()) return *drives;
  posix::DriveMap drives;
  drives.SetDrive('Z', "/");
  return drives;
}

std::string ToDos(const posix::DriveMap& drives, const std::string& path) {
  if (path.starts_with('/')) return drives.FromPosix(path);
  if (path.find(':') != std::string::npos || path.starts_with("\\\\")) return path;
  const auto posixPath = drives.ToPosix(path);
  return posixPath ? drives.FromPosix(*posixPath) : path;
}

}  // namespace

Disks OpenDisks() {
  const auto drives = std::make_shared<const posix::DriveMap>(Drives());
  return {std::make_shared<posix::PosixFileSystem>(drives),
          [drives](const std::string& path) { return ToDos(*drives, path); }};
}

bool FillWithRandomBytes(void* bytes, std::size_t count) {
  // So few never come in parts.
  return getrandom(bytes, count, 0) >= 0;
}

void Crash() {
  const rlimit noCore = {0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  std::signal(SIGABRT, SIG_DFL);
  std::raise(SIGABRT);
}

void Hang() {
  for (;;) pause();
}

}  // namespace hearthmake::vb6
