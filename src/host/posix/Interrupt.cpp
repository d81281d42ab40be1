#include "host/system/Interrupt.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include "host/HostError.hpp"

namespace hearthmake::host {

namespace {

volatile sig_atomic_t s_isRunning = 0;
volatile sig_atomic_t s_isRequested = 0;
std::array<char, 4096> s_folder{};
void (*volatile s_onRequest)(void*) = nullptr;
void* volatile s_requestContext = nullptr;

// Everything from here to the handler runs inside a signal: system calls and memory of its own only.

// Each child leads a process group. The kernel lists them, so that no table has to be read that the
// interrupted code may be changing.
void KillChildren() {
  const int list = open("/proc/thread-self/children", O_RDONLY | O_CLOEXEC);
  if (list < 0) return;
  std::array<char, 512> text{};
  pid_t child = 0;
  for (ssize_t count = 0; (count = read(list, text.data(), text.size())) > 0;) {
    for (ssize_t i = 0; i < count; ++i) {
      const char c = text[static_cast<std::size_t>(i)];
      if (c >= '0' && c <= '9') {
        child = child * 10 + (c - '0');
      } else if (child > 0) {
        kill(-child, SIGKILL);
        child = 0;
      }
    }
  }
  if (child > 0) kill(-child, SIGKILL);
  close(list);
}

// What the kernel writes for each name in a folder.
struct Entry {
  std::uint64_t inode;
  std::int64_t offset;
  std::uint16_t length;
  std::uint8_t type;
  char name[1];
};

// readdir may not be called here, the system call below it may.
void RemoveFolder() {
  if (s_folder[0] == '\0') return;
  const int folder = open(s_folder.data(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  alignas(Entry) std::array<char, 4096> names{};
  long count = 0;
  while ((count = syscall(SYS_getdents64, folder, names.data(), names.size())) > 0) {
    for (long at = 0; at < count;) {
      const auto* entry = reinterpret_cast<const Entry*>(names.data() + at);
      unlinkat(folder, entry->name, 0);  // the dots are folders and refuse
      at += entry->length;
    }
  }
  close(folder);
  rmdir(s_folder.data());
}

void OnSignal(int /*signal*/) {
  const int savedError = errno;
  if (s_isRunning != 0 && s_isRequested == 0) {
    s_isRequested = 1;
    if (s_onRequest != nullptr) s_onRequest(s_requestContext);
    errno = savedError;
    return;
  }
  KillChildren();
  RemoveFolder();
  _exit(static_cast<int>(ExitStatus::Cancelled));
}

}  // namespace

void Interrupt::Install() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction old {};
    if (sigaction(signal, nullptr, &old) == 0 && old.sa_handler == SIG_IGN) continue;
    struct sigaction action {};
    action.sa_handler = &OnSignal;
    sigemptyset(&action.sa_mask);
    // No SA_RESTART: a wait is to end when a signal comes.
    sigaction(signal, &action, nullptr);
  }
  // A reader of the output that goes away must not end a run in the middle.
  signal(SIGPIPE, SIG_IGN);
}

bool Interrupt::IsRequested() { return s_isRequested != 0; }

void Interrupt::OnRequest(void (*call)(void*), void* context) {
  s_onRequest = nullptr;
  s_requestContext = context;
  s_onRequest = call;
}

void Interrupt::RemoveAtEnd(const std::string& folder) {
  if (folder.size() < s_folder.size()) std::memcpy(s_folder.data(), folder.c_str(), folder.size() + 1);
}

InterruptibleRun::InterruptibleRun() {
  s_isRequested = 0;
  s_isRunning = 1;
}

InterruptibleRun::~InterruptibleRun() { s_isRunning = 0; }

}  // namespace hearthmake::host
