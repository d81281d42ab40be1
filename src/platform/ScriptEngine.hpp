#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "automation/Object.hpp"

namespace hearthmake::platform {

// The last error of a script engine.
struct ScriptFault {
  std::int32_t number = 0;
  std::string source;
  std::string description;
  std::string text;         // the source line that it happened in
  std::int32_t line = 0;    // from 1; 0 when there was none
  std::int32_t column = 0;  // from 1
};

// A script control: an engine whose variables, procedures and named objects live as long as it does.
//
// What compiles or runs code throws automation::Error when the code fails, and Fault keeps the place. A
// script that uses up its time fails the same way; nothing in it can catch that.
class ScriptEngine {
 public:
  ScriptEngine() = default;
  ScriptEngine(const ScriptEngine&) = delete;
  ScriptEngine& operator=(const ScriptEngine&) = delete;
  virtual ~ScriptEngine() = default;

  // "VBScript"; error 380 for one that the engine doesn't speak.
  virtual void SetLanguage(std::string_view language) = 0;
  // Milliseconds that one call may take; -1 for no limit.
  virtual void SetTimeout(std::int32_t milliseconds) = 0;
  // 1: connected, so that Fault follows the engine's errors; 0: only initialised.
  virtual void SetState(std::int32_t state) = 0;
  // Makes an object visible under a name, with addMembers its members too without it.
  virtual void AddObject(std::string_view name, automation::Ref<automation::Object> object,
                         bool addMembers) = 0;
  virtual void AddCode(std::string_view code) = 0;
  virtual void ExecuteStatement(std::string_view code) = 0;
  // Calls a procedure of the scripts by name.
  virtual automation::Variant Run(std::string_view procedure, std::span<automation::Variant> arguments) = 0;
  // Compiles without running anything or adding to the engine.
  virtual void Check(std::string_view code) = 0;
  // A new object of a class that scripts can create ("Scripting.Dictionary"); error 429 for another.
  virtual automation::Ref<automation::Object> CreateObject(std::string_view progId) = 0;

  // The last error since ClearFault.
  virtual const ScriptFault& Fault() const = 0;
  virtual void ClearFault() = 0;

  // Gives up variables, procedures and named objects, as the end of the engine would: objects that hold each
  // other through the scripts are freed. Error 17 while a script runs.
  virtual void Reset() = 0;
};

// Where script engines come from.
class ScriptEngines {
 public:
  ScriptEngines() = default;
  ScriptEngines(const ScriptEngines&) = delete;
  ScriptEngines& operator=(const ScriptEngines&) = delete;
  virtual ~ScriptEngines() = default;

  virtual std::unique_ptr<ScriptEngine> Create() = 0;
};

}  // namespace hearthmake::platform
