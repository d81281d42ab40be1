#pragma once

#include <git2.h>

#include <atomic>

namespace hearthmake::git {

// The library libgit2 in this process. It brings network, encryption and Kerberos libraries along whose
// loading takes longer than most commands, so it is loaded when the first of its functions is called.
class LibGit2 {
 public:
  // Loads a shared library and readies it. Error 48 when it can't be loaded, with the system's reason.
  explicit LibGit2(const char* file);

  // Error 453 where the library has no such function.
  void* Function(const char* name) const;

  // The one whose declarations were compiled with, loaded by the first call that succeeds; it stays for the
  // life of the process.
  static const LibGit2& Loaded();

 private:
  void* m_library;
};

// A function of libgit2, looked up by its name when it is called first.
template <class Signature>
class LateFunction;

template <class Result, class... Parameters>
class LateFunction<Result(Parameters...)> {
 public:
  constexpr explicit LateFunction(const char* name) : m_name(name) {}

  Result operator()(Parameters... arguments) {
    auto function = m_function.load(std::memory_order_relaxed);
    if (function == nullptr) {
      function = reinterpret_cast<Pointer>(LibGit2::Loaded().Function(m_name));
      m_function.store(function, std::memory_order_relaxed);
    }
    return function(arguments...);
  }

 private:
  using Pointer = Result (*)(Parameters...);

