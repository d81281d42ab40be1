#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/Events.hpp"
#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"
#include "vbscript/objects/TextStream.hpp"

namespace hearthmake::vbscript {

class WScriptArguments;

// What a script host tells its script. Paths are DOS paths.
struct ScriptFacts {
  std::string scriptPath;
  std::string hostPath;  // of the program that runs it
  std::vector<std::string> arguments;
  bool isInteractive = true;
  std::int32_t timeoutSeconds = 0;  // 0: none
};

// The object WScript, which a host gives its script by that name.
class WScript final : public automation::Object {
 public:
  // Makes what hears events and calls the script's procedures with a prefix.
  using SinkFactory = std::function<std::shared_ptr<automation::EventSink>(const std::string& prefix)>;

  // The context outlives the object. The host must have standard streams.
  WScript(Context& context, ScriptFacts facts, SinkFactory sinkFactory);
  const automation::Interface& Declaration() const override;
  // Echo takes any number of arguments, which no declaration can say.
  std::optional<std::int32_t> FindMember(std::string_view name) const override;
  automation::Variant Invoke(std::int32_t member, automation::InvokeKind kind,
                             std::span<automation::Variant> arguments) override;

  // The values with blanks between them and a line end. Booleans are numbers here, as the original has it.
  void Echo(std::span<const automation::Variant> values);
  // Ends the script; no error handler sees it.
  void Quit(std::optional<std::int32_t> code);
  void Sleep(std::int32_t milliseconds);

  std::string Name() const { return "Windows Script Host"; }
  std::string FullName() const { return m_facts.hostPath; }
  std::string Path() const;
  std::string Version() const { return "5.8"; }
  std::int32_t BuildVersion() const;
  std::string ScriptName() const;
  std::string ScriptFullName() const { return m_facts.scriptPath; }
  bool Interactive() const { return m_facts.isInteractive; }
  void SetInteractive(bool isInteractive) { m_facts.isInteractive = isInteractive; }
  // Seconds that the script may take, from when they are set; 0: no end. Error 5 for a negative number.
  std::int32_t Timeout() const { return m_facts.timeoutSeconds; }
  void SetTimeout(std::int32_t seconds);
  automation::Ref<automation::Object> Application() { return automation::Ref<automation::Object>(this); }
  automation::Ref<WScriptArguments> Arguments();
  automation::Ref<TextStream> StdIn();
  automation::Ref<TextStream> StdOut();
  automation::Ref<TextStream> StdErr();

  // With a prefix, connected as by ConnectObject.
  automation::Ref<automation::Object> CreateObject(const std::string& progId,
                                                   std::optional<std::string> prefix);
  automation::Ref<automation::Object> GetObject(const std::string& path, std::optional<std::string> progId,
                                                std::optional<std::string> prefix);
  // From now on event E of the object calls the script's procedure <prefix>E, where there is one.
  void ConnectObject(automation::Object& object, const std::string& prefix);
  void DisconnectObject(automation::Object& object);

 private:
  // An object is kept alive while it is connected.
  struct Connection {
    automation::Ref<automation::Object> object;
    automation::EventSource* source;
    std::uint32_t number;
  };

  ~WScript() override;
  automation::Ref<TextStream> Stream(automation::Ref<TextStream>& slot, std::int32_t which);

  Context& m_context;
  ScriptFacts m_facts;
  SinkFactory m_sinkFactory;
  std::vector<Connection> m_connections;
  automation::Ref<TextStream> m_input;
  automation::Ref<TextStream> m_output;
  automation::Ref<TextStream> m_error;
};

}  // namespace hearthmake::vbscript
