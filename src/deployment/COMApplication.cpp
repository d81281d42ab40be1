#include "deployment/COMApplication.hpp"

#include <limits>
#include <memory>

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake {

namespace {

using automation::Variant;

constexpr PackageErrorSources kSources = {
    .name = "COMApplication.Name",
    .beginEdit = "COMApplication.BeginEdit",
    .cancelEdit = "COMApplication.CancelEdit",
    .save = "COMAPPLICATION.Save",  // as hosts have always seen it
};

// Asks the catalog to replace a file that is there.
constexpr std::int32_t kOverwrite = 4;

std::int32_t WithOverwrite(COMApplicationExportOptions options) {
  const auto value = static_cast<std::int32_t>(options);
  if (value > std::numeric_limits<std::int32_t>::max() - kOverwrite)
    automation::Raise(automation::RuntimeError::Overflow, "COMApplication.CreatePackage");
  return value + kOverwrite;
}

}  // namespace

COMApplication::COMApplication() : PackageDefinition(kSources) {}

// --- the row ---

void COMApplication::LoadOwn(const platform::Recordset& row) {
  // Null are the columns of a row that was written as an MTS package: they have the values of a new
  // application.
  OwnRecord own;
  own.createNew = row.GetBoolean("CreateFlags");
  own.isSystem = row.GetBoolean("IsSystem");
  own.accessChecksLevel = row.GetLong("AccessChecksLevel");
  own.applicationAccessChecksEnabled = row.GetBoolean("ApplicationAccessChecksEnabled");
  own.commandLine = row.GetText("CommandLine");
  own.impersonationLevel = static_cast<ImpersonationLevels>(
      LongOr(row, "ImpersonationLevel", static_cast<std::int32_t>(own.impersonationLevel)));
  own.crmEnabled = row.GetBoolean("CRMEnabled");
  own.authenticationCapability = row.GetLong("AuthenticationCapability");
  own.gigSupportEnabled = row.GetBoolean("GigSupportEnabled");
  own.queuingEnabled = row.GetBoolean("QueuingEnabled");
  own.queueListenerEnabled = row.GetBoolean("QueueListenerEnabled");
  own.eventsEnabled = row.GetBoolean("EventsEnabled");
  own.applicationProxy = row.GetBoolean("ApplicationProxy");
  own.applicationProxyServerName = row.GetText("ApplicationProxyServerName");
  own.crmLogFile = row.GetText("CRMLogFile");
  own.exportOptions = static_cast<COMApplicationExportOptions>(row.GetLong("ExportFlags"));
  m_own = own;
}

void COMApplication::StoreOwn(platform::Recordset& row) const {
  row.SetBoolean("CreateFlags", m_own.createNew);
  row.SetBoolean("IsSystem", m_own.isSystem);
  row.SetLong("AccessChecksLevel", m_own.accessChecksLevel);
  row.SetBoolean("ApplicationAccessChecksEnabled", m_own.applicationAccessChecksEnabled);
  row.SetText("CommandLine", m_own.commandLine.Get());
  row.SetLong("ImpersonationLevel", static_cast<std::int32_t>(m_own.impersonationLevel));
  row.SetBoolean("CRMEnabled", m_own.crmEnabled);
  row.SetLong("AuthenticationCapability", m_own.authenticationCapability);
  row.SetBoolean("GigSupportEnabled", m_own.gigSupportEnabled);
  row.SetBoolean("QueuingEnabled", m_own.queuingEnabled);
  row.SetBoolean("QueueListenerEnabled", m_own.queueListenerEnabled);
  row.SetBoolean("EventsEnabled", m_own.eventsEnabled);
  row.SetBoolean("ApplicationProxy", m_own.applicationProxy);
  row.SetText("ApplicationProxyServerName", m_own.applicationProxyServerName.Get());
  row.SetText("CRMLogFile", m_own.crmLogFile.Get());
  row.SetLong("ExportFlags", static_cast<std::int32_t>(m_own.exportOptions));
}

// --- the catalog ---

struct COMApplication::Opened {
  std::unique_ptr<platform::ComPlusCatalog> catalog;
  std::shared_ptr<platform::CatalogCollection> applications;
  std::shared_ptr<platform::CatalogObject> object;
  bool isAdded = false;
};

COMApplication::Opened COMApplication::Open() const {
  Opened opened;
  opened.catalog = Ports().comPlusCatalogs->Create();
  opened.applications = opened.catalog->GetCollection("Applications");
  opened.applications->Populate();
  const std::int32_t position = PositionIn(*opened.applications);
  if (position != 0 && !CreateNew()) {
    opened.object = opened.applications->Item(position - 1);
    return opened;
  }
  if (position != 0) {
    Tell("Removing COM+ Application: " + Name());
    opened.applications->Remove(position - 1);
  }
  opened.isAdded = true;
  Tell("Adding COM+ Application: " + Name());
  opened.object = opened.applications->Add();
  opened.applications->SaveChanges();
  return opened;
}

void COMApplication::SetValues(platform::CatalogObject& object) const {
  SetCommonValues(object);
  object.SetValue("Authentication", Variant::FromLong(static_cast<std::int32_t>(Autentication())));
  // In the caller's process, or in one of its own.
  object.SetValue("Activation", Variant::FromText(LibraryPackage() ? "0" : "1"));
  object.SetValue("CRMEnabled", Variant::FromBoolean(CRMEnabled()));
  object.SetValue("AuthenticationCapability", Variant::FromLong(AuthenticationCapability()));
  object.SetValue("3GigSupportEnabled", Variant::FromBoolean(GigSupportEnabled()));
  object.SetValue("QueuingEnabled", Variant::FromBoolean(QueuingEnabled()));
  object.SetValue("QueueListenerEnabled", Variant::FromBoolean(QueueListenerEnabled()));
  // Once more, on purpose: it has always stood here, too.
  object.SetValue("QueuingEnabled", Variant::FromBoolean(QueuingEnabled()));
  object.SetValue("EventsEnabled", Variant::FromBoolean(EventsEnabled()));
  object.SetValue("ApplicationAccessChecksEnabled", Variant::FromBoolean(ApplicationAccessChecksEnabled()));
  object.SetValue("AccessChecksLevel", Variant::FromLong(AccessChecksLevel()));
  object.SetValue("CommandLine", Variant::FromText(CommandLine()));
  object.SetValue("ImpersonationLevel", Variant::FromLong(static_cast<std::int32_t>(ImpersonationLevel())));
  object.SetValue("CRMLogFile", Variant::FromText(CRMLogFile()));
  object.SetValue("ApplicationProxyServerName", Variant::FromText(ApplicationProxyServerName()));
  SetIdentity(object);
}

void COMApplication::Deploy() {
  const Opened opened = Open();
  SetValues(*opened.object);
  opened.applications->SaveChanges();
  if (opened.isAdded) {
    InstallProjects(" to COM+ Application " + Name(), [&](Project& project) {
      opened.catalog->InstallComponent(Name(), project.FullPath32(), project.RemoteServerFilePath(), "");
    });
  } else {
    Tell("Refreshing  COM+ Application " + Name());  // two blanks, which hosts look for
    opened.catalog->RefreshComponents();
  }
  opened.applications->SaveChanges();

  if (ExportPath().empty()) return;
  Ports().events->DeliverPending();
  Tell("Exporting COM+ Application: " + Name());
  opened.catalog->ExportApplication(Name(), ExportPath(), WithOverwrite(ExportOptions()));
}

void COMApplication::ShoutDown() {
  try {
    Ports().comPlusCatalogs->Create()->ShutdownApplication(Name());
  } catch (const automation::Error&) {
    return;
  }
}

}  // namespace hearthmake
