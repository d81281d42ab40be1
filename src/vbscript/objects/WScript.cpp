#include "vbscript/objects/WScript.hpp"

#include <algorithm>

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/Quit.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/StandardObjects.hpp"
#include "vbscript/objects/StandardStreams.hpp"
#include "vbscript/objects/SystemError.hpp"
#include "vbscript/objects/WScriptArguments.hpp"
#include "vbscript/objects/Waiting.hpp"
#include "vbscript/values/Conversions.hpp"

namespace hearthmake::vbscript {

using automation::Ref;
using automation::Variant;
using automation::VariantType;

namespace {

// Outside of what a declaration hands out.
constexpr std::int32_t kEchoMember = 0x4543484F;
constexpr std::int32_t kBuild = 16384;

// As the original prints values: not as CStr, for Null and Booleans.
std::u16string EchoText(const Variant& value) {
  switch (value.Target().Type()) {
    case VariantType::Null: return u"null";
    case VariantType::Boolean: return value.Target().AsBoolean() ? u"-1" : u"0";
    default: return ToText16(value);
  }
}

bool IsEcho(std::string_view name) {
  constexpr std::string_view kEcho = "echo";
  return std::equal(name.begin(), name.end(), kEcho.begin(), kEcho.end(),
                    [](char a, char b) { return (a | 0x20) == b; });
}

}  // namespace

WScript::WScript(Context& context, ScriptFacts facts, SinkFactory sinkFactory)
    : m_context(context), m_facts(std::move(facts)), m_sinkFactory(std::move(sinkFactory)) {}

WScript::~WScript() {
  for (const Connection& connection : m_connections) connection.source->Unadvise(connection.number);
}

const automation::Interface& WScript::Declaration() const {
  static const automation::Interface kDeclaration =
      automation::Declare("Object", "IHost", "", "")
          .byDefault()
          .get<&WScript::Name>("Name")
          .get<&WScript::Application>("Application")
          .get<&WScript::FullName>("FullName")
          .get<&WScript::Path>("Path")
          .get<&WScript::Interactive>("Interactive")
          .let<&WScript::SetInteractive>("Interactive", {"Value"})
          .method<&WScript::Quit>("Quit", {"ExitCode"})
          .get<&WScript::ScriptName>("ScriptName")
          .get<&WScript::ScriptFullName>("ScriptFullName")
          .get<&WScript::Arguments>("Arguments")
          .get<&WScript::Version>("Version")
          .get<&WScript::BuildVersion>("BuildVersion")
          .get<&WScript::Timeout>("Timeout")
          .let<&WScript::SetTimeout>("Timeout", {"Seconds"})
          .method<&WScript::CreateObject>("CreateObject", {"ProgID", "Prefix"})
          .method<&WScript::GetObject>("GetObject", {"PathName", "ProgID", "Prefix"})
          .method<&WScript::ConnectObject>("ConnectObject", {"Object", "Prefix"})
          .method<&WScript::DisconnectObject>("DisconnectObject", {"Object"})
          .method<&WScript::Sleep>("Sleep", {"Time"})
          .get<&WScript::StdIn>("StdIn")
          .get<&WScript::StdOut>("StdOut")
          .get<&WScript::StdErr>("StdErr")
          .build();
  return kDeclaration;
}

std::optional<std::int32_t> WScript::FindMember(std::string_view name) const {
  if (IsEcho(name)) return kEchoMember;
  return Object::FindMember(name);
}

Variant WScript::Invoke(std::int32_t member, automation::InvokeKind kind, std::span<Variant> arguments) {
  if (member != kEchoMember) return Object::Invoke(member, kind, arguments);
  if (kind == automation::InvokeKind::Let || kind == automation::InvokeKind::Set) {
    RaiseRuntime(number::kMemberNotFound);
  }
  Echo(arguments);
  return {};
}

void WScript::Echo(std::span<const Variant> values) {
  std::u16string line;
  for (const Variant& value : values) {
    if (&value != values.data()) line += u' ';
    line += EchoText(value);
  }
  line += u'\n';
  StdOut()->Writer().Write(line);
}

void WScript::Quit(std::optional<std::int32_t> code) { throw vbscript::Quit{code.value_or(0)}; }

void WScript::Sleep(std::int32_t milliseconds) {
  using std::chrono::steady_clock;
  if (milliseconds < 0) RaiseRuntime(number::kInvalidProcedureCall);
  const auto end = steady_clock::now() + std::chrono::milliseconds(milliseconds);
  platform::Clock& clock = *m_context.host.Platform().clock;
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - steady_clock::now());
    if (left <= left.zero()) break;
    clock.Sleep(std::min(left, kWaitSlice));
    LookAtTime(m_context.budget);
  }
}

