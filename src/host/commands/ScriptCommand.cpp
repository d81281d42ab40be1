#include <fmt/format.h>

#include "host/commands/Commands.hpp"
#include "host/scripting/CommandScriptHost.hpp"
#include "host/scripting/ScriptText.hpp"
#include "host/scripting/ScriptUsage.hpp"
#include "host/system/Interrupt.hpp"
#include "host/system/Places.hpp"
#include "vbscript/Engine.hpp"
#include "vbscript/Quit.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/ScriptEventSink.hpp"
#include "vbscript/objects/WScript.hpp"

namespace hearthmake::host {

namespace {

using vbscript::Engine;

constexpr std::int64_t kMillisecondsPerSecond = 1000;

// Lets Ctrl-C end the script of an engine, for as long as it lives.
class InterruptedScript {
 public:
  explicit InterruptedScript(Engine& engine) {
    Interrupt::OnRequest([](void* context) { static_cast<Engine*>(context)->Interrupt(); }, &engine);
  }
  InterruptedScript(const InterruptedScript&) = delete;
  InterruptedScript& operator=(const InterruptedScript&) = delete;
  ~InterruptedScript() { Interrupt::OnRequest(nullptr, nullptr); }

 private:
  InterruptibleRun m_run;
};

std::string ReadScript(const std::string& typed, const std::string& path) {
  if (!Ports().files->FileExists(path)) {
    throw HostError(fmt::format("There is no script file '{}'.", typed),
                    "Give the path of a .vbs file: hearthmake script FILE.vbs");
  }
  return Ports().files->Read(path);
}

// As the original script host prints it.
std::string Described(const std::string& file, const vbscript::ErrorRecord& record) {
  const std::string text = record.description.empty()
                               ? fmt::format("&H{:08X}", static_cast<std::uint32_t>(record.number))
                               : record.description;
  const std::string source = record.source.empty() ? "(null)" : record.source;
  return fmt::format("{}({}, {}) {}: {}\n", file, record.line, record.column, source, text);
}

ExitStatus RunScript(Engine& engine, const std::u16string& code, const ScriptUsage& usage,
                     CommandScriptHost& host) {
  const auto fail = [&](const std::string& message) {
    host.Console().Flush();
    host.Console().Error().Write(message);
    return ExitStatus::Failed;
  };
  try {
    engine.AddCode(code);
    return ExitStatus::Done;
  } catch (const vbscript::Quit& quit) {
    return static_cast<ExitStatus>(quit.code);
  } catch (const automation::Error& error) {
    if (Interrupt::IsRequested()) return ExitStatus::Cancelled;
    if (error.Number() == Engine::kTimedOut) {
      return fail(
          fmt::format("Script execution time was exceeded on script \"{}\".\n"
                      "Script execution was terminated.\n",
                      usage.file));
    }
    return fail(Described(usage.file, engine.LastError()));
  }
}

}  // namespace

ExitStatus ScriptCommand(Session& session, const ScriptArguments& arguments) {
  const ScriptUsage usage = ScriptUsage::Parse(arguments.words);
  session.Library();
  const platform::Platform& ports = Ports();
  const std::string path =
      vbscript::dospath::Absolute(session.DosPath(usage.file), ports.files->CurrentFolder());
  const std::u16string code = DecodeScript(ReadScript(usage.file, path));

  CommandScriptHost host(ports, usage.isInteractive, [&session] { session.Database().RequireOrMake(); });
  Engine engine(host);
  const InterruptedScript interruptible(engine);
  const bool hasTimeout = usage.timeoutSeconds > 0;
  engine.SetTimeout(hasTimeout ? usage.timeoutSeconds * kMillisecondsPerSecond : Engine::kNoTimeout);
  const vbscript::ScriptFacts facts{path, session.DosPath(ProgramPath()), usage.arguments,
                                    usage.isInteractive, usage.timeoutSeconds};
  engine.AddObject("WScript",
                   automation::Make<vbscript::WScript>(engine.SharedContext(), facts,
                                                       [&engine](const std::string& prefix) {
                                                         return std::make_shared<vbscript::ScriptEventSink>(
                                                             engine, prefix);
                                                       }),
                   false);
  return RunScript(engine, code, usage, host);
}

}  // namespace hearthmake::host