  const char* m_name;
  std::atomic<Pointer> m_function = nullptr;
};

// They stand for the functions of the same names everywhere in this namespace. One that is not in the list
// does not link.
#define HEARTHMAKE_LATE(function) inline constinit LateFunction<decltype(::function)> function(#function)
HEARTHMAKE_LATE(git_commit_author);
HEARTHMAKE_LATE(git_commit_committer);
HEARTHMAKE_LATE(git_commit_create);
HEARTHMAKE_LATE(git_commit_free);
HEARTHMAKE_LATE(git_commit_id);
HEARTHMAKE_LATE(git_commit_lookup);
HEARTHMAKE_LATE(git_commit_message);
HEARTHMAKE_LATE(git_commit_parent_id);
HEARTHMAKE_LATE(git_commit_parentcount);
HEARTHMAKE_LATE(git_commit_time);
HEARTHMAKE_LATE(git_commit_tree_id);
HEARTHMAKE_LATE(git_config_free);
HEARTHMAKE_LATE(git_config_get_string);
HEARTHMAKE_LATE(git_credential_ssh_key_from_agent);
HEARTHMAKE_LATE(git_credential_ssh_key_new);
HEARTHMAKE_LATE(git_credential_username_new);
HEARTHMAKE_LATE(git_credential_userpass_plaintext_new);
HEARTHMAKE_LATE(git_error_last);
HEARTHMAKE_LATE(git_error_set_oom);
HEARTHMAKE_LATE(git_error_set_str);
HEARTHMAKE_LATE(git_index_add);
HEARTHMAKE_LATE(git_index_free);
HEARTHMAKE_LATE(git_index_get_bypath);
HEARTHMAKE_LATE(git_index_read);
HEARTHMAKE_LATE(git_index_write);
HEARTHMAKE_LATE(git_object_free);
HEARTHMAKE_LATE(git_object_id);
HEARTHMAKE_LATE(git_object_lookup);
HEARTHMAKE_LATE(git_object_peel);
HEARTHMAKE_LATE(git_object_type);
HEARTHMAKE_LATE(git_odb_exists);
HEARTHMAKE_LATE(git_odb_free);
HEARTHMAKE_LATE(git_odb_hash);
HEARTHMAKE_LATE(git_odb_hashfile);
HEARTHMAKE_LATE(git_odb_object_data);
HEARTHMAKE_LATE(git_odb_object_free);
HEARTHMAKE_LATE(git_odb_object_size);
HEARTHMAKE_LATE(git_odb_object_type);
HEARTHMAKE_LATE(git_odb_open_rstream);
HEARTHMAKE_LATE(git_odb_open_wstream);
HEARTHMAKE_LATE(git_odb_read);
HEARTHMAKE_LATE(git_odb_read_header);
HEARTHMAKE_LATE(git_odb_stream_finalize_write);
HEARTHMAKE_LATE(git_odb_stream_free);
HEARTHMAKE_LATE(git_odb_stream_read);
HEARTHMAKE_LATE(git_odb_stream_write);
HEARTHMAKE_LATE(git_odb_write);
HEARTHMAKE_LATE(git_oid_cmp);
HEARTHMAKE_LATE(git_oid_equal);
HEARTHMAKE_LATE(git_oid_is_zero);
HEARTHMAKE_LATE(git_oid_pathfmt);
HEARTHMAKE_LATE(git_oid_tostr);
HEARTHMAKE_LATE(git_reference_free);
HEARTHMAKE_LATE(git_reference_iterator_free);
HEARTHMAKE_LATE(git_reference_iterator_glob_new);
HEARTHMAKE_LATE(git_reference_lookup);
HEARTHMAKE_LATE(git_reference_name);
HEARTHMAKE_LATE(git_reference_name_is_valid);
HEARTHMAKE_LATE(git_reference_name_to_id);
HEARTHMAKE_LATE(git_reference_next);
HEARTHMAKE_LATE(git_reference_symbolic_target);
HEARTHMAKE_LATE(git_reference_target);
HEARTHMAKE_LATE(git_remote_create_with_opts);
HEARTHMAKE_LATE(git_remote_fetch);
HEARTHMAKE_LATE(git_remote_free);
HEARTHMAKE_LATE(git_remote_push);
HEARTHMAKE_LATE(git_repository_commondir);
HEARTHMAKE_LATE(git_repository_config_snapshot);
HEARTHMAKE_LATE(git_repository_free);
HEARTHMAKE_LATE(git_repository_index);
HEARTHMAKE_LATE(git_repository_is_bare);
HEARTHMAKE_LATE(git_repository_odb);
HEARTHMAKE_LATE(git_repository_open);
HEARTHMAKE_LATE(git_repository_workdir);
HEARTHMAKE_LATE(git_signature_free);
HEARTHMAKE_LATE(git_signature_now);
HEARTHMAKE_LATE(git_tag_annotation_create);
HEARTHMAKE_LATE(git_tag_free);
HEARTHMAKE_LATE(git_tag_lookup);
HEARTHMAKE_LATE(git_tag_message);
HEARTHMAKE_LATE(git_tag_tagger);
HEARTHMAKE_LATE(git_tag_target_id);
HEARTHMAKE_LATE(git_transaction_commit);
HEARTHMAKE_LATE(git_transaction_free);
HEARTHMAKE_LATE(git_transaction_lock_ref);
HEARTHMAKE_LATE(git_transaction_new);
HEARTHMAKE_LATE(git_transaction_remove);
HEARTHMAKE_LATE(git_transaction_set_target);
HEARTHMAKE_LATE(git_tree_entry_byindex);
HEARTHMAKE_LATE(git_tree_entry_byname);
HEARTHMAKE_LATE(git_tree_entry_filemode);
HEARTHMAKE_LATE(git_tree_entry_id);
HEARTHMAKE_LATE(git_tree_entry_name);
HEARTHMAKE_LATE(git_tree_entry_type);
HEARTHMAKE_LATE(git_tree_entrycount);
HEARTHMAKE_LATE(git_tree_free);
HEARTHMAKE_LATE(git_tree_lookup);
HEARTHMAKE_LATE(git_treebuilder_free);
HEARTHMAKE_LATE(git_treebuilder_insert);
HEARTHMAKE_LATE(git_treebuilder_new);
HEARTHMAKE_LATE(git_treebuilder_write);
#undef HEARTHMAKE_LATE

}  // namespace hearthmake::git
