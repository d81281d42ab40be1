#include "adapters/git/BlobWriter.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <vector>

#include "adapters/git/FileHandle.hpp"
#include "adapters/git/GitFailure.hpp"

namespace hearthmake::git {

namespace {

constexpr std::int64_t kSmall = 1 << 20;  // read at once

// Fills the buffer as far as the file goes.
std::size_t ReadFully(int file, char* buffer, std::size_t size, const std::string& shownPath) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = read(file, buffer + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) FailErrno(errno, shownPath);
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

[[noreturn]] void FailChanged(const std::string& shownPath) {
  Fail(Number::kPathAccess, shownPath + ": the file has changed while it was read");
}

std::vector<char> ReadSmall(int file, std::int64_t size, const std::string& shownPath) {
  std::vector<char> bytes(static_cast<std::size_t>(size) + 1);
  const std::size_t count = ReadFully(file, bytes.data(), bytes.size(), shownPath);
  if (count != static_cast<std::size_t>(size)) FailChanged(shownPath);
  bytes.pop_back();
  return bytes;
}

git_oid WriteByPieces(const Repository& repository, int file, std::int64_t size,
                      const std::string& shownPath) {
  Handle<git_odb_stream> stream;
  Check(git_odb_open_wstream(Out(stream), repository.Objects(), static_cast<git_object_size_t>(size),
                             GIT_OBJECT_BLOB),
        shownPath);
  std::vector<char> buffer(kSmall);
  for (std::int64_t done = 0; done < size;) {
    const std::size_t count = ReadFully(file, buffer.data(), buffer.size(), shownPath);
    if (count == 0) break;
    done += static_cast<std::int64_t>(count);
    if (done > size) FailChanged(shownPath);
    Check(git_odb_stream_write(stream.get(), buffer.data(), count), shownPath);
  }
  git_oid id{};
  if (git_odb_stream_finalize_write(&id, stream.get()) != 0) FailChanged(shownPath);
  return id;
}

}  // namespace

git_oid WriteBlob(const Repository& repository, const std::string& path, const std::string& shownPath) {
  const FileHandle file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file && errno == ENOENT) Fail(Number::kNotFound, "File not found: " + shownPath);
  struct stat status {};
  if (!file || fstat(file.Get(), &status) != 0) FailErrno(errno, shownPath);
  if (!S_ISREG(status.st_mode)) Fail(Number::kPathAccess, shownPath + " is no file");
  if (status.st_size > kSmall) return WriteByPieces(repository, file.Get(), status.st_size, shownPath);
  const std::vector<char> bytes = ReadSmall(file.Get(), status.st_size, shownPath);
  git_oid id{};
  Check(git_odb_write(&id, repository.Objects(), bytes.data(), bytes.size(), GIT_OBJECT_BLOB), shownPath);
  return id;
}

git_oid HashFile(int file, std::int64_t size, const std::string& shownPath) {
  git_oid id{};
  if (size > kSmall) {
    // The library reads piece by piece what it opens itself.
    const std::string again = "/proc/self/fd/" + std::to_string(file);
    Check(git_odb_hashfile(&id, again.c_str(), GIT_OBJECT_BLOB), shownPath);
    return id;
  }
  const std::vector<char> bytes = ReadSmall(file, size, shownPath);
  Check(git_odb_hash(&id, bytes.data(), bytes.size(), GIT_OBJECT_BLOB), shownPath);
  return id;
}

}  // namespace hearthmake::git
