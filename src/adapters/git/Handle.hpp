#pragma once

#include <memory>

#include "adapters/git/LibGit2.hpp"

namespace hearthmake::git {

// Gives the library's objects back.
struct Release {
  void operator()(git_commit* p) const { git_commit_free(p); }
  void operator()(git_config* p) const { git_config_free(p); }
  void operator()(git_index* p) const { git_index_free(p); }
  void operator()(git_object* p) const { git_object_free(p); }
  void operator()(git_odb* p) const { git_odb_free(p); }
  void operator()(git_odb_object* p) const { git_odb_object_free(p); }
  void operator()(git_odb_stream* p) const { git_odb_stream_free(p); }
  void operator()(git_odb_writepack* p) const { p->free(p); }
  void operator()(git_packbuilder* p) const { git_packbuilder_free(p); }
  void operator()(git_reference* p) const { git_reference_free(p); }
  void operator()(git_reference_iterator* p) const { git_reference_iterator_free(p); }
  void operator()(git_remote* p) const { git_remote_free(p); }
  void operator()(git_repository* p) const { git_repository_free(p); }
  void operator()(git_revwalk* p) const { git_revwalk_free(p); }
  void operator()(git_signature* p) const { git_signature_free(p); }
  void operator()(git_tag* p) const { git_tag_free(p); }
  void operator()(git_transaction* p) const { git_transaction_free(p); }
  void operator()(git_tree* p) const { git_tree_free(p); }
  void operator()(git_treebuilder* p) const { git_treebuilder_free(p); }
};

template <class T>
using Handle = std::unique_ptr<T, Release>;

// Lets a function of the library fill a handle: git_repository_open(Out(repository), path).
template <class T>
class Out {
 public:
  explicit Out(Handle<T>& handle) : m_handle(handle) {}
  Out(const Out&) = delete;
  Out& operator=(const Out&) = delete;
  ~Out() { m_handle.reset(m_raw); }

  operator T**() { return &m_raw; }  // NOLINT(google-explicit-constructor): that is its purpose

 private:
  Handle<T>& m_handle;
  T* m_raw = nullptr;
};

}  // namespace hearthmake::git
