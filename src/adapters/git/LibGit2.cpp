#include "adapters/git/LibGit2.hpp"

#include <dlfcn.h>

#include <string>

#include "adapters/git/GitFailure.hpp"

namespace hearthmake::git {

namespace {

// Its number grows with each incompatible release, and is that of the headers.
constexpr const char* kFile = "libgit2.so." LIBGIT2_SOVERSION;

std::string LoaderError() {
  const char* words = dlerror();
  return words == nullptr ? "it can't be loaded" : words;
}

}  // namespace

LibGit2::LibGit2(const char* file) : m_library(dlopen(file, RTLD_NOW | RTLD_LOCAL)) {
  if (m_library == nullptr) {
    Fail(Number::kLibraryMissing, "Source control needs libgit2, which can't be loaded: " + LoaderError() +
                                      ". Install the package that has " + file + ".");
  }
  reinterpret_cast<decltype(&git_libgit2_init)>(Function("git_libgit2_init"))();
  // A blob's hash is not computed anew each time it is read; git itself does so on fsck only. What is stored
  // is protected by the checksum of its compression.
  reinterpret_cast<decltype(&git_libgit2_opts)>(Function("git_libgit2_opts"))(
      GIT_OPT_ENABLE_STRICT_HASH_VERIFICATION, 0);
}

void* LibGit2::Function(const char* name) const {
  void* function = dlsym(m_library, name);
  if (function == nullptr) Fail(Number::kFunctionMissing, LoaderError());
  return function;
}

const LibGit2& LibGit2::Loaded() {
  static const LibGit2 library(kFile);
  return library;
}

}  // namespace hearthmake::git
