#pragma once

#include <memory>
#include <string>

#include "vbscript/Console.hpp"

namespace hearthmake::host {

// The standard streams of this process for a script. What goes to a terminal or a pipe goes at once; a file
// gets it in larger pieces. A reader that has gone away is no failure.
class ScriptConsole final : public vbscript::Console {
 public:
  ScriptConsole();
  ~ScriptConsole() override;

  platform::InputStream& Input() override;
  platform::OutputStream& Output() override;
  platform::OutputStream& Error() override;
  // Writes what is still held back.
  void Flush();

  // Whether somebody sits there who can be asked.
  bool IsTerminal() const;
  // A line that was typed, without its end; false at the end of the input or on Ctrl-C.
  bool ReadLine(std::string& line);

 private:
  // Holds back what goes to a file; what nobody reads counts as written.
  class Standard : public platform::OutputStream {
   public:
    virtual void Flush() = 0;
  };
  class SystemStandard;

  std::unique_ptr<platform::InputStream> m_input;
  std::unique_ptr<Standard> m_output;
  std::unique_ptr<Standard> m_error;
};

}  // namespace hearthmake::host
