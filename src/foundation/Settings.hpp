#pragma once

#include <cstdint>
#include <string>

#include "automation/FixedText.hpp"
#include "automation/Object.hpp"

namespace hearthmake {

// The per-user options of the library, kept in the settings store under application "Hearthmake",
// section "VB", and loaded when the object is made. A key there that names no option, or a value that
// can't be converted, makes the creation fail with error 438 or 13.
class Settings final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  Settings();

  // Path of vb6.exe, up to 200 characters. When empty, the one that opens project files according to the
  // registry, else "vb6.exe", which the search path finds.
  std::string VBExe();
  void SetVBExe(const std::string& value);
  // Compile again without compatibility when a compile breaks it.
  bool SetProjectCompatible() const { return m_record.setProjectCompatible; }
  void SetSetProjectCompatible(bool value);
  // In milliseconds; -1 for no time-out.
  std::int32_t ScriptTimeOut() const { return m_record.scriptTimeOut; }
  void SetScriptTimeOut(std::int32_t value);
  bool UseOriginalVbp() const { return m_record.useOriginalVbp; }
  void SetUseOriginalVbp(bool value);
  bool TakeLatestFromVSS() const { return m_record.takeLatestFromVSS; }
  void SetTakeLatestFromVSS(bool value);
  bool MakeFilesWriteable() const { return m_record.makeFilesWriteable; }
  void SetMakeFilesWriteable(bool value);
  bool AskForMTSPackage() const { return m_record.askForMTSPackage; }
  void SetAskForMTSPackage(bool value);
  bool RunScripts() const { return m_record.runScripts; }
  void SetRunScripts(bool value);
  bool CreateReport() const { return m_record.createReport; }
  void SetCreateReport(bool value);
  // The folder for the build report, up to 255 characters, always with a final backslash. A folder that
  // is missing or holds no file is replaced by the library's own.
  std::string BuildReport();
  void SetBuildReport(const std::string& value);
  bool IgnoreScriptError() const { return m_record.ignoreScriptError; }
  void SetIgnoreScriptError(bool value);

  // The edit cycle; errors 1004 "Not in edit mode" and "Already in edit mode". ApplyEdit stores changed
  // values and leaves the object in edit mode, until CancelEdit; hosts count on both.
  void ApplyEdit();
  void CancelEdit();
  void BeginEdit();

 private:
  struct Record {
    bool dirty = false;
    automation::FixedText<200> vbExe;
    bool setProjectCompatible = false;
    bool useOriginalVbp = false;
    bool takeLatestFromVSS = false;
    bool makeFilesWriteable = false;
    bool askForMTSPackage = false;
    std::int32_t scriptTimeOut = 0;
    bool runScripts = false;
    automation::FixedText<255> buildReport;
    bool createReport = false;
    bool ignoreScriptError = false;
  };

  template <class T, class V>
  void Assign(T& field, const V& value) {
    field = value;
    m_record.dirty = true;
  }
  void LoadFromStore();
  void SaveToStore();

  Record m_record;
  Record m_snapshot;
  bool m_editing = false;
};

}  // namespace hearthmake
