#pragma once

#include <memory>
#include <string>

#include "adapters/posix/DriveMap.hpp"
#include "adapters/posix/PosixClock.hpp"
#include "adapters/posix/PosixFileSystem.hpp"
#include "adapters/posix/PosixSystemInfo.hpp"
#include "automation/Object.hpp"
#include "platform/Platform.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::support {

// A machine for the scripts of the language tests, with a folder of its own: C: is drive_c in it, with
// C:\temp.
class LanguageMachine {
 public:
  LanguageMachine() {
    m_root.MakeFolder("drive_c/temp");
    m_root.MakeFolder("drive_c/windows/system32");
  }
  // Of a script by its name; empty for one that runs here.
  static std::string ReasonToSkip(const std::string& /*script*/) { return {}; }
  static automation::Ref<automation::Object> CreateObject(std::string_view /*progId*/) { return nullptr; }
  platform::Platform Ports() const {
    const auto drives = std::make_shared<posix::DriveMap>(posix::DriveMap::BuiltIn(m_root.Path()));
    platform::Platform ports;
    ports.files = std::make_shared<posix::PosixFileSystem>(drives);
    ports.clock = std::make_shared<posix::PosixClock>();
    ports.system = std::make_shared<posix::PosixSystemInfo>(
        posix::SystemFacts{"C:\\temp\\", "C:\\windows\\system32", "C:\\temp", 10});
    return ports;
  }

 private:
  PosixFolder m_root;
};

}  // namespace hearthmake::support
