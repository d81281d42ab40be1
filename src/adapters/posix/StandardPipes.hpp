#pragma once

#include <array>

#include "adapters/posix/FileDescriptor.hpp"

namespace hearthmake::posix {

// Three pipes to become the standard streams of a child. Both ends are closed in other children.
class StandardPipes {
 public:
  StandardPipes();
  StandardPipes(const StandardPipes&) = delete;
  StandardPipes& operator=(const StandardPipes&) = delete;

  // False when the system has no more descriptors.
  explicit operator bool() const { return m_isComplete; }
  // The ends that the child is to have as its standard input, output and error.
  std::array<int, 3> ChildStreams() const;
  // Of 0 the writing end, of 1 and 2 the reading one.
  FileDescriptor TakeOurEnd(int standardStream);

 private:
  bool MakePipe(int standardStream);

  bool m_isComplete = false;
  std::array<FileDescriptor, 3> m_ours;
  std::array<FileDescriptor, 3> m_childs;
};

}  // namespace hearthmake::posix
