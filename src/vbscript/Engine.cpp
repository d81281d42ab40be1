#include "vbscript/Engine.hpp"

#include <vector>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/machine/Compiler.hpp"
#include "vbscript/machine/ErrObject.hpp"
#include "vbscript/machine/Globals.hpp"
#include "vbscript/machine/Machine.hpp"
#include "vbscript/syntax/Parser.hpp"

namespace hearthmake::vbscript {

using automation::Error;
using automation::Object;
using automation::Ref;
using automation::Variant;

class Engine::Implementation {
 public:
  explicit Implementation(Host& host) : context{host, {}, {}, 1033} { Start(); }
  ~Implementation() { End(); }

  void Start() {
    symbols = std::make_unique<Symbols>();
    globals = std::make_unique<Globals>(*symbols);
    machine = std::make_unique<Machine>(*globals, context);
    globals->AddObject("Err", Ref<Object>(new ErrObject(*machine)), false);
  }

  void End() {
    if (!machine) return;
    // Class_Terminate of what is alive has a time of its own, and may still work with everything else.
    context.budget.StartTimeout(timeout);
    // So named objects go last.
    globals->ClearVariables();
    machine->ReleaseObjects();
    globals->Clear();
    machine.reset();
    globals.reset();
    symbols.reset();
  }

  // Runs one operation from outside with its time, and keeps the place of its error.
  template <class Operation>
  auto Run(std::u16string_view text, Operation operation) {
    const bool isOutermost = callDepth == 0;
    struct Depth {
      explicit Depth(int& counted) : count(counted) { ++count; }
      ~Depth() { --count; }
      int& count;
    };
    try {
      const Depth depth(callDepth);
      if (isOutermost) {
        context.budget.StartTimeout(timeout);
        machine->ForgetPlace();
      }
      return operation();
    } catch (const CompileError& error) {
      // A text that the script itself runs fails in its own words, at the script's statement.
      Keep(error, text, error.SourceOffset(), true);
      throw;
    } catch (const Error& error) {
      const ErrorPlace& place = machine->PlaceOfError();
      Keep(error, place.script ? std::u16string_view(place.script->text) : std::u16string_view(),
           place.offset, false);
      if (isOutermost) machine->ForgetPlace();
      throw Error(lastError.number, lastError.source, lastError.description);
    } catch (const Interrupted&) {
      if (!isOutermost) throw;
      const Error error(kTimedOut, kRuntimeErrorSource, "The script was stopped, or ran out of its time");
      Keep(error, {}, 0, false);
      throw error;
    }
  }

  void Keep(const Error& error, std::u16string_view text, Offset offset, bool isCompileError) {
    lastError.number = isCompileError ? error.Number() : NumberOfResultCode(error.Number());
    lastError.source = error.Source().empty() ? kRuntimeErrorSource : error.Source();
    lastError.description = error.Description().empty() ? ErrorText(lastError.number) : error.Description();
    lastError.isCompileError = isCompileError;
    lastError.text.clear();
    lastError.line = lastError.column = 0;
    if (text.empty()) return;
    const LineAndColumn place = Locate(text, offset);
    lastError.line = place.line;
    lastError.column = place.column;
    lastError.text = automation::Utf16ToUtf8(LineAt(text, offset));
  }

  Context context;
  std::unique_ptr<Symbols> symbols;
  std::unique_ptr<Globals> globals;
  std::unique_ptr<Machine> machine;
  std::string language = "VBScript";
  std::int64_t timeout = kNoTimeout;
  ErrorRecord lastError;
  int callDepth = 0;
};

Engine::Engine(Host& host) : m_implementation(std::make_unique<Implementation>(host)) {}

Engine::~Engine() = default;

void Engine::SetLanguage(std::string_view language) {
  if (!automation::EqualsIgnoreCaseAscii(language, "VBScript")) RaiseRuntime(380);
  m_implementation->language = language;
}

const std::string& Engine::Language() const { return m_implementation->language; }

void Engine::SetTimeout(std::int64_t milliseconds) { m_implementation->timeout = milliseconds; }

std::int64_t Engine::Timeout() const { return m_implementation->timeout; }

void Engine::AddObject(std::string_view name, Ref<Object> object, bool hasGlobalMembers) {
  if (!m_implementation->globals->AddObject(name, object, hasGlobalMembers))
    RaiseRuntime(number::kInvalidProcedureCall);
}

void Engine::AddCode(std::u16string_view code) { ExecuteStatement(code); }

void Engine::ExecuteStatement(std::u16string_view code) {
  m_implementation->Run(code, [&] { m_implementation->machine->ExecuteGlobal(code); });
}

void Engine::Check(std::u16string_view code) {
  m_implementation->Run(code, [&] {
    // Names of its own, so that nothing of the engine's is declared or replaced.
    Symbols symbols;
    Globals globals(symbols);
    const std::shared_ptr<const Script> script = ParseScript(code, symbols);
    DeclareGlobals(script, globals);
    CompileSource(script, false, globals);
  });
}

Variant Engine::Eval(std::u16string_view expression) {
  return m_implementation->Run(expression, [&] { return m_implementation->machine->EvalGlobal(expression); });
}

Variant Engine::Run(std::string_view procedure, std::span<Variant> arguments) {
  return m_implementation->Run({}, [&] {
    Symbols& symbols = *m_implementation->symbols;
    const Symbol symbol = symbols.Find(automation::Utf8ToUtf16(procedure));
    const Binding* binding = symbol == Symbol::None ? nullptr : &m_implementation->globals->At(symbol);
    if (binding == nullptr || binding->kind != Binding::Kind::Function)
      RaiseRuntime(number::kMemberNotFound, procedure);
    return m_implementation->machine->CallFunction(*binding->function, nullptr, arguments);
  });
}

bool Engine::HasProcedure(std::string_view name) const {
  const Symbol symbol = m_implementation->symbols->Find(automation::Utf8ToUtf16(name));
  return symbol != Symbol::None && m_implementation->globals->At(symbol).kind == Binding::Kind::Function;
}

const ErrorRecord& Engine::LastError() const { return m_implementation->lastError; }

void Engine::ClearError() { m_implementation->lastError = {}; }

void Engine::Reset() {
  if (m_implementation->machine->IsRunning()) RaiseRuntime(17);
  m_implementation->End();
  m_implementation->Start();
  m_implementation->lastError = {};
}

void Engine::Interrupt() { m_implementation->context.budget.Interrupt(); }

void Engine::LimitSteps(std::int64_t steps) { m_implementation->context.budget.LimitSteps(steps); }

Context& Engine::SharedContext() { return m_implementation->context; }

}  // namespace hearthmake::vbscript
