#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/Error.hpp"
#include "automation/FixedText.hpp"
#include "automation/Object.hpp"
#include "automation/OleDate.hpp"
#include "build/IReportItem.hpp"
#include "foundation/clFile.hpp"
#include "foundation/mTypes.hpp"
#include "platform/Database.hpp"
#include "platform/FileSystem.hpp"
#include "platform/TypeLibReader.hpp"
#include "project/Enumerations.hpp"
#include "project/References.hpp"
#include "project/clVBProject.hpp"

namespace hearthmake {

class Build;
class Projects;

// One Visual Basic 6 project (one .vbp file) of a build: the settings of its file, what only the build
// knows of it, its references, and the result of its last compile.
//
// Most properties mirror a setting of the file. Reading one gives what the build has stored; setting one
// changes the record in memory, ApplyEdit stores it and UpdateVBP or Compile writes it to the file.
// Errors of validation are number 45 unless said otherwise, and LastErrorMessage keeps their text.
class Project final : public automation::Object, public ReportItem {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  Project();

  // Size of the binary in bytes; 0 when there is none.
  std::int32_t FileSizeExe32();
  // Key of the row; 0 until the first save.
  std::int32_t Id() const { return m_record.id; }
  // The names of the settings that a project file and a build share.
  SettingNames& Properties() const;
  std::string FileName() const { return m_file.Name(); }
  // Full path of the project file. Must end in "vbp" ("This is not a project file. No vbp extention") and,
  // with the temporary folder's path and 15 more characters, stay below 256 (beCommandLineToLong,
  // "Project path is too long.").
  std::string ProjectPath() const;
  void SetProjectPath(const std::string& value);
  // The folder to which the binary is distributed; up to 255 characters.
  std::string CopyPath() const { return m_record.copyPath.Get(); }
  void SetCopyPath(const std::string& value);
  // Whether a build compiles this project.
  bool CompileMe() const { return m_record.compile; }
  void SetCompileMe(bool value);
  std::string Name() const { return Quoted(Setting::Name); }
  // The output folder: absolute, relative to the project file's folder, or empty for that folder.
  std::string Path32() const { return Quoted(Setting::Path32); }
  void SetPath32(const std::string& value);
  // Version numbers: 0 to 9999, "Version number must be in range 0 to 9999".
  std::int16_t MajorVer() const { return Number(Setting::MajorVer); }
  void SetMajorVer(std::int16_t value) { SetVersion(Setting::MajorVer, value, "Project.MajorVer"); }
  std::int16_t MinorVer() const { return Number(Setting::MinorVer); }
  void SetMinorVer(std::int16_t value) { SetVersion(Setting::MinorVer, value, "Project.MinorVer"); }
  std::int16_t RevisionVer() const { return Number(Setting::RevisionVer); }
  void SetRevisionVer(std::int16_t value) { SetVersion(Setting::RevisionVer, value, "Project.RevisionVer"); }
  // The binary that the next compile stays compatible with.
  std::string CompatibleEXE32() const { return Quoted(Setting::CompatibleEXE32); }
  void SetCompatibleEXE32(const std::string& value) { SetQuoted(Setting::CompatibleEXE32, value); }
  CompatibleModes CompatibleMode() const;
  void SetCompatibleMode(CompatibleModes value);
  std::string HelpContextID() const { return Quoted(Setting::HelpContextID); }
  void SetHelpContextID(const std::string& value) { SetQuoted(Setting::HelpContextID, value); }
  std::string Command32() const { return Quoted(Setting::Command32); }
  void SetCommand32(const std::string& value) { SetQuoted(Setting::Command32, value); }
  // File name of the binary; without one, that of the project file with the extension of its type.
  std::string ExeName32() const;
  void SetExeName32(const std::string& value);
  std::string Title() const { return Quoted(Setting::Title); }
  void SetTitle(const std::string& value) { SetQuoted(Setting::Title, value); }
  // Error 45, source "Project.ProjectType", "Unknown project type".
  ProjectTypes ProjectType() const;
  std::string HelpFile() const { return Quoted(Setting::HelpFile); }
  void SetHelpFile(const std::string& value) { SetQuoted(Setting::HelpFile, value); }
  std::string Startup() const { return Quoted(Setting::Startup); }
  bool FavorPentiumPro() const { return Flag(Setting::FavorPentiumPro, kMinusOne); }
  void SetFavorPentiumPro(bool value) { SetFlag(Setting::FavorPentiumPro, value, kMinusOne); }
  OptimizationTypes OptimizationType() const;
  void SetOptimizationType(OptimizationTypes value);
  CompilationTypes CompilationType() const;
  void SetCompilationType(CompilationTypes value);
  std::string VersionProductName() const { return Quoted(Setting::VersionProductName); }
  void SetVersionProductName(const std::string& value) { SetQuoted(Setting::VersionProductName, value); }
  std::string VersionLegalCopyRight() const { return Quoted(Setting::VersionLegalCopyRight); }
  void SetVersionLegalCopyRight(const std::string& value) {
    SetQuoted(Setting::VersionLegalCopyRight, value);
  }
  std::string VersionCompanyName() const { return Quoted(Setting::VersionCompanyName); }
  void SetVersionCompanyName(const std::string& value) { SetQuoted(Setting::VersionCompanyName, value); }
  std::string VersionComments() const { return Quoted(Setting::VersionComments); }
  void SetVersionComments(const std::string& value) { SetQuoted(Setting::VersionComments, value); }
  bool RemoteServerFiles() const { return Flag(Setting::ServerSupportFiles, kOne); }
  void SetRemoteServerFiles(bool value) { SetFlag(Setting::ServerSupportFiles, value, kOne); }
  bool AutoIncrementVer() const { return Flag(Setting::AutoIncrementVer, kOne); }
  void SetAutoIncrementVer(bool value) { SetFlag(Setting::AutoIncrementVer, value, kOne); }
  bool FDIVCheck() const { return Flag(Setting::FDIVCheck, kMinusOne); }
  void SetFDIVCheck(bool value) { SetFlag(Setting::FDIVCheck, value, kMinusOne); }
  bool FlPointCheck() const { return Flag(Setting::FlPointCheck, kMinusOne); }
  void SetFlPointCheck(bool value) { SetFlag(Setting::FlPointCheck, value, kMinusOne); }
  bool OverflowCheck() const { return Flag(Setting::OverflowCheck, kMinusOne); }
  void SetOverflowCheck(bool value) { SetFlag(Setting::OverflowCheck, value, kMinusOne); }
  bool BoundsCheck() const { return Flag(Setting::BoundsCheck, kMinusOne); }
  void SetBoundsCheck(bool value) { SetFlag(Setting::BoundsCheck, value, kMinusOne); }
  bool NoAliasing() const { return Flag(Setting::NoAliasing, kMinusOne); }
  void SetNoAliasing(bool value) { SetFlag(Setting::NoAliasing, value, kMinusOne); }
  bool CodeViewDebugInfo() const { return Flag(Setting::CodeViewDebugInfo, kMinusOne); }
  void SetCodeViewDebugInfo(bool value) { SetFlag(Setting::CodeViewDebugInfo, value, kMinusOne); }
  bool UnroundedFP() const { return Flag(Setting::UnroundedFP, kMinusOne); }
  void SetUnroundedFP(bool value) { SetFlag(Setting::UnroundedFP, value, kMinusOne); }
  StartModes StartMode() const;
  void SetStartMode(StartModes value);
  // Setting it to false sets Retained to false too.
  bool Unattended() const { return Flag(Setting::Unattended, kMinusOne); }
  void SetUnattended(bool value);
  bool Retained() const { return Flag(Setting::Retained, kOne); }
  void SetRetained(bool value) { SetFlag(Setting::Retained, value, kOne); }
  bool ThreadPerObject() const { return Flag(Setting::ThreadPerObject, kMinusOne); }
  void SetThreadPerObject(bool value) { SetFlag(Setting::ThreadPerObject, value, kMinusOne); }
  std::int32_t MaxNumberOfThreads() const;
  void SetMaxNumberOfThreads(std::int32_t value);
  std::string VersionFileDescription() const { return Quoted(Setting::VersionFileDescription); }
  void SetVersionFileDescription(const std::string& value) {
    SetQuoted(Setting::VersionFileDescription, value);
  }
  std::string VersionLegalTrademarks() const { return Quoted(Setting::VersionLegalTrademarks); }
  void SetVersionLegalTrademarks(const std::string& value) {
    SetQuoted(Setting::VersionLegalTrademarks, value);
  }
  // Conditional compilation arguments.
  std::string CondComp() const { return Quoted(Setting::CondComp); }
  void SetCondComp(const std::string& value) { SetQuoted(Setting::CondComp, value); }
  std::string Description() const { return Quoted(Setting::Description); }
  void SetDescription(const std::string& value) { SetQuoted(Setting::Description, value); }
  // True also when it was never set.
  bool RemoveUnusedControlInfo() const;
  void SetRemoveUnusedControlInfo(bool value) { SetFlag(Setting::RemoveUnusedControlInfo, value, kOne); }
  ThreadingModels ThreadingModel() const;
  void SetThreadingModel(ThreadingModels value);
  // The file stores the opposite, NoControlUpgrade.
  bool UpgradeActiveXControls() const;
  void SetUpgradeActiveXControls(bool value);
  // Only for in-process projects, from &H10000 to &H7FFF0000 in steps of &H10000 (beInvalidBaseAddress).
  // &H11000000 when none was set.
  std::int32_t DllBaseAddress() const;
  void SetDllBaseAddress(std::int32_t value);

