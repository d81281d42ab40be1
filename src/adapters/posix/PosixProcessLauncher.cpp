#include "adapters/posix/PosixProcessLauncher.hpp"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include "adapters/posix/CommandLine.hpp"
#include "adapters/posix/DescriptorStreams.hpp"
#include "adapters/posix/PosixChildProcess.hpp"
#include "adapters/posix/StandardPipes.hpp"

namespace hearthmake::posix {

namespace {

std::vector<std::pair<std::string, std::string>> Variables(const DriveMap& drives,
                                                           const ProcessLauncherOptions& options) {
  std::vector<std::pair<std::string, std::string>> variables = options.environment;
  variables.emplace_back(DriveMap::kEnvironmentVariable, drives.Serialize());
  if (!options.winePrefix.empty()) variables.emplace_back("WINEPREFIX", options.winePrefix);
  return variables;
}

// Above the three standard descriptors, which a host may have closed.
FileDescriptor OpenNull() {
  const FileDescriptor null(::open("/dev/null", O_RDWR | O_CLOEXEC));
  return FileDescriptor(::fcntl(null.Get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

}  // namespace

PosixProcessLauncher::PosixProcessLauncher(const DriveMap& drives, ProcessLauncherOptions options)
    : m_options(std::move(options)),
      m_finder(drives, m_options.systemFolder),
      m_environment(Variables(drives, m_options)),
      m_children(std::make_shared<ChildTable>(m_options.grace)),
      m_null(OpenNull()) {
  ::posix_spawn_file_actions_init(&m_files);
  const int last = m_options.keepOutput ? STDIN_FILENO : STDERR_FILENO;
  for (int descriptor = STDIN_FILENO; m_null && descriptor <= last; ++descriptor)
    ::posix_spawn_file_actions_adddup2(&m_files, m_null.Get(), descriptor);

  ::posix_spawnattr_init(&m_attributes);
  sigset_t signals;
  ::sigemptyset(&signals);
  ::posix_spawnattr_setsigmask(&m_attributes, &signals);
  ::sigfillset(&signals);
  ::posix_spawnattr_setsigdefault(&m_attributes, &signals);
  ::posix_spawnattr_setpgroup(&m_attributes, 0);
  ::posix_spawnattr_setflags(&m_attributes,
                             POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

PosixProcessLauncher::~PosixProcessLauncher() {
  ::posix_spawn_file_actions_destroy(&m_files);
  ::posix_spawnattr_destroy(&m_attributes);
}

std::unique_ptr<platform::ChildProcess> PosixProcessLauncher::Start(std::string_view commandLine) {
  return Start(commandLine, m_files);
}

platform::PipedChild PosixProcessLauncher::StartPiped(std::string_view commandLine) {
  StandardPipes pipes;
  if (!pipes) return {};
  platform::PipedChild child;
  child.process = Start(commandLine, pipes.ChildActions());
  if (!child.process) return {};
  child.input = std::make_unique<DescriptorOutput>(pipes.TakeOurEnd(STDIN_FILENO), "standard input");
  child.output = std::make_unique<DescriptorInput>(pipes.TakeOurEnd(STDOUT_FILENO));
  child.error = std::make_unique<DescriptorInput>(pipes.TakeOurEnd(STDERR_FILENO));
  return child;
}

std::unique_ptr<platform::ChildProcess> PosixProcessLauncher::Start(std::string_view commandLine,
                                                                    const posix_spawn_file_actions_t& files) {
  m_children->ReapAbandoned();
  commandLine = commandLine.substr(0, commandLine.find('\0'));
  const auto match = m_finder.Find(commandLine);
  if (!match) return nullptr;

  std::vector<std::string> arguments = CommandLine::SplitArguments(match->arguments);
  arguments.insert(arguments.begin(), match->program->path);
  const std::string* image = &match->program->path;
  if (match->program->kind == ProgramFinder::Kind::Windows) {
    image = &Wine();
    arguments.insert(arguments.begin(), *image);
  }
  pid_t child = 0;
  if (image->empty() || !Spawn(*image, arguments, files, child)) return nullptr;
  m_children->Add(child);
  return std::make_unique<PosixChildProcess>(m_children, child);
}

void PosixProcessLauncher::TerminateRunning() { m_children->TerminateAll(); }

bool PosixProcessLauncher::Spawn(const std::string& path, const std::vector<std::string>& arguments,
                                 const posix_spawn_file_actions_t& files, pid_t& child) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  return ::posix_spawn(&child, path.c_str(), &files, &m_attributes, pointers.data(), m_environment.Block()) ==
         0;
}

const std::string& PosixProcessLauncher::Wine() {
  if (m_wine.empty() || ::access(m_wine.c_str(), X_OK) != 0)
    m_wine = ProgramFinder::FindNative(m_options.wine);
  return m_wine;
}

}  // namespace hearthmake::posix
