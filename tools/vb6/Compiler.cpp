#include "vb6/Compiler.hpp"

#include <algorithm>
#include <utility>

#include "automation/Error.hpp"
#include "vb6/CompileError.hpp"
#include "vb6/DosPath.hpp"
#include "vb6/InterfaceListing.hpp"
#include "vb6/MsftWriter.hpp"
#include "vb6/ReferenceChecker.hpp"
#include "vb6/SourceFile.hpp"
#include "vb6/StubImage.hpp"
#include "vb6/Text.hpp"
#include "vb6/VersionResource.hpp"

namespace hearthmake::vb6 {
namespace {

constexpr std::uint32_t kProgramBase = 0x400000;
constexpr std::uint32_t kLibraryBase = 0x11000000;

std::string CompileErrorText(const std::string& file, unsigned line, const std::string& text) {
  return "Compile Error in File '" + file + "', Line " + std::to_string(line) + " : " + text;
}

std::string ProjectError(const std::string& name, const std::string& problem) {
  return "Error in project '" + name + "': " + problem;
}

Compatibility ModeOf(const ProjectFile& project) {
  switch (project.Number("CompatibleMode")) {
    case 1: return Compatibility::Project;
    case 2: return Compatibility::Binary;
    default: return Compatibility::None;
  }
}

std::uint32_t BaseAddress(const ProjectFile& project) {
  if (!project.IsInProcess()) return kProgramBase;
  const std::string_view text = project.Value("DllBaseAddress");
  if (!StartsWithNoCase(text, "&H")) return kLibraryBase;
  return ParseNumber(text.substr(2), 16).value_or(kLibraryBase);
}

}  // namespace

Compiler::Compiler(platform::FileSystem& files, platform::TypeLibReader& libraries, const Controls& controls)
    : m_files(files), m_libraries(libraries), m_controls(controls) {}

Outcome Compiler::Compile(const std::string& projectPath, const std::string& outFolder) {
  Job job;
  job.projectPath = projectPath;
  job.name = BaseNameOf(projectPath);
  job.exeName = FileNameOf(projectPath);
  std::string problem;
  try {
    problem = Run(job, outFolder);
  } catch (const automation::Error& error) {
    problem = ProjectError(job.name, error.Description());
  }
  if (problem.empty()) return {true, "Build of '" + job.exeName + "' succeeded.\r\n"};
  return {false, problem + "\r\nBuild of '" + job.exeName + "' failed.\r\n"};
}

// Returns the sentence of the first problem, or an empty text.
std::string Compiler::Run(Job& job, const std::string& outFolder) {
  Load(job, outFolder);
  m_controls.Disturb(job.name);
  if (m_controls.Fails(job.name)) {
    const auto& components = job.project.Components();
    const std::string file =
        components.empty() ? job.projectPath : JoinPath(job.folder, components.front().file);
    return CompileErrorText(file, 12, "Variable not defined");
  }
  if (!m_controls.SkipReferences()) {
    ReferenceChecker checker(m_files, m_libraries, m_controls.AssumeSystemLibraries());
    const std::string problem = checker.Check(job.project, job.folder, job.outFolder);
    if (!problem.empty()) return ProjectError(job.name, problem);
  }
  std::string problem;
  PublicInterface library = ReadSources(job, problem);
  if (!problem.empty()) return problem;
  if (job.project.IsActiveX()) {
    problem = Identify(job, library);
    if (!problem.empty()) return problem;
  }
  if (!m_files.FolderExists(job.outFolder))
    return ProjectError(job.name, "Path not found: '" + job.outFolder + "'");
  WriteBinary(job, library);
  CountRevision(job);
  return {};
}

void Compiler::Load(Job& job, const std::string& outFolder) const {
  job.folder = FolderOf(job.projectPath);
  job.bytes = m_files.Read(job.projectPath);
  job.project = ProjectFile::Parse(job.bytes);
  if (const auto name = job.project.Value("Name"); !name.empty()) job.name = name;
  job.exeName = job.project.Value("ExeName32");
  if (job.exeName.empty()) {
    job.exeName = std::string(BaseNameOf(job.projectPath)) + "." + std::string(job.project.Extension());
  }
  job.outFolder =
      JoinPath(job.folder, outFolder.empty() ? std::string(job.project.Value("Path32")) : outFolder);
  job.target = JoinPath(job.outFolder, job.exeName);
}

// A compiled resource file begins with an empty resource.
std::string Compiler::CheckResourceFile(const Job& job) const {
  constexpr std::string_view kEmptyResource("\0\0\0\0\x20\0\0\0", 8);
  const std::string_view file = job.project.Value("ResFile32");
  if (file.empty()) return {};
  const std::string path = JoinPath(job.folder, file);
  if (!m_files.FileExists(path)) return ProjectError(job.name, "File not found: '" + path + "'");
  if (m_files.Read(path).starts_with(kEmptyResource)) return {};
  return ProjectError(job.name, "Invalid resource file: '" + path + "'");
}

PublicInterface Compiler::ReadSources(const Job& job, std::string& problem) const {
  PublicInterface library;
  library.name = job.name;
  library.help = job.project.Value("Description");
  if (library.help.empty()) library.help = job.name;
  library.controls = job.project.Kind() == ProjectKind::UserControl;
  if (m_controls.SkipSources()) {
    library.classes.emplace_back().name = job.name + "Class";
    return library;
  }
  problem = CheckResourceFile(job);
  for (const Component& component : job.project.Components()) {
    if (!problem.empty()) return library;
    if (auto exported = ReadComponent(job, component, problem))
      library.classes.push_back(std::move(*exported));
  }
  const bool creatable = std::any_of(library.classes.begin(), library.classes.end(),
                                     [](const PublicClass& c) { return c.creatable; });
  if (problem.empty() && job.project.IsActiveX() && !creatable) {
    problem = ProjectError(job.name, "No creatable public component detected");
  }
  return library;
}

std::optional<PublicClass> Compiler::ReadComponent(const Job& job, const Component& component,
                                                   std::string& problem) const {
  const std::string path = JoinPath(job.folder, component.file);
  try {
    if (!m_files.FileExists(path)) throw CompileError(1, "File not found");
    return ReadSource(m_files.Read(path), component.kind, component.name).exported;
  } catch (const CompileError& error) {
    problem = CompileErrorText(path, error.Line(), error.Text());
  } catch (const automation::Error& error) {
    problem = CompileErrorText(path, 1, error.Description());
  }
  return std::nullopt;
}

std::string Compiler::Identify(const Job& job, PublicInterface& library) const {
  const Compatibility mode = ModeOf(job.project);
  const std::string_view compatibleWith = job.project.Value("CompatibleEXE32");
  std::optional<EarlierLibrary> earlier;
  if (mode != Compatibility::None && !compatibleWith.empty()) {
    std::string problem;
    earlier = ReadEarlier(JoinPath(job.folder, compatibleWith), problem);
    if (!problem.empty()) return ProjectError(job.name, problem);
  }
  const GuidSource guids = m_controls.Seed() ? GuidSource(*m_controls.Seed()) : GuidSource();
  std::string broken = AssignIdentity(library, mode, earlier ? &*earlier : nullptr, guids);
  if (mode == Compatibility::Binary && m_controls.Breaks(job.name)) broken = "the environment says so";
  return broken.empty() ? std::string() : "'" + job.exeName + "' breaks binary compatibility: " + broken;
}

// Nothing when there is no such file: then there is nothing to be compatible with.
std::optional<EarlierLibrary> Compiler::ReadEarlier(const std::string& path, std::string& problem) const {
  if (!m_files.FileExists(path)) return std::nullopt;
  try {
    auto earlier = ReadListing(m_files.Read(path));
    return earlier ? earlier : ReadForeignLibrary(path);
  } catch (const automation::Error& error) {
    problem = "Unable to set the version compatible component '" + path + "': " + error.Description();
    return std::nullopt;
  }
}

EarlierLibrary Compiler::ReadForeignLibrary(const std::string& path) const {
  const platform::TypeLibInfo info = m_libraries.Read(path);
  const std::vector<platform::TypeDescription> types = m_libraries.ReadTypes(path);
  const auto guidOf = [&types](const std::string& name) {
    const auto type = std::find_if(types.begin(), types.end(), [&](const platform::TypeDescription& t) {
      return EqualNoCase(t.name, name);
    });
    return type == types.end() ? Guid{} : Guid::Parse(type->guid).value_or(Guid{});
  };
  EarlierLibrary earlier;
  earlier.membersKnown = false;
  earlier.library.id = Guid::Parse(info.guid).value_or(Guid{});
  earlier.library.majorVersion = info.majorVersion;
  earlier.library.minorVersion = info.minorVersion;
  for (const platform::TypeDescription& type : types) {
    if (type.kind != platform::TypeKind::CoClass) continue;
    PublicClass& added = earlier.library.classes.emplace_back();
    added.name = type.name;
    added.classId = guidOf(type.name);
    added.interfaceId = guidOf("_" + type.name);
    added.eventsId = guidOf("__" + type.name);
  }
  return earlier;
}

void Compiler::WriteBinary(const Job& job, const PublicInterface& library) const {
  constexpr std::uint16_t kVersionType = 16;
  PeImage image;
  image.isLibrary = job.project.IsInProcess();
  image.baseAddress = BaseAddress(job.project);
  const PeResource version = {"", kVersionType, 1, VersionResource(job.project, job.exeName)};
  if (!job.project.IsActiveX()) {
    image.resources = {version};
    return WriteAnew(job.target, PeWriter::Write(image));
  }
  const std::string typeLibrary = MsftWriter::Write(library);
  image.resources = {{"TYPELIB", 0, 1, typeLibrary}, version};
  WriteAnew(job.target, WithListing(ComponentImage(image), library));
  if (job.project.Number("ServerSupportFiles") == 1) {
    WriteAnew(JoinPath(job.outFolder, std::string(BaseNameOf(job.exeName)) + ".tlb"), typeLibrary);
  }
}

std::string Compiler::ComponentImage(const PeImage& image) const {
  const std::string& folder = m_controls.StubFolder();
  if (folder.empty()) return PeWriter::Write(image);
  const std::string stub = JoinPath(folder, image.isLibrary ? "stub.dll" : "stub.exe");
  return WithResources(m_files.Read(stub), image.resources);
}

// Replace leaves a file alone that has these bytes already; what a compiler writes is new.
void Compiler::WriteAnew(const std::string& path, const std::string& bytes) const {
  if (m_files.FileExists(path)) m_files.Remove(path);
  m_files.Replace(path, bytes);
}

// Like the development environment, which leaves the number as it is when it can't write it.
void Compiler::CountRevision(const Job& job) const {
  const std::string counted = ProjectFile::WithNextRevision(job.bytes);
  if (counted == job.bytes) return;
  try {
    m_files.Replace(job.projectPath, counted);
  } catch (const automation::Error&) {
  }
}

}  // namespace hearthmake::vb6
