#include "adapters/posix/StandardPipes.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <utility>

namespace hearthmake::posix {

namespace {

// Above the standard descriptors, which a host may have closed.
FileDescriptor Raised(FileDescriptor end) {
  if (end.Get() > STDERR_FILENO) return end;
  return FileDescriptor(::fcntl(end.Get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

}  // namespace

StandardPipes::StandardPipes() {
  m_isComplete = MakePipe(STDIN_FILENO) && MakePipe(STDOUT_FILENO) && MakePipe(STDERR_FILENO);
}

std::array<int, 3> StandardPipes::ChildStreams() const {
  return {m_childs[0].Get(), m_childs[1].Get(), m_childs[2].Get()};
}

bool StandardPipes::MakePipe(int standardStream) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  FileDescriptor reader = Raised(FileDescriptor(ends[0]));
  FileDescriptor writer = Raised(FileDescriptor(ends[1]));
  if (!reader || !writer) return false;
  if (standardStream != STDIN_FILENO) std::swap(reader, writer);
  const auto index = static_cast<std::size_t>(standardStream);
  m_childs[index] = std::move(reader);
  m_ours[index] = std::move(writer);
  return true;
}

FileDescriptor StandardPipes::TakeOurEnd(int standardStream) {
  return std::move(m_ours[static_cast<std::size_t>(standardStream)]);
}

}  // namespace hearthmake::posix
