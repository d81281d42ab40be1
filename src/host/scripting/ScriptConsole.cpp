#include "host/scripting/ScriptConsole.hpp"

#include <chrono>

#include "host/system/Interrupt.hpp"
#include "host/system/Terminal.hpp"

namespace hearthmake::host {

namespace {

constexpr std::chrono::milliseconds kLook{100};

}  // namespace

ScriptConsole::~ScriptConsole() { Flush(); }

platform::InputStream& ScriptConsole::Input() { return *m_input; }
platform::OutputStream& ScriptConsole::Output() { return *m_output; }
platform::OutputStream& ScriptConsole::Error() { return *m_error; }

void ScriptConsole::Flush() {
  m_output->Flush();
  m_error->Flush();
}

bool ScriptConsole::IsTerminal() const {
  return host::IsTerminal(StandardStream::Input) && host::IsTerminal(StandardStream::Output);
}

bool ScriptConsole::ReadLine(std::string& line) {
  Flush();
  line.clear();
  while (!Interrupt::IsRequested()) {
    char c = '\0';
    const auto count = m_input->Read(&c, 1, kLook);
    if (!count) continue;
    if (*count == 0) return !line.empty();
    if (c == '\n') {
      if (line.ends_with('\r')) line.pop_back();
      return true;
    }
    line += c;
  }
  return false;
}

}  // namespace hearthmake::host
