#include "Suite.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <stdexcept>

#include "GeneratedSuite.hpp"
#include "adapters/posix/PosixFileSystem.hpp"
#include "foundation/Paths.hpp"
#include "host/builds/ProjectSources.hpp"

namespace hearthmake::bench {

namespace {

namespace fs = std::filesystem;

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string RowValue(const std::string& text, const std::string& key) {
  const std::size_t start = text.find("\n" + key + "=");
  if (start == std::string::npos) return {};
  const std::size_t value = start + key.size() + 2;
  std::string row = text.substr(value, text.find('\r', value) - value);
  std::erase(row, '"');
  return row;
}

}  // namespace

Suite::Suite(std::string tools) : m_tools(fs::absolute(tools)) {
  std::string pattern = (fs::temp_directory_path() / "hearthmake-bench-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("can't make a temporary folder");
  m_place = pattern;
  KeepLogsIn(m_place + "/scratch");
  m_sources = m_place + "/suite";
  m_data = m_place + "/data";
  m_drives = posix::DriveMap::BuiltIn(m_data);
  setenv("XDG_CONFIG_HOME", (m_place + "/config").c_str(), 1);
}

Suite::~Suite() {
  fs::remove_all(m_scratch);
  fs::remove_all(m_place);
}

void Suite::KeepLogsIn(const std::string& folder) {
  fs::create_directories(folder);
  m_scratch = folder;
}

void Suite::CopyFrom(const std::string& folder) {
  fs::copy(folder, m_sources, fs::copy_options::recursive);
  for (const auto& entry : fs::recursive_directory_iterator(m_sources)) {
    fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add);
  }
  MakeOutputFolders();
}

void Suite::Generate(int count) {
  // One binary serves for all: it is made by the stand-in from a suite of one.
  const std::string one = m_place + "/one";
  fs::create_directories(one);
  std::ofstream(one + "/Empty.dll").flush();
  GenerateSuite(one + "/suite", 1, one + "/Empty.dll");
  fs::remove(one + "/suite/bin/Part0.dll");
  RunProgram(
      {m_tools + "/tools/vb6/vb6", one + "/suite/part0000/Part0.vbp", "/makedll", "/out", one + "/log"},
      {{"VB6_STANDIN_SKIP_SOURCES", "1"}, {"VB6_STANDIN_SKIP_REFERENCES", "1"}});
  GenerateSuite(m_sources, count, one + "/suite/bin/Part0.dll");
}

std::vector<std::string> Suite::ProjectFiles() const {
  std::vector<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(m_sources)) {
    if (entry.path().extension() == ".vbp") files.push_back(entry.path());
  }
  return files;
}

void Suite::MakeOutputFolders() {
  posix::DriveMap& drives = m_drives;
  std::set<char> letters;
  std::set<std::string> folders;
  for (const std::string& path : ProjectFiles()) {
    const std::string folder = RowValue(ReadFile(path), "Path32");
    const std::string absolute = AbsolutePath(FolderPart(drives.FromPosix(path)), folder + "\\");
    folders.insert(absolute);
    const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(absolute[0])));
    if (letter != 'C' && letter != 'Z') letters.insert(letter);
  }
  for (const char letter : letters) {
    const std::string folder = m_place + "/drive_" + letter;
    fs::create_directories(folder);
    drives.SetDrive(letter, folder);
    m_driveOptions.insert(m_driveOptions.end(), {"--drive", fmt::format("{}:={}", letter, folder)});
  }
  posix::PosixFileSystem files(std::make_shared<posix::DriveMap>(drives));
  for (const std::string& folder : folders) files.CreateFolders(folder);
}

ProgramRun Suite::Run(const std::vector<std::string>& arguments, const Variables& variables) const {
  std::vector<std::string> command = {m_tools + "/src/hearthmake", "--data", m_data};
  command.insert(command.end(), m_driveOptions.begin(), m_driveOptions.end());
  command.insert(command.end(), arguments.begin(), arguments.end());
  Variables all = variables;
  all.emplace_back("TMPDIR", m_scratch);
  const ProgramRun run = RunProgram(command, all, m_place + "/output");
  if (run.status != 0) {
    throw std::runtime_error(fmt::format("hearthmake {} ended with {}:\n{}", arguments[0], run.status,
                                         ReadFile(m_place + "/output")));
  }
  return run;
}

void Suite::StartAnew() {
  // Drive C: stays, it may hold output folders.
  for (const char* name : {"Build.mdb", "Build.mdb-wal", "Build.mdb-shm"}) fs::remove(m_data + "/" + name);
  Run({"new", "Suite"});
}

ProgramRun Suite::Scan() const { return Run({"scan", "Suite", m_sources}); }

