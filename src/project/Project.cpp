#include "project/Project.hpp"

#include <array>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Projects.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"

namespace hearthmake {

namespace {

using automation::Decimal;

constexpr std::int16_t kHighestVersion = 9999;
constexpr std::int32_t kLowestBaseAddress = 0x10000;
constexpr std::int32_t kHighestBaseAddress = 0x7FFF0000;
// What the compiler's command line needs beside the paths.
constexpr std::size_t kCommandLineMargin = 15;
constexpr std::size_t kCommandLineLimit = 256;

bool EndsInVbp(const std::string& path) {
  return automation::EqualsIgnoreCaseAscii(automation::Right(path, 3), "vbp");
}

// The type's word in the file, and the extension of its binary.
struct TypeWord {
  std::string_view word;
  ProjectTypes type;
  const char* extension;
};
constexpr std::array<TypeWord, 4> kTypeWords = {{{"exe", ProjectTypes::StandardExe, "exe"},
                                                 {"oledll", ProjectTypes::ActiveXDll, "dll"},
                                                 {"oleexe", ProjectTypes::ActiveXExe, "exe"},
                                                 {"control", ProjectTypes::UserControl, "ocx"}}};

const TypeWord* FindTypeWord(std::string_view text) {
  const std::string_view word = automation::Trim(text);
  for (const TypeWord& entry : kTypeWords) {
    if (automation::EqualsIgnoreCaseAscii(entry.word, word)) return &entry;
  }
  return nullptr;
}

}  // namespace

Project::Project() : m_references(new References(*this)) {}

Project::~Project() { ReleaseMembers(); }

void Project::ReleaseMembers() {
  m_references->ReleaseMembers();
  m_references->SetOwner(nullptr);
}

void Project::AttachTo(Projects* parent) {
  m_parent = parent;
  SetOwner(parent);
}

Projects& Project::ParentProjects() const {
  if (m_parent == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "Project");
  return *m_parent;
}

Build& Project::ParentBuild() const { return ParentProjects().ParentBuild(); }

void Project::FilesChanged() {
  m_binaryPath.clear();
  if (m_parent != nullptr) m_parent->FilesChanged(*this);
}

template <class T>
void Project::Assign(T& field, const T& value) {
  field = value;
  m_isDirty = true;
}

void Project::Refuse(std::int32_t number, const char* source, const std::string& message) const {
  m_lastErrorMessage = message;
  automation::Raise(number, source, message);
}

void Project::Refuse(automation::BuildErrors error, const char* source, const std::string& message) const {
  Refuse(static_cast<std::int32_t>(error), source, message);
}

std::string_view Project::QuotedText(Setting setting) const {
  const std::string_view text = m_vbProject.Stored(setting);
  if (text.size() <= 2) return {};
  const auto isQuote = [](char c) { return c == '"'; };
  if (isQuote(text.front()) && isQuote(text.back())) return text.substr(1, text.size() - 2);
  // The outer characters need not be quotes: a text that was cut at its width has lost the closing one.
  const std::size_t length = automation::Length(text);
  if (length <= 2) return {};
  const std::string_view inner = automation::Left(text, length - 1);
  return inner.substr(automation::Left(inner, 1).size());
}

void Project::SetQuoted(Setting setting, const std::string& value) {
  m_vbProject.Let(setting, '"' + std::string(automation::Trim(value)) + '"');
}

bool Project::Flag(Setting setting, const char* trueText) const {
  return m_vbProject.Stored(setting) == trueText;
}

void Project::SetFlag(Setting setting, bool value, const char* trueText) {
  m_vbProject.Let(setting, value ? trueText : "0");
}

std::int16_t Project::Number(Setting setting) const {
  return automation::ToInteger(automation::Variant::FromDouble(automation::Val(m_vbProject.Stored(setting))));
}

void Project::SetVersion(Setting setting, std::int16_t value, const char* source) {
  if (value < 0 || value > kHighestVersion) {
    Refuse(automation::kInvalidValue, source, "Version number must be in range 0 to 9999");
  }
  m_vbProject.Let(setting, Decimal(value));
}

std::int32_t Project::FileSizeExe32() {
  clFile binary;
  binary.SetFile(FullPath32());
  return binary.Exists() ? binary.Size() : 0;
}

SettingNames& Project::Properties() const { return mTypes::GetSettingNames(); }

std::string Project::ProjectPath() const { return std::string(automation::Trim(m_file.PathName())); }

void Project::SetProjectPath(const std::string& value) {
  constexpr const char* kSource = "Project.ProjectPath";
  if (!EndsInVbp(value)) {
    Refuse(automation::kInvalidValue, kSource, "This is not a project file. No vbp extention");
  }
  const std::size_t length =
      automation::Length(value) + automation::Length(Ports().system->TemporaryFolder()) + kCommandLineMargin;
  if (length >= kCommandLineLimit) {
    Refuse(automation::BuildErrors::beCommandLineToLong, kSource, "Project path is too long.");
  }
  m_file.SetFile(value);
  m_isDirty = true;
  FilesChanged();
}

void Project::SetCopyPath(const std::string& value) {
  m_record.copyPath = value;
  m_isDirty = true;
}

void Project::SetCompileMe(bool value) { Assign(m_record.compile, value); }
void Project::SetMtsPackageId(std::int32_t value) { Assign(m_record.mtsPackage, value); }
void Project::SetPreserveBinary(bool value) { Assign(m_record.preserveBinary, value); }
void Project::SetCheckInBinaryFile(bool value) { Assign(m_record.checkInBinary, value); }
void Project::SetCheckInVBPFile(bool value) { Assign(m_record.checkInVBP, value); }

void Project::SetPath32(const std::string& value) {
  SetQuoted(Setting::Path32, value);
  FilesChanged();
}

CompatibleModes Project::CompatibleMode() const {
  char digit = '0';
  int others = 0;
  for (const char c : m_vbProject.Stored(Setting::CompatibleMode)) {
    if (c == '"') continue;
    digit = c;
    ++others;
  }
  if (others == 1 && digit == '1') return CompatibleModes::ProjectCompatibility;
  if (others == 1 && digit == '2') return CompatibleModes::BinaryCompatibility;
  return CompatibleModes::NoCompatibility;
}

void Project::SetCompatibleMode(CompatibleModes value) {
  m_vbProject.Let(Setting::CompatibleMode, '"' + Decimal(static_cast<std::int32_t>(value)) + '"');
}

std::string Project::ExeName32() const {
  const std::string name = Quoted(Setting::ExeName32);
  if (!name.empty()) return name;
  const TypeWord* type = FindTypeWord(m_vbProject.Stored(Setting::ProjectType));
  if (type == nullptr) ProjectType();  // raises
  const std::string file = FileName();
  return file.substr(0, file.size() - std::min<std::size_t>(3, file.size())) + type->extension;
}

void Project::SetExeName32(const std::string& value) {
  SetQuoted(Setting::ExeName32, value);
  FilesChanged();
}

ProjectTypes Project::ProjectType() const {
  const TypeWord* type = FindTypeWord(m_vbProject.Stored(Setting::ProjectType));
  if (type == nullptr) Refuse(automation::kInvalidValue, "Project.ProjectType", "Unknown project type");
  return type->type;
}

bool Project::IsInprocess() const {
  const ProjectTypes type = ProjectType();
  return type == ProjectTypes::ActiveXDll || type == ProjectTypes::UserControl;
}

OptimizationTypes Project::OptimizationType() const {
  return static_cast<OptimizationTypes>(Number(Setting::OptimizationType));
}

void Project::SetOptimizationType(OptimizationTypes value) {
  m_vbProject.Let(Setting::OptimizationType, Decimal(static_cast<std::int32_t>(value)));
}

CompilationTypes Project::CompilationType() const {
  return Flag(Setting::CompilationType, kMinusOne) ? CompilationTypes::PCode : CompilationTypes::NativeCode;
}

void Project::SetCompilationType(CompilationTypes value) {
  m_vbProject.Let(Setting::CompilationType, Decimal(static_cast<std::int32_t>(value)));
}

StartModes Project::StartMode() const {
  return Flag(Setting::StartMode, kOne) ? StartModes::ActiveXComponent : StartModes::StandAlone;
}

void Project::SetStartMode(StartModes value) {
  m_vbProject.Let(Setting::StartMode, Decimal(static_cast<std::int32_t>(value)));
}

void Project::SetUnattended(bool value) {
  SetFlag(Setting::Unattended, value, kMinusOne);
  if (!value) SetRetained(false);
}

std::int32_t Project::MaxNumberOfThreads() const {
  return automation::ToLong(
      automation::Variant::FromDouble(automation::Val(m_vbProject.Stored(Setting::MaxNumberOfThreads))));
}

void Project::SetMaxNumberOfThreads(std::int32_t value) {
  m_vbProject.Let(Setting::MaxNumberOfThreads, Decimal(value));
}

bool Project::RemoveUnusedControlInfo() const {
  const std::string& text = m_vbProject.Stored(Setting::RemoveUnusedControlInfo);
  return text.empty() || text == kOne;
}

ThreadingModels Project::ThreadingModel() const {
  return Flag(Setting::ThreadingModel, kOne) ? ThreadingModels::ApartmentThreaded
                                             : ThreadingModels::SingleThreaded;
}

void Project::SetThreadingModel(ThreadingModels value) {
  m_vbProject.Let(Setting::ThreadingModel, Decimal(static_cast<std::int32_t>(value)));
}

bool Project::UpgradeActiveXControls() const { return !Flag(Setting::NoControlUpgrade, kOne); }

void Project::SetUpgradeActiveXControls(bool value) { SetFlag(Setting::NoControlUpgrade, !value, kOne); }

std::int32_t Project::DllBaseAddress() const {
  return automation::ToLong(
      automation::Variant::FromDouble(automation::Val(m_vbProject.Get(Setting::DllBaseAddress))));
}

void Project::SetDllBaseAddress(std::int32_t value) {
  constexpr const char* kSource = "Project.DllBaseAddress";
  if (!IsInprocess()) Refuse(automation::kInvalidValue, kSource, "Only for inprocess projects");
  if (value < kLowestBaseAddress || value > kHighestBaseAddress) {
    Refuse(automation::BuildErrors::beInvalidBaseAddress, kSource,
           "DllbaseAddress must be between &H10000 and &H7FFF0000");
  }
  if ((value & 0xFFFF) != 0) {
    Refuse(automation::BuildErrors::beInvalidBaseAddress, kSource,
           "DllbaseAddress must be a multiple of &H10000 (64K)");
  }
  m_vbProject.Let(Setting::DllBaseAddress, "&H" + automation::Hex(value));
}

automation::Variant Project::ProjectFileName() const { return automation::Variant::FromText(FileName()); }

std::string Project::FullPath32() { return CompletedPath(); }

const std::string& Project::CompletedPath() {
  const std::string_view folder = QuotedText(Setting::Path32);
  if (!folder.ends_with('\\') && !automation::Trim(folder).empty() && !IsRelativePath(folder)) {
    SetPath32(std::string(folder) + "\\");
  }
  return BinaryPath();
}

const std::string& Project::BinaryPath() const {
  if (m_binaryPath.empty()) m_binaryPath = MakeBinaryPath();
  return m_binaryPath;
}

std::string Project::MakeBinaryPath() const {
  const std::string folder = Path32();
  if (automation::Trim(folder).empty()) return Folder() + ExeName32();
  if (IsRelativePath(folder)) return NormalizePath(Folder() + folder + "\\" + ExeName32());
  return folder + (folder.ends_with('\\') ? "" : "\\") + ExeName32();
}

std::string Project::RemoteServerFilePath() {
  if (!RemoteServerFiles()) return {};
  const std::string binary = FullPath32();
  return binary.substr(0, binary.size() - std::min<std::size_t>(3, binary.size())) + "tlb";
}

std::string Project::ResolveLibrary(const std::string& path) const {
  if (!IsRelativePath(path)) return path;
  const std::string joined = NormalizePath(ProjectPath() + path);
  const bool isThere = Ports().files->FileExists(WithoutResourceIndex(joined));
  return isThere ? joined : AbsolutePath(Folder(), path);
}

std::string Project::CompileError() const { return automation::ReplaceAll(m_compileLog, "\r\n", " "); }

std::string Project::IReportItem_Details() const {
  constexpr std::array<const char*, 3> kModes = {"No Compatibility", "Project", "Binary"};
  constexpr std::array<const char*, 3> kOptimizations = {"Fast Code", "Small Code", "No Optimization"};
  const auto optimization = static_cast<std::size_t>(OptimizationType());
  return "\tVersion: " + Decimal(MajorVer()) + "." + Decimal(MinorVer()) +
         "\r\n\tCompatible mode: " + kModes[static_cast<std::size_t>(CompatibleMode())] +
         "\r\n\tCompile:  " + (CompilationType() == CompilationTypes::PCode ? "P Code" : "Native Code") +
         "\r\n\tOptimization:  " +
         (optimization < kOptimizations.size() ? kOptimizations[optimization] : "") +
         "\r\n\tConditional Compile Arguments:  " + CondComp();
}

}  // namespace hearthmake
