#include "adapters/jet/ReadingProcess.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <exception>
#include <fstream>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include "adapters/jet/Failure.hpp"
#include "adapters/jet/MdbFile.hpp"
#include "adapters/jet/RowStream.hpp"

namespace hearthmake::jet {

namespace {

// No word of the command begins so.
constexpr std::string_view kWord = "@read-jet-rows";
constexpr int kStopLook = 100;  // milliseconds between two looks whether a stop is wanted
constexpr std::uint64_t kMegabyte = 1024 * 1024;
constexpr int kNotStarted = 127;
// Latin text doubles at most when it becomes UTF-8, and each value gets a few bytes of its own.
constexpr std::uint64_t kGrowth = 16;

std::string ErrorText(int error) { return std::generic_category().message(error); }

[[noreturn]] void RaiseCantOpen(const std::string& why) { automation::Raise(kCantOpen, kSource, why + "."); }

std::string WhyEnded(int status) {
  if (WIFSIGNALED(status)) {
    if (WTERMSIG(status) == SIGXCPU) return "reading it takes too long.";
    return "its reader ended by the signal " + std::to_string(WTERMSIG(status)) + ".";
  }
  return "its reader ended early.";
}

// The other end.

std::uint32_t NumberOf(std::string_view text) {
  std::uint32_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// The address space that is in use now: a limit counts it too, and a sanitizer takes a lot.
std::uint64_t UsedAddressSpace() {
  std::ifstream file("/proc/self/statm");
  std::uint64_t pages = 0;
  file >> pages;
  return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

void Limit(int resource, std::uint64_t value) {
  const rlimit limit{value, value};
  setrlimit(static_cast<__rlimit_resource_t>(resource), &limit);
}

void LimitOurselves(std::uint32_t seconds, std::uint32_t megabytes) {
  const rlimit processor{seconds, seconds + 1};
  setrlimit(RLIMIT_CPU, &processor);
  Limit(RLIMIT_AS, UsedAddressSpace() + megabytes * kMegabyte);
  Limit(RLIMIT_CORE, 0);
  Limit(RLIMIT_FSIZE, 0);
}

void WriteOut(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(STDOUT_FILENO, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) _exit(1);  // nobody listens any more
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

int ReadAndPrint(const std::vector<std::string>& tables) {
  RowStreamWriter rows(&WriteOut);
  try {
    MdbFile("/proc/self/fd/0").Read(tables, rows);
    rows.End();
    return 0;
  } catch (const automation::Error& error) {
    rows.Fail(error.Number(), error.Description());
  } catch (const std::bad_alloc&) {
    rows.Fail(kDamaged, "Reading the database takes too much memory.");
  } catch (const std::exception& error) {
    rows.Fail(kDamaged, error.what());
  }
  return 1;
}

int Serve(const ReadingProcess::Options& options) {
  LimitOurselves(options.secondsOfProcessor, options.megabytes);
  return ReadAndPrint(options.tables);
}

}  // namespace

ReadingProcess::ReadingProcess(const std::string& path, Options options) : m_options(std::move(options)) {
  try {
    Open(path);
  } catch (...) {
    if (m_file >= 0) close(m_file);
    throw;
  }
}

ReadingProcess::~ReadingProcess() {
  Kill();
  for (const int descriptor : {m_file, m_pipe}) {
    if (descriptor >= 0) close(descriptor);
  }
}

void ReadingProcess::Open(const std::string& path) {
  // Without waiting: a pipe of that name would be waited for until somebody writes to it.
  m_file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (m_file < 0) RaiseCantOpen(ErrorText(errno));
  struct stat status {};
  if (fstat(m_file, &status) != 0) RaiseCantOpen(ErrorText(errno));
  if (!S_ISREG(status.st_mode)) RaiseCantOpen("It is not a file");
  m_size = static_cast<std::uint64_t>(status.st_size);
  if (m_size == 0) automation::Raise(kForeignFormat, kSource, "It is empty.");
  std::array<char, kHeaderSize> bytes{};
  const ssize_t count = pread(m_file, bytes.data(), bytes.size(), 0);
  if (count < 0) RaiseCantOpen(ErrorText(errno));
  m_header = RequireReadable({bytes.data(), static_cast<std::size_t>(count)});
  if (m_options.secondsOfProcessor == 0) {
    m_options.secondsOfProcessor = static_cast<std::uint32_t>(20 + m_size / kMegabyte);
  }
}

void ReadingProcess::Start() {
  // All that allocates is done before the fork.
  std::vector<std::string> words = {m_options.program, std::string(kWord),
                                    std::to_string(m_options.secondsOfProcessor),
                                    std::to_string(m_options.megabytes)};
  words.insert(words.end(), m_options.tables.begin(), m_options.tables.end());
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const int nothing = open("/dev/null", O_WRONLY | O_CLOEXEC);
  std::array<int, 2> ends{};
  if (nothing < 0 || pipe2(ends.data(), O_CLOEXEC) != 0) RaiseCantOpen("No pipe: " + ErrorText(errno));
  const pid_t parent = getpid();
  m_child = fork();
  if (m_child == 0) {
    // It leads a group, as all our children do, so that an interrupt can end it.
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const bool isReady = getppid() == parent && dup2(m_file, STDIN_FILENO) >= 0 &&
                         dup2(ends[1], STDOUT_FILENO) >= 0 && dup2(nothing, STDERR_FILENO) >= 0;
    if (isReady && m_options.program.empty()) _exit(Serve(m_options));
    if (isReady) execv(arguments[0], arguments.data());
    _exit(kNotStarted);
  }
  const int error = errno;
  close(nothing);
  close(ends[1]);
  m_pipe = ends[0];
  if (m_child < 0) RaiseCantOpen("No process: " + ErrorText(error));
}

void ReadingProcess::Read(RowSink& sink) {
  Start();
  const auto read = [this](char* buffer, std::size_t size) { return Take(buffer, size); };
  const std::uint64_t limit = kGrowth * m_size + kMegabyte;
  if (!RowStreamReader(read, limit).Run(sink)) RaiseEnded();
  Wait();
}

std::size_t ReadingProcess::Take(char* buffer, std::size_t size) {
  while (true) {
    pollfd waiting{m_pipe, POLLIN, 0};
    const int ready = poll(&waiting, 1, kStopLook);
    if (m_options.isStopWanted && m_options.isStopWanted()) {
      automation::Raise(kCancelled, kSource, "Cancelled.");
    }
    if (ready <= 0) continue;
    const ssize_t count = read(m_pipe, buffer, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) RaiseDamaged("its reader can't be heard: " + ErrorText(errno) + ".");
  }
}

void ReadingProcess::RaiseEnded() {
  const int status = Wait();
  if (WIFEXITED(status) && WEXITSTATUS(status) == kNotStarted) {
    RaiseCantOpen("The program that reads it can't be started: " + m_options.program);
  }
  RaiseDamaged(WhyEnded(status));
}

int ReadingProcess::Wait() {
  int status = 0;
  while (waitpid(m_child, &status, 0) < 0 && errno == EINTR) {
  }
  m_child = -1;
  return status;
}

void ReadingProcess::Kill() {
  if (m_child < 0) return;
  kill(m_child, SIGKILL);
  Wait();
}

std::optional<int> ServeReading(int argc, const char* const* argv) {
  if (argc < 4 || argv[1] != kWord) return std::nullopt;
  ReadingProcess::Options options;
  options.secondsOfProcessor = NumberOf(argv[2]);
  options.megabytes = NumberOf(argv[3]);
  options.tables.assign(argv + 4, argv + argc);
  return Serve(options);
}

}  // namespace hearthmake::jet
