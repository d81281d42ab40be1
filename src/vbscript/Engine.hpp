#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "automation/Object.hpp"
#include "vbscript/Host.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// The last error of an engine.
struct ErrorRecord {
  std::int32_t number = 0;  // 0: no error since the last Clear
  std::string source;       // "Microsoft VBScript runtime error", the raiser's own otherwise
  std::string description;
  std::string text;         // the source line that it happened in
  std::int32_t line = 0;    // from 1
  std::int32_t column = 0;  // from 1, in UTF-16 units
  bool isCompileError = false;
};

// A script engine: global variables, procedures, classes and named objects that live from one call to the
// next, until Reset or its end. Belongs to one thread. Texts of code are UTF-16, so that nothing that a
// file holds is lost; names are UTF-8.
//
// Every operation that compiles or runs code throws automation::Error when the code fails, and keeps the
// place in LastError. A script that runs out of its time ends with kTimedOut, which no On Error in it can
// catch. Operations may be called while a script runs (from a member that it calls); the inner call has the
// outer one's time.
class Engine {
 public:
  // E_ABORT: the script was stopped from outside or by its time-out.
  static constexpr std::int32_t kTimedOut = static_cast<std::int32_t>(0x80004004);
  static constexpr std::int64_t kNoTimeout = -1;

  // The host outlives the engine.
  explicit Engine(Host& host);
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;
  ~Engine();

  // "VBScript", in any case; anything else is error 380 "Invalid property value".
  void SetLanguage(std::string_view language);
  const std::string& Language() const;

  // Milliseconds that one call from outside may take; kNoTimeout for none.
  void SetTimeout(std::int64_t milliseconds);
  std::int64_t Timeout() const;

  // Makes an object known by a name; with global members, its members can be used without it, behind the
  // script's own names. Error 5 when the name is taken or empty.
  void AddObject(std::string_view name, automation::Ref<automation::Object> object, bool hasGlobalMembers);

  void AddCode(std::u16string_view code);
  // Runs statements; what they declare stays.
  void ExecuteStatement(std::u16string_view code);
  // Compiles statements and forgets them: nothing is declared or run.
  void Check(std::u16string_view code);
  // The value of an expression.
  automation::Variant Eval(std::u16string_view expression);
  // Calls a procedure of the script by name. Arguments that are references receive what the procedure
  // leaves in its ByRef parameters. Error 438 when there is none, 450 for a wrong number of arguments.
  automation::Variant Run(std::string_view procedure, std::span<automation::Variant> arguments);
  // Whether the script has a procedure of this name.
  bool HasProcedure(std::string_view name) const;

  const ErrorRecord& LastError() const;
  void ClearError();

  // Ends everything: variables, procedures, named objects. Class_Terminate of what is alive runs.
  void Reset();

  // From a signal handler or another thread: ends the running script as its time-out does.
  void Interrupt();
  // For fuzzing and tests, see Budget::LimitSteps.
  void LimitSteps(std::int64_t steps);

  // What the engine's own objects need to work in it.
  Context& SharedContext();

 private:
  class Implementation;
  std::unique_ptr<Implementation> m_implementation;
};

}  // namespace hearthmake::vbscript
