#include "adapters/posix/ChildStart.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "adapters/posix/FileDescriptor.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

using support::PosixFolder;

// Starts a program with all three streams on a file, and waits for its end: its wait status.
int RunInto(const std::string& file, std::vector<std::string> words) {
  const FileDescriptor output(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const pid_t child =
      StartChild({arguments[0], arguments.data(), environ, {output.Get(), output.Get(), output.Get()}});
  int status = -1;
  EXPECT_GT(child, 0);
  if (child > 0) waitpid(child, &status, 0);
  return status;
}

TEST(ChildStart, GivesTheChildItsStreams) {
  const PosixFolder folder;
  EXPECT_EQ(RunInto(folder.Path("out"), {"/bin/sh", "-c", "echo one; echo two >&2"}), 0);
  EXPECT_EQ(folder.Content("out"), "one\ntwo\n");
}

TEST(ChildStart, SaysWhyAProgramWasNotStarted) {
  const char* arguments[] = {"/no/such/program", nullptr};
  errno = 0;
  EXPECT_EQ(StartChild({arguments[0],
                        const_cast<char* const*>(arguments),
                        environ,
                        {ChildStart::kAsOurs, ChildStart::kAsOurs, ChildStart::kAsOurs}}),
            0);
  EXPECT_EQ(errno, ENOENT);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "the child that failed is left behind";
}

TEST(ChildStart, LeavesNoSignalBlockedOrIgnoredInTheChildAndAllAsTheyWereHere) {
  const PosixFolder folder;
  const auto oldHandler = ::signal(SIGUSR1, [](int) {});
  const auto oldPipe = ::signal(SIGPIPE, SIG_IGN);
  sigset_t before;
  pthread_sigmask(SIG_SETMASK, nullptr, &before);
  RunInto(folder.Path("out"), {"/bin/grep", "-E", "Sig(Ign|Blk)", "/proc/self/status"});
  sigset_t after;
  pthread_sigmask(SIG_SETMASK, nullptr, &after);
  for (const int signal : {SIGINT, SIGUSR1, SIGTERM, SIGCHLD})
    EXPECT_EQ(sigismember(&before, signal), sigismember(&after, signal)) << signal;
  EXPECT_NE(::signal(SIGUSR1, oldHandler), SIG_DFL);
  EXPECT_EQ(::signal(SIGPIPE, oldPipe), SIG_IGN);
  const std::string none = "0000000000000000\n";
  EXPECT_EQ(folder.Content("out"), "SigBlk:\t" + none + "SigIgn:\t" + none);
}

TEST(ChildStart, MakesTheChildTheLeaderOfAGroup) {
  const PosixFolder folder;
  RunInto(folder.Path("out"), {"/bin/sh", "-c", "set -- $(cat /proc/$$/stat); test $1 = $5 && echo leader"});
  EXPECT_EQ(folder.Content("out"), "leader\n");
}

}  // namespace
}  // namespace hearthmake::posix
