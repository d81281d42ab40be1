#include "adapters/posix/ProgramFinder.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "adapters/posix/CommandLine.hpp"
#include "adapters/posix/FileDescriptor.hpp"

namespace hearthmake::posix {

namespace {

std::string CurrentFolder() {
  std::array<char, PATH_MAX> buffer{};
  return ::getcwd(buffer.data(), buffer.size()) == nullptr ? std::string() : std::string(buffer.data());
}

std::string SearchPath() {
  const char* path = std::getenv("PATH");
  return path == nullptr ? std::string() : std::string(path);
}

std::string FolderOfRunningProgram() {
  std::array<char, PATH_MAX> buffer{};
  const ssize_t length = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
  if (length <= 0) return {};
  const std::string_view path(buffer.data(), static_cast<std::size_t>(length));
  return std::string(path.substr(0, path.rfind('/')));
}

std::vector<std::string> Split(std::string_view searchPath) {
  std::vector<std::string> folders;
  while (!searchPath.empty()) {
    const std::size_t end = searchPath.find(':');
    if (end != 0) folders.emplace_back(searchPath.substr(0, end));
    searchPath = end == std::string_view::npos ? std::string_view() : searchPath.substr(end + 1);
  }
  return folders;
}

// The spellings under which a name may exist, the likeliest first.
std::vector<std::string> Spellings(std::string_view name) {
  const std::size_t nameStart = name.find_last_of("\\/:") + 1;  // npos + 1 is 0
  const std::size_t dot = name.substr(nameStart).rfind('.');
  if (dot == std::string_view::npos) return {std::string(name) + ".exe", std::string(name)};
  const std::size_t stemLength = nameStart + dot;
  if (dot > 0 && ::strcasecmp(std::string(name.substr(stemLength)).c_str(), ".exe") == 0)
    return {std::string(name), std::string(name.substr(0, stemLength))};
  return {std::string(name)};
}

bool HasPath(std::string_view name) { return name.find_first_of("\\/:") != std::string_view::npos; }

// Whether a name means the same wherever this process stands.
bool IsAbsolute(std::string_view name) {
  const bool hasDrive = name.size() > 2 && name[1] == ':' && (name[2] == '\\' || name[2] == '/');
  return hasDrive || name.starts_with('/');
}

bool IsPortableExecutable(int file, const std::array<unsigned char, 64>& start) {
  const std::uint32_t offset =
      start[0x3C] | start[0x3D] << 8 | start[0x3E] << 16 | static_cast<std::uint32_t>(start[0x3F]) << 24;
  std::array<char, 4> signature{};
  return ::pread(file, signature.data(), signature.size(), static_cast<off_t>(offset)) == 4 &&
         std::memcmp(signature.data(), "PE\0\0", 4) == 0;
}

}  // namespace

ProgramFinder::ProgramFinder(DriveMap drives, std::string systemFolder)
    : m_drives(std::move(drives)),
      m_systemFolder(std::move(systemFolder)),
      m_programFolder(FolderOfRunningProgram()) {}

std::optional<ProgramFinder::Match> ProgramFinder::Find(std::string_view commandLine) {
  const auto first = CommandLine(commandLine).NextCandidate();
  // All candidates begin as the first one does.
  if (first && !IsAbsolute(first->program)) CheckSurroundings();
  CommandLine remembered(commandLine);
  while (const auto candidate = remembered.NextCandidate()) {
    if (candidate->program.size() > m_longest) break;
    if (const Program* program = Remembered(candidate->program)) return Match{program, candidate->arguments};
  }
  CommandLine fresh(commandLine);
  while (const auto candidate = fresh.NextCandidate()) {
    if (candidate->program.size() >= PATH_MAX) break;
    if (const Program* program = LookUp(candidate->program)) return Match{program, candidate->arguments};
  }
  return std::nullopt;
}

std::string ProgramFinder::FindNative(const std::string& name) {
  const auto executable = [](const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
  };
  if (name.find('/') != std::string::npos) return executable(name) ? name : std::string();
  for (const std::string& folder : Split(SearchPath())) {
    std::string path = folder;
    (path += '/') += name;
    if (executable(path)) return path;
  }
  return {};
}

std::optional<ProgramFinder::Kind> ProgramFinder::Identify(const std::string& path) {
  // O_NONBLOCK: a pipe in the place of a program must not hold us up.
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file || ::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::array<unsigned char, 64> start{};
  const ssize_t count = ::pread(file.Get(), start.data(), start.size(), 0);
  const auto begins = [&](const char* magic, ssize_t length) {
    return count >= length && std::memcmp(start.data(), magic, static_cast<std::size_t>(length)) == 0;
  };
  if (begins("MZ", 2) && count == static_cast<ssize_t>(start.size()) &&
      IsPortableExecutable(file.Get(), start))
    return Kind::Windows;
  if ((begins("\177ELF", 4) || begins("#!", 2)) && ::access(path.c_str(), X_OK) == 0) return Kind::Native;
  return std::nullopt;
}

std::optional<ProgramFinder::Stamp> ProgramFinder::StampOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return Stamp{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

const ProgramFinder::Program* ProgramFinder::Remembered(std::string_view name) {
  const auto found = m_found.find(name);
  if (found == m_found.end()) return nullptr;
  if (StampOf(found->second.program.path) == found->second.stamp) return &found->second.program;
  m_found.erase(found);
  return nullptr;
}

const ProgramFinder::Program* ProgramFinder::LookUp(std::string_view name) {
  std::optional<Entry> entry = Probe(name);
  if (!entry) return nullptr;
  // A host that makes up a new program name for every call must not fill the memory.
  if (m_found.size() >= 1000) m_found.clear();
  if (name.size() > m_longest) m_longest = name.size();
  return &m_found.insert_or_assign(std::string(name), std::move(*entry)).first->second.program;
}

std::optional<ProgramFinder::Entry> ProgramFinder::Probe(std::string_view name) const {
  const std::vector<std::string> spellings = Spellings(name);
  if (name.starts_with('/')) {
    for (const std::string& path : spellings) {
      const auto stamp = StampOf(path);
      if (const auto kind = stamp ? Identify(path) : std::nullopt) return Entry{{path, *kind}, *stamp};
    }
    return std::nullopt;
  }
  if (HasPath(name)) {
    for (const std::string& path : spellings)
      if (auto entry = ProbeDosPath(path)) return entry;
    return std::nullopt;
  }
  for (std::string folder : SearchFolders()) {
    folder += '\\';
    for (const std::string& spelling : spellings)
      if (auto entry = ProbeDosPath(folder + spelling)) return entry;
  }
  return std::nullopt;
}

std::optional<ProgramFinder::Entry> ProgramFinder::ProbeDosPath(const std::string& path) const {
  std::optional<std::string> posix = m_drives.ToPosix(path);
  if (!posix) return std::nullopt;
  const auto stamp = StampOf(*posix);
  const auto kind = stamp ? Identify(*posix) : std::nullopt;
  if (!kind) return std::nullopt;
  return Entry{{std::move(*posix), *kind}, *stamp};
}

void ProgramFinder::CheckSurroundings() {
  std::string currentFolder = CurrentFolder();
  std::string searchPath = SearchPath();
  if (currentFolder == m_currentFolder && searchPath == m_searchPath) return;
  m_currentFolder = std::move(currentFolder);
  m_searchPath = std::move(searchPath);
  m_found.clear();
}

std::vector<std::string> ProgramFinder::SearchFolders() const {
  std::vector<std::string> folders;
  const auto add = [&](std::string folder) {
    while (folder.ends_with('\\')) folder.pop_back();
    if (!folder.empty()) folders.push_back(std::move(folder));
  };
  if (!m_programFolder.empty()) add(m_drives.FromPosix(m_programFolder));
  if (!m_currentFolder.empty()) add(m_drives.FromPosix(m_currentFolder));
  add(m_systemFolder);
  for (const std::string& folder : Split(m_searchPath)) add(m_drives.FromPosix(folder));
  return folders;
}

}  // namespace hearthmake::posix
