#include "adapters/git/GitFailure.hpp"

#include <cerrno>
#include <cstring>
#include <utility>

#include "adapters/git/Handle.hpp"

namespace hearthmake::git {

namespace {

std::int32_t NumberOf(int code) {
  switch (code) {
    case GIT_ENOTFOUND: return Number::kNotFound;
    case GIT_EAUTH:
    case GIT_ECERTIFICATE:
    case GIT_ELOCKED:
    case GIT_EOWNER: return Number::kPermissionDenied;
    case GIT_EINVALIDSPEC: return Number::kInvalidArgument;
    default: return Number::kGitFailed;
  }
}

std::int32_t NumberOfErrno(int error) {
  switch (error) {
    case ENOENT: return Number::kPathNotFound;
    case ENOMEM: return static_cast<std::int32_t>(automation::RuntimeError::OutOfMemory);
    case ENOSPC:
    case EDQUOT: return static_cast<std::int32_t>(automation::RuntimeError::DiskFull);
    case EACCES:
    case EPERM:
    case EROFS: return Number::kPermissionDenied;
    default: return Number::kPathAccess;
  }
}

}  // namespace

void Fail(std::int32_t number, std::string text) { automation::Raise(number, "git", std::move(text)); }

void FailErrno(int error, const std::string& path) {
  Fail(NumberOfErrno(error), path + ": " + std::strerror(error));
}

void FailGit(int code, const std::string& what) {
  const git_error* last = git_error_last();
  const std::string words = last == nullptr || last->message == nullptr ? "git failed" : last->message;
  Fail(NumberOf(code), what.empty() ? words : what + ": " + words);
}

}  // namespace hearthmake::git
