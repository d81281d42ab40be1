#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Platform.hpp"
#include "platform/ScriptEngine.hpp"

namespace hearthmake::vbs {

// What the program around the library answers for scripts. Texts are UTF-8.
struct Services {
  // An object of the program's own by its ProgID; null for a class that it doesn't know. The objects that
  // come with the engine (Scripting.Dictionary, …) need not be known here.
  std::function<automation::Ref<automation::Object>(std::string_view progId)> createObject;
  // GetObject: what stands behind a path or moniker, or the running object of a class; null for nothing.
  std::function<automation::Ref<automation::Object>(std::string_view path, std::string_view progId)>
      getObject;
  // MsgBox: the button that was chosen, by its number (vbOK is 1).
  std::function<std::int32_t(std::string_view prompt, std::int32_t style, std::string_view title)>
      showMessage;
  // InputBox.
  std::function<std::string(std::string_view prompt, std::string_view title, std::string_view defaultText)>
      askForText;
  // Asked while scripts run: true ends them, as their time-out does.
  bool (*isStopWanted)() = nullptr;
};

// Engines of the library's own VBScript.
class VbsScriptEngines final : public platform::ScriptEngines {
 public:
  // The ports are what the engine's objects (files, processes, the clock) work with. A service that is left
  // empty gives the default answer: no object, the first button, the default text.
  VbsScriptEngines(platform::Platform ports, Services services);

  std::unique_ptr<platform::ScriptEngine> Create() override;

 private:
  platform::Platform m_ports;
  Services m_services;
};

}  // namespace hearthmake::vbs
