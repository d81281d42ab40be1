#pragma once

#include <string>

#include "adapters/posix/FileDescriptor.hpp"

namespace hearthmake::posix {

// Keeps Wine's server out of a prefix for as long as the object lives: holds the lock that a server
// takes before it reads the registry. A Wine program that starts meanwhile waits for a moment.
class WineServerLock {
 public:
  // serverRoot is the folder of the servers' sockets. Error 70 when a server runs in the prefix or the
  // lock can't be had, with what to do.
  WineServerLock(const std::string& prefix, const std::string& serverRoot);

  // `/tmp/.wine-<user id>`
  static std::string DefaultServerRoot();

 private:
  FileDescriptor m_lock;
};

}  // namespace hearthmake::posix
