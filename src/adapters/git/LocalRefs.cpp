#include "adapters/git/LocalRefs.hpp"

#include <chrono>
#include <thread>

#include "adapters/git/GitFailure.hpp"
#include "adapters/git/WriteLock.hpp"

namespace hearthmake::git {

namespace {

// git itself may hold a ref for a moment, "git gc" all packed ones for longer.
constexpr auto kPatience = std::chrono::seconds(5);
constexpr auto kPause = std::chrono::milliseconds(5);

void LockRef(git_transaction* transaction, const std::string& name) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (true) {
    const int code = git_transaction_lock_ref(transaction, name.c_str());
    if (code != GIT_ELOCKED || std::chrono::steady_clock::now() > deadline) {
      Check(code,
            name + " can't be locked. If no git runs in the repository, remove the file " + name + ".lock");
      return;
    }
    std::this_thread::sleep_for(kPause);
  }
}

bool IsEqual(const std::optional<git_oid>& a, const std::optional<git_oid>& b) {
  return a.has_value() == b.has_value() && (!a || git_oid_equal(&*a, &*b) != 0);
}

}  // namespace

std::optional<git_oid> LocalRefs::Read(const std::string& name) {
  git_oid id{};
  const int code = git_reference_name_to_id(&id, m_repository.Get(), name.c_str());
  if (code == GIT_ENOTFOUND) return std::nullopt;
  Check(code, name);
  return id;
}

std::vector<std::pair<std::string, git_oid>> LocalRefs::List(const std::string& prefix) {
  std::vector<std::pair<std::string, git_oid>> refs;
  Handle<git_reference_iterator> iterator;
  Check(git_reference_iterator_glob_new(Out(iterator), m_repository.Get(), (prefix + "*").c_str()), prefix);
  Handle<git_reference> ref;
  while (git_reference_next(Out(ref), iterator.get()) == 0) {
    const git_oid* target = git_reference_target(ref.get());
    if (target != nullptr) refs.emplace_back(git_reference_name(ref.get()), *target);
  }
  return refs;
}

bool LocalRefs::Change(const std::string& name, const std::optional<git_oid>& from,
                       const std::optional<git_oid>& to, const git_signature* who, const char* why) {
  const WriteLock lock(m_repository.Folder(), {name + ".lock", "packed-refs.lock", "HEAD.lock"});
  Handle<git_transaction> transaction;
  Check(git_transaction_new(Out(transaction), m_repository.Get()), name);
  LockRef(transaction.get(), name);
  // Only under its lock is what the ref says certain to stay so.
  if (!IsEqual(Read(name), from)) return false;
  if (to) {
    Check(git_transaction_set_target(transaction.get(), name.c_str(), &*to, who, why), name);
  } else if (from) {
    Check(git_transaction_remove(transaction.get(), name.c_str()), name);
  }
  Check(git_transaction_commit(transaction.get()), name);
  return true;
}

}  // namespace hearthmake::git
