#include "build/BuildConnection.hpp"

#include <vector>

#include "project/Project.hpp"
#include "sourcecontrol/SSProject.hpp"

namespace hearthmake {

namespace {

using automation::Variant;

Variant ObjectOf(automation::Object* object) {
  return Variant::FromObject(automation::Ref<automation::Object>(object));
}

}  // namespace

void BuildConnection::Raise(const char* event, std::span<Variant> values) {
  const auto sink = m_sink;  // a handler may take the connection away
  std::vector<Variant> arguments;
  for (Variant& value : values) arguments.push_back(Variant::ByReference(&value));
  sink->Raise(event, arguments);
}

bool BuildConnection::RaiseWithFlag(const char* event, Variant about, bool flag) {
  Variant values[] = {std::move(about), Variant::FromBoolean(flag)};
  Raise(event, values);
  return automation::ToBoolean(values[1]);
}

void BuildConnection::WillCompile(Project& objProject, bool& bCancel) {
  bCancel = RaiseWithFlag("WillCompile", ObjectOf(&objProject), bCancel);
}

void BuildConnection::BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) {
  Variant values[] = {ObjectOf(objProject), Variant::FromText(strMessage),
                      Variant::FromBoolean(bCompileError)};
  Raise("BuildFaild", values);
}

void BuildConnection::BuildCancled(Project& objProject) {
  Variant values[] = {ObjectOf(&objProject)};
  Raise("BuildCancled", values);
}

void BuildConnection::GettingLatestVersion(SSProject& objSSProject, bool& bCancel) {
  bCancel = RaiseWithFlag("GettingLatestVersion", ObjectOf(&objSSProject), bCancel);
}

void BuildConnection::MTSEvent(const std::string& strInfo, bool& Cancel) {
  Cancel = RaiseWithFlag("MTSEvent", Variant::FromText(strInfo), Cancel);
}

void BuildConnection::ProjectAdded(Project& NewProject) {
  Variant values[] = {ObjectOf(&NewProject)};
  Raise("ProjectAdded", values);
}

void BuildConnection::BuildComplete() { Raise("BuildComplete", {}); }

void BuildConnection::Error(const Variant& strMessage) {
  Variant values[] = {strMessage};
  Raise("Error", values);
}

void BuildConnection::ProjectCompiled(Project& objProject) {
  Variant values[] = {ObjectOf(&objProject)};
  Raise("ProjectCompiled", values);
}

void BuildConnection::BuildStart(bool bResume) {
  Variant values[] = {Variant::FromBoolean(bResume)};
  Raise("BuildStart", values);
}

void BuildConnection::ScriptNotify(const std::string& strMessage, Variant& Cancel, std::int32_t Progress) {
  Variant arguments[] = {Variant::FromText(strMessage), Variant::ByReference(&Cancel),
                         Variant::FromLong(Progress)};
  const auto sink = m_sink;
  sink->Raise("ScriptNotify", arguments);
}

}  // namespace hearthmake
