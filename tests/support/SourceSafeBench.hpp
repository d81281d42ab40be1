#pragma once

#include <memory>

#include "adapters/win32/Win32FileSystem.hpp"
#include "doubles/ClassDouble.hpp"
#include "doubles/SourceSafeDoubles.hpp"
#include "support/MemorySourceControl.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::support {

// A machine whose SourceSafe objects stand on a database in memory.
class SourceSafeBench {
 public:
  SourceSafeBench() { memory.hasDeepHistory = false; }

  static constexpr const char* kIni = "C:\\vss\\srcsafe.ini";
  doubles::ComThread com;
  Win32Folder folder;
  MemorySourceControl memory{std::make_shared<win32::Win32FileSystem>()};
  doubles::SafeBase base;
  std::shared_ptr<doubles::CallLog> log = std::make_shared<doubles::CallLog>();
  doubles::ClassDouble classDouble{
      "SourceSafe", [this] { return doubles::MakeDouble<doubles::DatabaseDouble>(log, memory, base); }};
};

}  // namespace hearthmake::support