  // Reads settings and references from a project file. Errors: 45 "File is not a vbp file", 53 with the
  // path for a missing one, 45 "Unknown project type", beProjectAlreadyInBuild.
  void LoadFromFile(const std::string& strVBPFile);
  // Detects the references anew from the project file.
  void GetReferencesFromVBP();
  // Brings the project file up to date, runs the compiler and judges by its log. True when it compiled;
  // be_FailToCompile, "Compile failed: " and the log, when not. Does nothing while CompileMe is off.
  bool Compile();
  References& ReferenceList() const { return *m_references; }
  bool ISActiveX() const { return ProjectType() != ProjectTypes::StandardExe; }
  bool IsInprocess() const;
  // Identity of the binary's type library: its id without braces, in capitals, and its version in
  // hexadecimal. Errors, source "Project.GUID": 45 "Projet is not ActiveX", beGUIDmissing.
  std::string GUID();
  std::string BinaryVersion();
  automation::Variant ProjectFileName() const;
  // Full path of the binary. An absolute Path32 without final backslash gets one.
  std::string FullPath32();
  bool CompiledOK() const { return m_compiledOK; }
  // The edit cycle. ApplyEdit stores the project, or removes it from the build after Delete
  // (beProjectIsReferenced while others reference it, else beCanNotDelete).
  void BeginEdit();
  void ApplyEdit();
  void Delete();
  void CancelEdit();
  // Opens the project in the development environment, without waiting. Error 53 when that can't be
  // started.
  void RunProjectInVB();
  // Start the unregistration and registration of the binary, without waiting. Nothing happens for a
  // project that is no ActiveX component or has no binary. Error 53 when the program can't be started.
  void UnRegister();
  void Register();
  // The package or application that receives the component; 0 for none.
  std::int32_t MtsPackageId() const { return m_record.mtsPackage; }
  void SetMtsPackageId(std::int32_t value);
  // The type-library file beside the binary, when RemoteServerFiles is on.
  std::string RemoteServerFilePath();
  // The log of the last compile in one line.
  std::string CompileError() const;
  // Who last checked in the file that broke the compile. Errors 45, source "Project.LastCheckIn", after a
  // compile that succeeded and for a log that names no file; those of the source projects.
  std::string LastCheckInInfo();
  // Never break compatibility to get this project compiled.
  bool PreserveBinary() const { return m_record.preserveBinary; }
  void SetPreserveBinary(bool value);
  std::string LastErrorMessage() const { return m_lastErrorMessage; }
  // Writes references and settings to the project file. Any failure is error 45, source
  // "Project.UpdateVBP", "Update failed for project " with name and cause.
  void UpdateVBP();
  automation::Date LastCompiled() const { return {m_record.lastCompiled.value_or(0)}; }
  bool CheckInBinaryFile() const { return m_record.checkInBinary; }
  void SetCheckInBinaryFile(bool value);
  bool CheckInVBPFile() const { return m_record.checkInVBP; }
  void SetCheckInVBPFile(bool value);
  // Copies the binary, and with RemoteServerFiles the type library beside it, to CopyPath, when there is
  // one. False when that fails; the build's ScriptNotify tells why.
  bool DistributeBinaryFile();

