#include "adapters/git/ObjectCopy.hpp"

#include <vector>

#include "adapters/git/GitFailure.hpp"

namespace hearthmake::git {

namespace {

constexpr int kDeepest = 1024;  // of folders in folders

bool Exists(const Repository& repository, const git_oid& id) {
  return git_odb_exists(repository.Objects(), &id) != 0;
}

// Piece by piece where the store can read so, which it can for what was written lately.
bool CopyBlobByPieces(const Repository& from, const Repository& to, const git_oid& id) {
  Handle<git_odb_stream> reader;
  std::size_t size = 0;
  git_object_t type = GIT_OBJECT_ANY;
  if (git_odb_open_rstream(Out(reader), &size, &type, from.Objects(), &id) != 0) return false;
  Handle<git_odb_stream> writer;
  Check(git_odb_open_wstream(Out(writer), to.Objects(), size, type), "blob");
  std::vector<char> buffer(1 << 16);
  for (std::size_t done = 0; done < size;) {
    const int count = git_odb_stream_read(reader.get(), buffer.data(), buffer.size());
    if (count <= 0) FailGit(count, "blob");
    Check(git_odb_stream_write(writer.get(), buffer.data(), static_cast<std::size_t>(count)), "blob");
    done += static_cast<std::size_t>(count);
  }
  git_oid written{};
  Check(git_odb_stream_finalize_write(&written, writer.get()), "blob");
  return true;
}

void CopyRaw(const Repository& from, const Repository& to, const git_oid& id) {
  Handle<git_odb_object> object;
  Check(git_odb_read(Out(object), from.Objects(), &id), "object");
  git_oid written{};
  Check(git_odb_write(&written, to.Objects(), git_odb_object_data(object.get()),
                      git_odb_object_size(object.get()), git_odb_object_type(object.get())),
        "object");
}

void Copy(const Repository& from, const Repository& to, const git_oid& id, int depth);

void CopyTree(const Repository& from, const Repository& to, const git_oid& id, int depth) {
  const Handle<git_tree> tree = from.Tree(id);
  for (std::size_t i = 0; i < git_tree_entrycount(tree.get()); ++i) {
    const git_tree_entry* entry = git_tree_entry_byindex(tree.get(), i);
    if (git_tree_entry_type(entry) != GIT_OBJECT_COMMIT) Copy(from, to, *git_tree_entry_id(entry), depth + 1);
  }
}

void CopyCommit(const Repository& from, const Repository& to, const git_oid& id, int depth) {
  const Handle<git_commit> commit = from.Commit(id);
  for (unsigned i = 0; i < git_commit_parentcount(commit.get()); ++i) {
    if (!Exists(to, *git_commit_parent_id(commit.get(), i)))
      Fail(Number::kGitFailed, "The history of the remote has been replaced; try again");
  }
  Copy(from, to, *git_commit_tree_id(commit.get()), depth + 1);
}

void CopyTag(const Repository& from, const Repository& to, const git_oid& id, int depth) {
  Handle<git_tag> tag;
  Check(git_tag_lookup(Out(tag), from.Get(), &id), "tag");
  Copy(from, to, *git_tag_target_id(tag.get()), depth + 1);
}

void Copy(const Repository& from, const Repository& to, const git_oid& id, int depth) {
  if (Exists(to, id)) return;
  if (depth > kDeepest) Fail(Number::kGitFailed, "The tree is nested too deeply");
  std::size_t size = 0;
  git_object_t type = GIT_OBJECT_ANY;
  Check(git_odb_read_header(&size, &type, from.Objects(), &id), "object");
  if (type == GIT_OBJECT_COMMIT) CopyCommit(from, to, id, depth);
  if (type == GIT_OBJECT_TREE) CopyTree(from, to, id, depth);
  if (type == GIT_OBJECT_TAG) CopyTag(from, to, id, depth);
  if (type == GIT_OBJECT_BLOB && CopyBlobByPieces(from, to, id)) return;
  CopyRaw(from, to, id);
}

}  // namespace

void CopyObject(const Repository& from, const Repository& to, const git_oid& id) { Copy(from, to, id, 0); }

}  // namespace hearthmake::git
