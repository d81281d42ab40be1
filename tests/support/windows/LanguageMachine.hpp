#pragma once

#include <filesystem>
#include <memory>

#include "adapters/win32/Win32Clock.hpp"
#include "adapters/win32/Win32FileSystem.hpp"
#include "adapters/win32/Win32SystemInfo.hpp"
#include "platform/Platform.hpp"

namespace hearthmake::support {

// This machine, with an empty C:\temp for as long as the object lives. Run it in a Wine prefix that holds
// nothing of value.
class LanguageMachine {
 public:
  LanguageMachine() {
    Clear();
    std::filesystem::create_directory(kTemporary);
  }
  LanguageMachine(const LanguageMachine&) = delete;
  LanguageMachine& operator=(const LanguageMachine&) = delete;
  ~LanguageMachine() { Clear(); }

  platform::Platform Ports() const {
    platform::Platform ports;
    ports.files = std::make_shared<win32::Win32FileSystem>();
    ports.clock = std::make_shared<win32::Win32Clock>();
    ports.system = std::make_shared<System>();
    return ports;
  }

 private:
  static constexpr const char* kTemporary = "C:\\temp";

  class System final : public win32::Win32SystemInfo {
   public:
    System() : Win32SystemInfo(kTemporary) {}
    std::string TemporaryFolder() override { return "C:\\temp\\"; }
  };

  static void Clear() {
    std::error_code ignored;
    std::filesystem::remove_all(kTemporary, ignored);
  }
};

}  // namespace hearthmake::support
