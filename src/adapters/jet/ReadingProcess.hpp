#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "adapters/jet/FileHeader.hpp"
#include "adapters/jet/RowSink.hpp"

namespace hearthmake::jet {

// Reads a database in a process of its own, which is our own program started anew: a file that was made to
// do harm can end that process, but not ours, and has little time and memory to itself.
class ReadingProcess {
 public:
  struct Options {
    // One whose main calls ServeReading. Empty: a mere copy of this process, which is quicker to make and
    // only for processes of one thread.
    std::string program;
    std::vector<std::string> tables;       // those to read
    std::function<bool()> isStopWanted;    // asked several times a second; may be empty
    std::uint32_t secondsOfProcessor = 0;  // 0: by the size of the file
    std::uint32_t megabytes = 256;
  };

  // Errors: 3051 the file can't be opened, or the process not be started; else those of MdbFile.
  ReadingProcess(const std::string& path, Options options);
  ~ReadingProcess();
  ReadingProcess(const ReadingProcess&) = delete;
  ReadingProcess& operator=(const ReadingProcess&) = delete;

  const FileHeader& Header() const { return m_header; }
  // What MdbFile::Read gives. Further errors: 3049 the process has ended early, 3059 a stop was wanted.
  void Read(RowSink& sink);

 private:
  void Open(const std::string& path);
  void Start();
  std::size_t Take(char* buffer, std::size_t size);
  [[noreturn]] void RaiseEnded();
  int Wait();
  void Kill();

  Options m_options;
  FileHeader m_header;
  std::uint64_t m_size = 0;
  int m_file = -1;
  int m_pipe = -1;
  int m_child = -1;
};

// The other end: to be called first in main. Where the arguments say so it reads the database on standard
// input, prints its rows, and gives the status to end with; else nothing.
std::optional<int> ServeReading(int argc, const char* const* argv);

}  // namespace hearthmake::jet
