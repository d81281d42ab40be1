#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "deployment/COMApplication.hpp"
#include "deployment/COMApplications.hpp"
#include "deployment/MTSPackage.hpp"
#include "deployment/MTSPackages.hpp"
#include "foundation/modDatabase.hpp"
#include "support/BuildScene.hpp"
#include "support/RecordingCatalogs.hpp"
#include "support/RecordingWorkspace.hpp"

namespace hearthmake::support {

// What tests of both kinds of definitions need to know of one.
template <class T>
struct KindOf;

template <>
struct KindOf<MTSPackage> {
  static MTSPackages& In(Build& build) { return build.MTSPackages(); }
  static constexpr const char* kClass = "MTSPackage";
  static constexpr const char* kSaveSource = "MTSPackage.Save";
};

template <>
struct KindOf<COMApplication> {
  static COMApplications& In(Build& build) { return build.COMApplications(); }
  static constexpr const char* kClass = "COMApplication";
  static constexpr const char* kSaveSource = "COMAPPLICATION.Save";
};

// Writes events into the log between the calls of the catalog.
class LoggedEvents final : public RecordingEvents {
 public:
  explicit LoggedEvents(StepLog& log) : m_log(log) {}
  void MTSEvent(const std::string& strInfo, bool& Cancel) override {
    m_log.Note("MTSEvent " + strInfo);
    RecordingEvents::MTSEvent(strInfo, Cancel);
  }

 private:
  StepLog& m_log;
};

// A stored build on a workbench with component catalogs in memory.
class DeployScene : public BuildScene {
 public:
  explicit DeployScene(std::int32_t majorVersion = 10) : BuildScene(majorVersion) {
    platform::Platform ports = apartment->Ports();
    ports.mtsCatalogs = mts;
    ports.comPlusCatalogs = comPlus;
    ports.events = std::make_shared<RecordingPump>(log);
    workspace = std::make_shared<RecordingWorkspace>(ports.workspace);
    ports.workspace = workspace;
    build = nullptr;
    apartment = nullptr;
    apartment = std::make_unique<Apartment>(std::move(ports));
    build = Loaded(1);
    build->AddSink(events);
  }

  // A stored definition of the scene's build.
  template <class T>
  automation::Ref<T> NewOf(const std::string& name) const {
    return NewIn<T>(*build, name);
  }
  template <class T>
  static automation::Ref<T> NewIn(Build& build, const std::string& name) {
    auto definition = KindOf<T>::In(build).Create();
    definition->BeginEdit();
    definition->SetName(name);
    definition->ApplyEdit();
    return definition;
  }
  // The same row, read anew.
  template <class T>
  automation::Ref<T> Again(std::int32_t id) const {
    const auto again = Loaded(build->Id());
    return KindOf<T>::In(*again).Item(automation::Variant::FromText(std::to_string(id)));
  }
  // A stored project that goes into the definition.
  automation::Ref<Project> AddTo(std::int32_t id, const std::string& name) const {
    auto project = Add(name);
    project->BeginEdit();
    project->SetMtsPackageId(id);
    project->ApplyEdit();
    return project;
  }
  static platform::Database& Database() { return *modDatabase::GetDatabase(); }

  StepLog log;
  std::shared_ptr<RecordingWorkspace> workspace;
  std::shared_ptr<RecordingMtsCatalogs> mts = std::make_shared<RecordingMtsCatalogs>(log);
  std::shared_ptr<RecordingComPlusCatalogs> comPlus = std::make_shared<RecordingComPlusCatalogs>(log);
  LoggedEvents events{log};
};

// A definition "Server" that two projects go into.
template <class T>
class ServerScene : public DeployScene {
 public:
  ServerScene() {
    server = NewOf<T>("Server");
    AddTo(server->Id(), "Lib");
    Add("Elsewhere");
    AddTo(server->Id(), "Remote")->SetRemoteServerFiles(true);
    log.Clear();
    events.heard.clear();
  }
  bool Took(const std::string& step) const {
    return std::find(log.steps.begin(), log.steps.end(), step) != log.steps.end();
  }
  automation::Ref<T> server;
};

}  // namespace hearthmake::support