std::string WScript::Path() const { return dospath::ParentFolderName(m_facts.hostPath); }

std::int32_t WScript::BuildVersion() const { return kBuild; }

std::string WScript::ScriptName() const { return dospath::FileName(m_facts.scriptPath); }

void WScript::SetTimeout(std::int32_t seconds) {
  constexpr std::int64_t kMillisecondsPerSecond = 1000;
  if (seconds < 0) RaiseRuntime(number::kInvalidProcedureCall);
  m_facts.timeoutSeconds = seconds;
  m_context.budget.StartTimeout(seconds == 0 ? Budget::kNoLimit : seconds * kMillisecondsPerSecond);
}

Ref<WScriptArguments> WScript::Arguments() {
  return automation::Make<WScriptArguments>(m_context.host, m_facts.arguments);
}

Ref<TextStream> WScript::StdIn() { return Stream(m_input, 0); }
Ref<TextStream> WScript::StdOut() { return Stream(m_output, 1); }
Ref<TextStream> WScript::StdErr() { return Stream(m_error, 2); }

Ref<TextStream> WScript::Stream(Ref<TextStream>& slot, std::int32_t which) {
  if (!slot) slot = OpenStandardStream(m_context, static_cast<StandardStream>(which));
  return slot;
}

Ref<automation::Object> WScript::CreateObject(const std::string& progId, std::optional<std::string> prefix) {
  Ref<automation::Object> object = m_context.host.CreateObject(progId);
  if (!object) object = CreateStandardObject(progId, m_context);
  if (!object) {
    automation::Raise(kExceptionInMember, "WScript.CreateObject",
                      "Could not locate automation class named \"" + progId + "\".");
  }
  if (prefix && !prefix->empty()) ConnectObject(*object, *prefix);
  return object;
}

Ref<automation::Object> WScript::GetObject(const std::string& path, std::optional<std::string> progId,
                                           std::optional<std::string> prefix) {
  Ref<automation::Object> object = m_context.host.GetObject(path, progId.value_or(""));
  if (!object) RaiseRuntime(number::kNoSuchAutomationClass);
  if (prefix && !prefix->empty()) ConnectObject(*object, *prefix);
  return object;
}

void WScript::ConnectObject(automation::Object& object, const std::string& prefix) {
  auto* source = dynamic_cast<automation::EventSource*>(&object);
  if (source == nullptr) {
    automation::Raise(kExceptionInMember, "WScript.ConnectObject", "Could not connect object.");
  }
  const Ref<automation::Object> kept(&object);
  m_connections.push_back({kept, source, source->Advise(m_sinkFactory(prefix))});
}

void WScript::DisconnectObject(automation::Object& object) {
  const auto first = std::stable_partition(m_connections.begin(), m_connections.end(),
                                           [&](const Connection& c) { return c.object.Get() != &object; });
  const std::vector<Connection> ended(first, m_connections.end());
  m_connections.erase(first, m_connections.end());
  for (const Connection& connection : ended) connection.source->Unadvise(connection.number);
}

}  // namespace hearthmake::vbscript
