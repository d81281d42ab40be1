#include "adapters/posix/PosixProcessLauncher.hpp"

#include <fcntl.h>
#include <unistd.h>

#include "adapters/posix/ChildStart.hpp"
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

std::array<int, 3> StreamsOf(const FileDescriptor& null, bool keepsOutput) {
  const int output = keepsOutput ? ChildStart::kAsOurs : null.Get();
  return {null.Get(), output, output};
}

}  // namespace

PosixProcessLauncher::PosixProcessLauncher(const DriveMap& drives, ProcessLauncherOptions options)
    : m_options(std::move(options)),
      m_finder(drives, m_options.systemFolder),
      m_environment(Variables(drives, m_options)),
      m_children(std::make_shared<ChildTable>(m_options.grace)),
      m_null(OpenNull()),
      m_streams(StreamsOf(m_null, m_options.keepOutput)) {}

std::unique_ptr<platform::ChildProcess> PosixProcessLauncher::Start(std::string_view commandLine) {
  return Start(commandLine, m_streams);
}

platform::PipedChild PosixProcessLauncher::StartPiped(std::string_view commandLine) {
  StandardPipes pipes;
  if (!pipes) return {};
  platform::PipedChild child;
  child.process = Start(commandLine, pipes.ChildStreams());
  if (!child.process) return {};
  child.input = std::make_unique<DescriptorOutput>(pipes.TakeOurEnd(STDIN_FILENO), "standard input");
  child.output = std::make_unique<DescriptorInput>(pipes.TakeOurEnd(STDOUT_FILENO));
  child.error = std::make_unique<DescriptorInput>(pipes.TakeOurEnd(STDERR_FILENO));
  return child;
}

std::unique_ptr<platform::ChildProcess> PosixProcessLauncher::Start(std::string_view commandLine,
                                                                    const std::array<int, 3>& streams) {
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
  const pid_t child = image->empty() ? 0 : Start(*image, arguments, streams);
  if (child == 0) return nullptr;
  m_children->Add(child);
  return std::make_unique<PosixChildProcess>(m_children, child);
}

void PosixProcessLauncher::TerminateRunning() { m_children->TerminateAll(); }

pid_t PosixProcessLauncher::Start(const std::string& path, std::vector<std::string>& arguments,
                                  const std::array<int, 3>& streams) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  return StartChild({path.c_str(), pointers.data(), m_environment.Block(), streams});
}

const std::string& PosixProcessLauncher::Wine() {
  if (m_wine.empty() || ::access(m_wine.c_str(), X_OK) != 0)
    m_wine = ProgramFinder::FindNative(m_options.wine);
  return m_wine;
}

}  // namespace hearthmake::posix
