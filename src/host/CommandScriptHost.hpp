#pragma once

#include <optional>

#include "host/ScriptConsole.hpp"
#include "vbscript/Host.hpp"

namespace hearthmake::host {

// The command as a host of scripts. Questions are asked on the terminal; without one, or when nobody wants
// to be asked, they get the answer that stands ready.
class CommandScriptHost final : public vbscript::Host {
 public:
  // The ports outlive the host.
  CommandScriptHost(const platform::Platform& ports, bool isInteractive)
      : m_ports(ports), m_isInteractive(isInteractive) {}

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
  ScriptConsole m_console;
};

}  // namespace hearthmake::host
