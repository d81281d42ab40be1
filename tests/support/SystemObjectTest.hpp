#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "adapters/posix/PosixClock.hpp"
#include "adapters/posix/PosixFileSystem.hpp"
#include "adapters/posix/PosixProcessLauncher.hpp"
#include "adapters/posix/PosixSystemInfo.hpp"
#include "adapters/posix/RegistryStore.hpp"
#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"
#include "support/ScriptHost.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// The objects of scripts over the real adapters: C: is a folder of its own, Z: the machine.
class SystemObjectTest : public ::testing::Test {
 protected:
  static automation::Variant Text(const std::string& text) { return automation::Variant::FromText(text); }
  static automation::Variant Number(std::int32_t number) { return automation::Variant::FromLong(number); }
  static automation::Variant Flag(bool flag) { return automation::Variant::FromBoolean(flag); }
  static std::string ToText(const automation::Variant& value) { return automation::ToText(value); }
  static automation::Ref<automation::Object> ToObject(const automation::Variant& value) {
    return automation::Ref<automation::Object>(automation::ToObject(value));
  }
  // The number of the error that a call ends in; 0 for none.
  static std::int32_t ErrorOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const automation::Error& error) {
      return error.Number();
    }
    return 0;
  }

  support::PosixFolder root;
  std::shared_ptr<posix::DriveMap> drives = [this] {
    auto map = std::make_shared<posix::DriveMap>();
    map->SetDrive('C', root.MakeFolder("c"));
    map->SetDrive('Z', "/");
    root.MakeFolder("c/temp");
    root.MakeFolder("c/windows/system32");
    return map;
  }();
  ScriptHost host{[this] {
    platform::Platform ports;
    ports.files = std::make_shared<posix::PosixFileSystem>(drives);
    ports.processes = std::make_shared<posix::PosixProcessLauncher>(*drives);
    ports.registry = std::make_shared<posix::RegistryStore>(root.Path("registry.reg"));
    ports.clock = std::make_shared<posix::PosixClock>();
    ports.system = std::make_shared<posix::PosixSystemInfo>(
        posix::SystemFacts{"C:\\temp", "C:\\windows\\system32", "C:\\data", 10});
    return ports;
  }()};
  Context context{host, {}, {}, 1033};
};

}  // namespace hearthmake::vbscript