  // The report's view of a project: its name and five lines of details.
  std::string IReportItem_Name() const override { return Name(); }
  std::string IReportItem_Details() const override;

  // For the build.
  // GUID and BinaryVersion by one look at the binary.
  struct LibraryIdentity {
    std::string guid;
    std::string version;
  };
  // Valid until it is asked for again.
  const LibraryIdentity& Identity();
  // Rewrites the rows of the project file that reference projects of the build, so that they resolve in a
  // project group: projects of the group by file, others by library. Errors of the file system.
  void FixReferencesInProjectGroup();
  void AttachTo(Projects* parent);
  // The collection, null without one; ParentProjects and ParentBuild raise error 91 then.
  Projects* ParentOrNull() const { return m_parent; }
  Projects& ParentProjects() const;
  Build& ParentBuild() const;
  void LoadFromRow(const platform::Recordset& row);
  void SetCompiledOK(bool value) { m_compiledOK = value; }
  // Like FullPath32, but a question that changes nothing.
  const std::string& BinaryPath() const;
  // The folder of the project file, with its backslash.
  std::string Folder() const { return m_file.Path(); }
  // A library path as ValidateReference takes it: a relative one is joined to the project file's path,
  // and where no file is there, to its folder.
  std::string ResolveLibrary(const std::string& path) const;
  void ReleaseMembers();

