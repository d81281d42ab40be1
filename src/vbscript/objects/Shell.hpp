#pragma once

#include <optional>
#include <string>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"
#include "vbscript/objects/ShellEnvironment.hpp"
#include "vbscript/objects/ShellExec.hpp"
#include "vbscript/objects/SpecialFolders.hpp"

namespace hearthmake::vbscript {

// WScript.Shell. Errors have the system's result code as number (0x80070002 for a program or folder that is
// not there) and the member as source. What needs a desktop (CreateShortcut, SendKeys) is error 445.
class Shell final : public automation::Object {
 public:
  // The context outlives the object.
  explicit Shell(Context& context) : m_context(context) {}
  const automation::Interface& Declaration() const override;

  // Starts a Windows command line, its %variables% expanded, hidden whatever the window style. Waiting, the
  // child's exit code; else 0. A child that is being waited for ends when the script's time does.
  std::int32_t Run(const std::string& command, std::optional<std::int32_t> windowStyle,
                   std::optional<bool> waits);
  automation::Ref<ShellExec> Exec(const std::string& command);
  automation::Ref<ShellEnvironment> Environment(std::optional<std::string> type);
  std::string ExpandEnvironmentStrings(const std::string& text);
  std::string CurrentDirectory();
  void SetCurrentDirectory(const std::string& folder);
  automation::Ref<vbscript::SpecialFolders> SpecialFolders();
  automation::Variant RegRead(const std::string& name);
  void RegWrite(const std::string& name, const automation::Variant& value, std::optional<std::string> type);
  void RegDelete(const std::string& name);
  // The button that was chosen. There is no waiting for a while only.
  std::int32_t Popup(const std::string& text, std::optional<automation::Variant> seconds,
                     std::optional<std::string> title, std::optional<std::int32_t> type);
  // False: there is no event log, and no window to bring to the front.
  bool LogEvent(const automation::Variant& type, const std::string& message,
                std::optional<std::string> target);
  bool AppActivate(const automation::Variant& title, std::optional<automation::Variant> waits);
  void SendKeys(const std::string& keys, std::optional<automation::Variant> waits);
  automation::Ref<automation::Object> CreateShortcut(const std::string& path);

 private:
  Context& m_context;
};

}  // namespace hearthmake::vbscript
