#pragma once

#include <cstdint>
#include <string>

#include "automation/FixedText.hpp"
#include "deployment/Enumerations.hpp"
#include "deployment/PackageDefinition.hpp"
#include "platform/ComPlusCatalog.hpp"

namespace hearthmake {

// The definition of a COM+ application. CreatePackage sets the values of the application of that name and
// refreshes its components; one that is missing, or that CreateNew removes first, is added with the
// components of its projects. With an ExportPath it is exported then.
class COMApplication final : public PackageDefinition {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  COMApplication();

  // How callers are authenticated; 0 until set.
  AutenticationLevels Autentication() const {
    return static_cast<AutenticationLevels>(Record().autentication);
  }
  void SetAutentication(AutenticationLevels value) {
    SetAutenticationColumn(static_cast<std::int32_t>(value));
  }
  // Removes an application of that name first, instead of keeping it.
  bool CreateNew() const { return m_own.createNew; }
  void SetCreateNew(bool value) { Assign(m_own.createNew, value); }
  // Kept for hosts; catalogs are not told.
  bool IsSystem() const { return m_own.isSystem; }
  void SetIsSystem(bool value) { Assign(m_own.isSystem, value); }
  std::int32_t AccessChecksLevel() const { return m_own.accessChecksLevel; }
  void SetAccessChecksLevel(std::int32_t value) { Assign(m_own.accessChecksLevel, value); }
  bool ApplicationAccessChecksEnabled() const { return m_own.applicationAccessChecksEnabled; }
  void SetApplicationAccessChecksEnabled(bool value) { Assign(m_own.applicationAccessChecksEnabled, value); }
  bool CRMEnabled() const { return m_own.crmEnabled; }
  void SetCRMEnabled(bool value) { Assign(m_own.crmEnabled, value); }
  bool GigSupportEnabled() const { return m_own.gigSupportEnabled; }
  void SetGigSupportEnabled(bool value) { Assign(m_own.gigSupportEnabled, value); }
  std::int32_t AuthenticationCapability() const { return m_own.authenticationCapability; }
  void SetAuthenticationCapability(std::int32_t value) { Assign(m_own.authenticationCapability, value); }
  bool QueuingEnabled() const { return m_own.queuingEnabled; }
  void SetQueuingEnabled(bool value) { Assign(m_own.queuingEnabled, value); }
  bool QueueListenerEnabled() const { return m_own.queueListenerEnabled; }
  void SetQueueListenerEnabled(bool value) { Assign(m_own.queueListenerEnabled, value); }
  bool EventsEnabled() const { return m_own.eventsEnabled; }
  void SetEventsEnabled(bool value) { Assign(m_own.eventsEnabled, value); }
  ImpersonationLevels ImpersonationLevel() const { return m_own.impersonationLevel; }
  void SetImpersonationLevel(ImpersonationLevels value) { Assign(m_own.impersonationLevel, value); }
  // Of the server process, up to 255 characters.
  std::string CommandLine() const { return m_own.commandLine.Get(); }
  void SetCommandLine(const std::string& value) { Assign(m_own.commandLine, value); }
  // Up to 50 characters.
  std::string ApplicationProxyServerName() const { return m_own.applicationProxyServerName.Get(); }
  void SetApplicationProxyServerName(const std::string& value) {
    Assign(m_own.applicationProxyServerName, value);
  }
  // Up to 255 characters.
  std::string CRMLogFile() const { return m_own.crmLogFile.Get(); }
  void SetCRMLogFile(const std::string& value) { Assign(m_own.crmLogFile, value); }
  COMApplicationExportOptions ExportOptions() const { return m_own.exportOptions; }
  void SetExportOptions(COMApplicationExportOptions value) { Assign(m_own.exportOptions, value); }
  // Kept for hosts; catalogs are not told.
  bool ApplicationProxy() const { return m_own.applicationProxy; }
  void SetApplicationProxy(bool value) { Assign(m_own.applicationProxy, value); }
  // Stops the application's process. Every error is ignored: one that is not installed, or does not run, is
  // as good as stopped.
  void ShoutDown();

 private:
  // The columns that an MTS package leaves alone.
  struct OwnRecord {
    bool isSystem = false;
    std::int32_t accessChecksLevel = 0;
    bool applicationAccessChecksEnabled = false;
    automation::FixedText<255> commandLine;
    ImpersonationLevels impersonationLevel = ImpersonationLevels::Impersonate;
    bool crmEnabled = false;
    automation::FixedText<255> crmLogFile;
    bool gigSupportEnabled = false;
    std::int32_t authenticationCapability = 0;
    bool queuingEnabled = false;
    bool queueListenerEnabled = false;
    bool eventsEnabled = false;
    bool applicationProxy = false;
    automation::FixedText<50> applicationProxyServerName;
    COMApplicationExportOptions exportOptions = COMApplicationExportOptions::ExportApplication;
    bool createNew = false;
  };
  // The application at work in its catalog.
  struct Opened;

  void Deploy() override;
  void LoadOwn(const platform::Recordset& row) override;
  void StoreOwn(platform::Recordset& row) const override;
  void KeepOwn() override { m_ownSnapshot = m_own; }
  void RestoreOwn() override { m_own = m_ownSnapshot; }

  Opened Open() const;
  void SetValues(platform::CatalogObject& object) const;

  OwnRecord m_own;
  OwnRecord m_ownSnapshot;
};

}  // namespace hearthmake