 protected:
  ~Project() override;

 private:
  struct Record {
    std::int32_t id = 0;
    automation::FixedText<255> copyPath;
    bool compile = true;
    std::int32_t mtsPackage = 0;
    bool preserveBinary = false;
    std::optional<double> lastCompiled;
    bool checkInVBP = false;
    bool checkInBinary = false;
  };

  struct Snapshot {
    Record record;
    std::string path;  // of the project file
  };

  static constexpr const char* kMinusOne = "-1";
  static constexpr const char* kOne = "1";

  // The type library of the binary as it was read last.
  struct KnownLibrary {
    LibraryIdentity identity;
    platform::FileStamp stamp;  // of the binary, taken before
    std::weak_ptr<platform::TypeLibReader> reader;
  };

  // Texts that the file keeps in double quotes.
  std::string_view QuotedText(Setting setting) const;
  std::string Quoted(Setting setting) const { return std::string(QuotedText(setting)); }
  void SetQuoted(Setting setting, const std::string& value);
  bool Flag(Setting setting, const char* trueText) const;
  void SetFlag(Setting setting, bool value, const char* trueText);
  std::int16_t Number(Setting setting) const;
  void SetVersion(Setting setting, std::int16_t value, const char* source);
  template <class T>
  void Assign(T& field, const T& value);
  [[noreturn]] void Refuse(std::int32_t number, const char* source, const std::string& message) const;
  [[noreturn]] void Refuse(automation::BuildErrors error, const char* source,
                           const std::string& message) const;
  std::string MakeBinaryPath() const;
  // FullPath32, without a copy.
  const std::string& CompletedPath();
  // The binary or the file moved or was renamed: look-ups by file must notice.
  void FilesChanged();

  // ProjectEdit.cpp: the row and the edit cycle
  void Save();
  void SaveRow();
  void DeleteRows();
  void RequireEditMode() const;

  // ProjectFile.cpp: the project file
  void OpenExisting();
  void WriteReferences();
  void RemoveReferenceRows();
  std::string ReferenceRow(const Reference& reference) const;
  void WriteSettings();
  std::string GroupReferenceRow(Project& referenced) const;
  static std::string LibraryRow(Project& referenced);
  std::vector<std::string> ReferenceRows() const;

  // ProjectCompile.cpp
  bool CompileOnce();
  bool BreakCompatibility();
  void RunCompiler();
  std::string CompileCommand(const std::string& log) const;
  void UpdateFileForCompile();
  void FixUpCompatibility();
  void MakeBinariesWriteable();
  void CheckPathToBinaryComponent();
  bool IsLibraryKnown(const platform::FileStamp& binary) const;
  void Succeed();
  void NotifyProgress(const std::string& text);

  // ProjectRegistration.cpp
  void StartRegistration(const char* inProcess, const char* outOfProcess);
  void CheckInAfterCompile();
  void CheckIn(const std::string& file, const char* failure);
  void CopyOut(const std::string& source) const;

  Record m_record;
  std::unique_ptr<Snapshot> m_snapshot;  // while editing
  clVBProject m_vbProject;
  clFile m_file;
  automation::Held<References> m_references;
  Projects* m_parent = nullptr;
  mutable std::string m_binaryPath;  // of BinaryPath, while nothing it is made of changes
  KnownLibrary m_library;
  std::string m_compileLog;
  mutable std::string m_lastErrorMessage;  // reading a property can fail too
  bool m_isDirty = false;
  bool m_isNew = true;
  bool m_isDeleted = false;
  bool m_compiledOK = false;
};

}  // namespace hearthmake