std::vector<std::string> Suite::SourcesOf(const std::string& path) const {
  std::vector<std::string> files;
  const std::string folder(FolderPart(m_drives.FromPosix(path)));
  for (const host::ProjectSource& source : host::SourcesOf(ReadFile(path), folder)) {
    const auto file = m_drives.ToPosix(source.path);
    if (file && (!source.mayBeMissing || fs::exists(*file))) files.push_back(*file);
  }
  return files;
}

void Suite::MakeSources() const {
  for (const std::string& path : ProjectFiles()) {
    for (const std::string& source : SourcesOf(path)) {
      if (fs::exists(source)) continue;
      fs::create_directories(fs::path(source).parent_path());
      std::ofstream(source).flush();
    }
  }
}

std::vector<std::vector<std::string>> Suite::InputFiles() const {
  std::vector<std::vector<std::string>> files;
  for (const std::string& path : BuiltProjects()) {
    files.push_back(SourcesOf(path));
    files.back().insert(files.back().begin(), path);
  }
  return files;
}

void Suite::MakeBinaries() const {
  Run({"settings", "VBExe", m_tools + "/tools/vb6/vb6"});
  Run({"build", "Suite"}, {{"VB6_STANDIN_SKIP_SOURCES", "1"},
                           {"VB6_STANDIN_SKIP_REFERENCES", "1"},
                           {"VB6_STANDIN_SEED", "bench"}});
}

void Suite::SettleFiles() const {
  constexpr int kWarmUps = 2;
  Run({"settings", "VBExe", GoodLog()});
  for (int i = 0; i < kWarmUps; ++i) Run({"build", "Suite"});
}

void Suite::SpoilFiles(int round) const {
  for (const std::string& path : ProjectFiles()) {
    std::string text = ReadFile(path);
    const std::size_t start = text.find("MajorVer=");
    if (start == std::string::npos) continue;
    text.replace(start, text.find('\r', start) - start, fmt::format("MajorVer={}", 100 + round));
    std::ofstream(path, std::ios::binary) << text;
  }
}

std::vector<std::string> Suite::BuiltProjects() const {
  std::vector<std::string> paths;
  for (const auto& command : CompilerCommands()) paths.push_back(m_drives.ToPosix(command[1]).value_or(""));
  return paths;
}

std::vector<std::vector<std::string>> Suite::CompilerCommands() const {
  Run({"order", "Suite", "--json"});
  const std::string json = ReadFile(m_place + "/output");
  std::vector<std::vector<std::string>> commands;
  // One "path" a project, in order.
  const std::string key = "\"path\":";
  for (std::size_t hit = json.find(key); hit != std::string::npos; hit = json.find(key, hit + 1)) {
    const std::size_t start = json.find('"', hit + key.size()) + 1;
    std::string path = json.substr(start, json.find('"', start) - start);
    for (std::size_t slash = path.find("\\\\"); slash != std::string::npos;
         slash = path.find("\\\\", slash + 1)) {
      path.erase(slash, 1);
    }
    // A log of its own each, as a build deletes the log before each compile: a compiler that truncates an
    // existing one waits for the disk.
    commands.push_back(
        {GoodLog(), path, "/makedll", "/out", fmt::format("Z:{}/logs/{}.txt", m_scratch, commands.size())});
  }
  return commands;
}

Variables Suite::ChildVariables() const {
  return {{posix::DriveMap::kEnvironmentVariable, posix::DriveMap::BuiltIn(m_data).Serialize()}};
}

void Suite::ClearLogs() const {
  fs::remove_all(m_scratch + "/logs");
  fs::create_directory(m_scratch + "/logs");
}

std::string Suite::WriteNinjaFile() const {
  const std::string path = m_place + "/build.ninja";
  std::ofstream file(path);
  // ninja keeps its log where it is started otherwise.
  file << "builddir = " << m_place << "\n"
       << "rule run\n  command = $line\n";
  int number = 0;
  for (const auto& command : CompilerCommands()) {
    std::string line;
    for (const std::string& argument : command) line += "'" + argument + "' ";
    // The outputs are never made, so that every command runs each time.
    file << "build never" << number++ << ": run\n  line = " << line << "\n";
  }
  return path;
}

std::string Suite::WriteNinjaFileOfInputs() const {
  const std::string folder = m_place + "/ninja";
  fs::create_directories(folder);
  const std::string path = folder + "/build.ninja";
  std::ofstream file(path);
  file << "builddir = " << folder << "\n"
       << "rule make\n  command = touch $out\n";
  int number = 0;
  for (const auto& inputs : InputFiles()) {
    file << "build " << folder << "/" << number++ << ".stamp: make";
    for (const std::string& input : inputs) {
      file << " ";
      for (const char c : input) file << (c == ' ' || c == ':' || c == '$' ? "$" : "") << c;
    }
    file << "\n";
  }
  return path;
}

}  // namespace hearthmake::bench
