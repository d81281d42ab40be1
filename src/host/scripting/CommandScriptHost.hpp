#pragma once

#include <functional>
#include <optional>

#include "host/scripting/ScriptConsole.hpp"
#include "vbscript/Host.hpp"

namespace hearthmake::host {

// The command as a host of scripts. Questions are asked on the terminal; without one, or when nobody wants
// to be asked, they get the answer that stands ready.
class CommandScriptHost final : public vbscript::Host {
 public:
  // The ports outlive the host.
  // prepareLibrary is called before the first object of the library is made.
  CommandScriptHost(const platform::Platform& ports, bool isInteractive, std::function<void()> prepareLibrary)
      : m_ports(ports), m_isInteractive(isInteractive), m_prepareLibrary(std::move(prepareLibrary)) {}

  // The button that a message of a style has ready, by its number.
  static std::int32_t DefaultAnswer(std::int32_t style);

  const platform::Platform& Platform() override { return m_ports; }
  std::int32_t ShowMessage(std::string_view prompt, std::int32_t style, std::string_view title) override;
  std::string AskForText(std::string_view prompt, std::string_view title,
                         std::string_view defaultText) override;
  automation::Ref<automation::Object> CreateObject(std::string_view progId) override;
  automation::Ref<automation::Object> GetObject(std::string_view path, std::string_view progId) override;
  vbscript::Console* StandardStreams() override { return &m_console; }

  ScriptConsole& Console() { return m_console; }

 private:
  bool CanAsk() const { return m_isInteractive && m_console.IsTerminal(); }
  void Show(std::string_view text);

  const platform::Platform& m_ports;
  bool m_isInteractive;
  std::function<void()> m_prepareLibrary;
  ScriptConsole m_console;
};

}  // namespace hearthmake::host
