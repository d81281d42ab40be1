#include "adapters/git/BlobReader.hpp"

#include <sys/stat.h>

#include <vector>

#include "adapters/git/GitFailure.hpp"

namespace hearthmake::git {

namespace {

constexpr off_t kLarge = 4 << 20;  // compressed, in a file of its own

// Only an object that has a file of its own can be read piece by piece.
bool IsLargeLoose(const Repository& repository, const git_oid& id) {
  char name[GIT_OID_HEXSZ + 2] = {};
  git_oid_pathfmt(name, &id);
  struct stat status {};
  return stat((repository.Folder() + "/objects/" + name).c_str(), &status) == 0 && status.st_size > kLarge;
}

void CopyByPieces(const Repository& repository, const git_oid& id, NewFile& file) {
  Handle<git_odb_stream> stream;
  std::size_t size = 0;
  git_object_t type = GIT_OBJECT_ANY;
  Check(git_odb_open_rstream(Out(stream), &size, &type, repository.Objects(), &id), "blob");
  std::vector<char> buffer(1 << 20);
  for (std::size_t done = 0; done < size;) {
    const int count = git_odb_stream_read(stream.get(), buffer.data(), buffer.size());
    if (count <= 0) FailGit(count, "blob");
    file.Write(buffer.data(), static_cast<std::size_t>(count));
    done += static_cast<std::size_t>(count);
  }
}

}  // namespace

void CopyBlob(const Repository& repository, const git_oid& id, NewFile& file) {
  if (IsLargeLoose(repository, id)) {
    CopyByPieces(repository, id, file);
    return;
  }
  Handle<git_odb_object> object;
  Check(git_odb_read(Out(object), repository.Objects(), &id), "blob");
  file.Write(git_odb_object_data(object.get()), git_odb_object_size(object.get()));
}

}  // namespace hearthmake::git
