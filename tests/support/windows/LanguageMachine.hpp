#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include "adapters/win32/Win32Clock.hpp"
#include "adapters/win32/Win32FileSystem.hpp"
#include "adapters/win32/Win32SystemInfo.hpp"
#include "com/Com.hpp"
#include "com/MachineClasses.hpp"
#include "com/ThreadState.hpp"
#include "platform/Platform.hpp"
#include "vbscript/objects/StandardObjects.hpp"

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

  // Of a script by its name; empty for one that runs here.
  static std::string ReasonToSkip(const std::string& script) {
    static const std::map<std::string, std::string> kBeyondWine = {
        {"empty_matches_move_on", "Wine's regular expressions replace empty matches without end"},
        {"lone_quantifier", kNoReason},
        {"reversed_range", kNoReason},
        {"unclosed_group", kNoReason},
        {"unclosed_set", kNoReason},
    };
    const bool isWine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    const auto found = kBeyondWine.find(script);
    return isWine && found != kBeyondWine.end() ? found->second : "";
  }
  // What the machine has and the engine has not: RegExp.
  static automation::Ref<automation::Object> CreateObject(std::string_view progId) {
    return vbscript::ComesWithEngine(progId) ? nullptr : com::CreateOfMachine(progId);
  }
  platform::Platform Ports() const {
    platform::Platform ports;
    ports.files = std::make_shared<win32::Win32FileSystem>();
    ports.clock = std::make_shared<win32::Win32Clock>();
    ports.system = std::make_shared<System>();
    return ports;
  }

 private:
  struct Com {
    Com() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    Com(const Com&) = delete;
    Com& operator=(const Com&) = delete;
    ~Com() { CoUninitialize(); }
  };

  static constexpr const char* kNoReason =
      "Wine's regular expressions don't tell what is wrong with a pattern";
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

  Com m_com;
  com::ThreadState::Attachment m_objects;
};

}  // namespace hearthmake::support
