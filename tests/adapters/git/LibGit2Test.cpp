#include "adapters/git/LibGit2.hpp"

#include <gtest/gtest.h>

#include "support/ErrorExpect.hpp"

namespace hearthmake::git {
namespace {

using support::ErrorOf;

TEST(LibGit2, TellsWhichFileCantBeLoadedAndWhatToInstall) {
  const automation::Error error = ErrorOf([] { LibGit2("libgit2.so.0.0"); });
  EXPECT_EQ(error.Number(), 48);
  EXPECT_EQ(error.Description(),
            "Source control needs libgit2, which can't be loaded: libgit2.so.0.0: cannot open shared object "
            "file: No such file or directory. Install the package that has libgit2.so.0.0.");
}

TEST(LibGit2, IsTheOneWhoseDeclarationsWereCompiledWith) {
  const auto version =
      reinterpret_cast<decltype(&::git_libgit2_version)>(LibGit2::Loaded().Function("git_libgit2_version"));
  int major = 0;
  int minor = 0;
  int revision = 0;
  version(&major, &minor, &revision);
  EXPECT_EQ(major, LIBGIT2_VER_MAJOR);
  EXPECT_EQ(minor, LIBGIT2_VER_MINOR);
}

TEST(LibGit2, NamesAFunctionThatTheLibraryLacks) {
  const automation::Error error = ErrorOf([] { LibGit2::Loaded().Function("git_nothing"); });
  EXPECT_EQ(error.Number(), 453);
  EXPECT_NE(error.Description().find("git_nothing"), std::string::npos) << error.Description();
}

}  // namespace
}  // namespace hearthmake::git
