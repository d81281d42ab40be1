#include "adapters/posix/WineRegistry.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

using platform::RegistryRoot;
using platform::RegistryType;
using support::PosixFolder;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string Hive(const std::string& base, const std::string& arch, const std::string& keys = {}) {
  return "WINE REGISTRY Version 2\n;; All keys relative to " + base + "\n\n#arch=" + arch + "\n\n" + keys;
}

void MakePrefix(const PosixFolder& folder, const std::string& arch, const std::string& machineKeys = {},
                const std::string& userKeys = {}) {
  folder.MakeFile("prefix/system.reg", Hive("\\\\Machine", arch, machineKeys));
  folder.MakeFile("prefix/user.reg", Hive("\\\\User\\\\S-1-5-21-0-0-0-1000", arch, userKeys));
  folder.MakeFile("prefix/userdef.reg", Hive("\\\\User\\\\.Default", arch));
}

class WineRegistryTest : public ::testing::Test {
 protected:
  WineRegistry Open() const { return WineRegistry(m_folder.Path("prefix"), m_folder.Path("servers")); }
  static std::string Text(WineRegistry& registry, RegistryRoot root, const std::string& key) {
    const auto value = registry.Query(root, key, "");
    return value ? value->data : "(none)";
  }
  std::string System() const { return m_folder.Content("prefix/system.reg"); }

  PosixFolder m_folder;
};

TEST_F(WineRegistryTest, LooksAtThe32BitViewFirst) {
  MakePrefix(m_folder, "win64",
             "[Software\\\\Classes\\\\CLSID\\\\{A}] 1\n@=\"64\"\n\n[Software\\\\Classes\\\\CLSID\\\\{B}] "
             "1\n@=\"only 64\"\n\n"
             "[Software\\\\Classes\\\\Prog.Id] 1\n@=\"shared\"\n\n"
             "[Software\\\\Classes\\\\Wow6432Node\\\\CLSID\\\\{A}] 1\n@=\"32\"\n\n"
             "[Software\\\\Microsoft\\\\V] 1\n@=\"64\"\n\n[Software\\\\Wow6432Node\\\\Microsoft\\\\V] "
             "1\n@=\"32\"\n\n");
  WineRegistry registry = Open();
  EXPECT_EQ(Text(registry, RegistryRoot::ClassesRoot, "CLSID\\{A}"), "32");
  EXPECT_EQ(Text(registry, RegistryRoot::ClassesRoot, "clsid\\{b}"), "only 64");
  EXPECT_EQ(Text(registry, RegistryRoot::ClassesRoot, "Prog.Id"), "shared");
  EXPECT_EQ(Text(registry, RegistryRoot::LocalMachine, "Software\\Classes\\CLSID\\{A}"), "32");
  EXPECT_EQ(Text(registry, RegistryRoot::LocalMachine, "SOFTWARE\\Microsoft\\V"), "32");
  EXPECT_THAT(registry.SubKeys(RegistryRoot::ClassesRoot, "CLSID"), ElementsAre("{A}", "{B}"));
}

TEST_F(WineRegistryTest, PutsTheUsersClassesBeforeTheMachines) {
  MakePrefix(m_folder, "win64", "[Software\\\\Classes\\\\Wow6432Node\\\\CLSID\\\\{A}] 1\n@=\"machine\"\n\n",
             "[Software\\\\Classes\\\\CLSID\\\\{A}] 1\n@=\"user\"\n\n");
  WineRegistry registry = Open();
  EXPECT_EQ(Text(registry, RegistryRoot::ClassesRoot, "CLSID\\{A}"), "user");
}

TEST_F(WineRegistryTest, TakesA32BitPrefixAsItStands) {
  MakePrefix(m_folder, "win32",
             "[Software\\\\Classes\\\\CLSID\\\\{A}] 1\n@=\"plain\"\n\n"
             "[Software\\\\Classes\\\\Wow6432Node\\\\CLSID\\\\{A}] 1\n@=\"wow\"\n\n");
  WineRegistry registry = Open();
  EXPECT_EQ(Text(registry, RegistryRoot::ClassesRoot, "CLSID\\{A}"), "plain");
}

TEST_F(WineRegistryTest, MakesNewClassesWhereA32BitProgramMakesThem) {
  MakePrefix(m_folder, "win64", "[Software\\\\Classes\\\\Wow6432Node\\\\TypeLib\\\\{T}] 1\n\n");
  WineRegistry registry = Open();
  for (const char* key : {"CLSID\\{N}", "TypeLib\\{N}", "Prog.Id"})
    registry.Set(RegistryRoot::ClassesRoot, key, "", {RegistryType::String, "new"});
  EXPECT_THAT(System(), HasSubstr("[Software\\\\Classes\\\\Wow6432Node\\\\CLSID\\\\{N}] "));
  EXPECT_THAT(System(), HasSubstr("[Software\\\\Classes\\\\Wow6432Node\\\\TypeLib\\\\{N}] "));
  EXPECT_THAT(System(), HasSubstr("[Software\\\\Classes\\\\Prog.Id] "));
}

TEST_F(WineRegistryTest, KnowsTheUsersThatHaveFiles) {
  MakePrefix(m_folder, "win64", {}, "[Environment] 1\n@=\"mine\"\n\n");
  WineRegistry registry = Open();
  EXPECT_EQ(Text(registry, RegistryRoot::Users, "S-1-5-21-0-0-0-1000\\Environment"), "mine");
  registry.Set(RegistryRoot::Users, ".default\\X", "", {RegistryType::String, "x"});
  EXPECT_THAT(m_folder.Content("prefix/userdef.reg"), HasSubstr("[X] "));
  EXPECT_FALSE(registry.KeyExists(RegistryRoot::Users, "S-1-5-18"));
  EXPECT_THROW(registry.Set(RegistryRoot::Users, "S-1-5-18", "", {}), automation::Error);
}

TEST_F(WineRegistryTest, ReadsAgainWhenWineHasWritten) {
  MakePrefix(m_folder, "win32", "[Software\\\\A] 1\n@=\"1\"\n\n");
  WineRegistry registry = Open();
  EXPECT_EQ(Text(registry, RegistryRoot::LocalMachine, "Software\\A"), "1");
  MakePrefix(m_folder, "win32", "[Software\\\\A] 2\n@=\"changed\"\n\n");
  EXPECT_EQ(Text(registry, RegistryRoot::LocalMachine, "Software\\A"), "changed");
}

TEST_F(WineRegistryTest, FindsNothingWhereThereIsNoPrefix) {
  WineRegistry registry = Open();
  EXPECT_EQ(Text(registry, RegistryRoot::LocalMachine, "Software"), "(none)");
  EXPECT_FALSE(registry.KeyExists(RegistryRoot::ClassesRoot, ""));
  m_folder.MakeFolder("prefix");
  try {
    registry.Set(RegistryRoot::LocalMachine, "Software\\A", "", {RegistryType::String, "x"});
    FAIL();
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 76);
    EXPECT_THAT(error.Description(), HasSubstr("system.reg"));
  }
}

TEST_F(WineRegistryTest, ReadsNothingFromAFileThatIsNoHive) {
  MakePrefix(m_folder, "win32");
  m_folder.MakeFile("prefix/system.reg", "nonsense");
  WineRegistry registry = Open();
  EXPECT_EQ(Text(registry, RegistryRoot::LocalMachine, "Software\\A"), "(none)");
  EXPECT_THROW(registry.Set(RegistryRoot::LocalMachine, "Software\\A", "", {RegistryType::String, "x"}),
               automation::Error);
  EXPECT_EQ(System(), "nonsense");
}

// What a server does before it reads the registry.
class FakeServer {
 public:
  FakeServer(const std::string& prefix, const std::string& servers) {
    struct stat status {};
    EXPECT_EQ(stat(prefix.c_str(), &status), 0);
    char name[64];
    std::snprintf(name, sizeof name, "/server-%jx-%jx", static_cast<std::uintmax_t>(status.st_dev),
                  static_cast<std::uintmax_t>(status.st_ino));
    std::filesystem::create_directories(servers + name);
    const std::string path = servers + name + "/lock";
    int ready[2];
    EXPECT_EQ(pipe(ready), 0);
    m_process = fork();
    if (m_process == 0) {
      const int file = open(path.c_str(), O_CREAT | O_RDWR, 0600);
      struct flock lock {};
      lock.l_type = F_WRLCK;
      lock.l_len = 1;
      const bool locked = fcntl(file, F_SETLK, &lock) == 0;
      if (locked && write(ready[1], "x", 1) == 1) pause();
      _exit(0);
    }
    close(ready[1]);
    char byte;
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    close(ready[0]);
  }
  ~FakeServer() {
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
  }

 private:
  pid_t m_process;
};

TEST_F(WineRegistryTest, WritesNothingWhileAServerRuns) {
  MakePrefix(m_folder, "win32", "[Software\\\\A] 1\n@=\"1\"\n\n");
  WineRegistry registry = Open();
  const std::string before = System();
  {
    const FakeServer server(m_folder.Path("prefix"), m_folder.Path("servers"));
    EXPECT_EQ(Text(registry, RegistryRoot::LocalMachine, "Software\\A"), "1");
    try {
      registry.Set(RegistryRoot::LocalMachine, "Software\\A", "", {RegistryType::String, "2"});
      FAIL();
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Number(), 70);
      EXPECT_THAT(error.Description(), HasSubstr("wineserver -k"));
    }
    EXPECT_THROW(registry.RemoveKey(RegistryRoot::LocalMachine, "Software\\A"), automation::Error);
    EXPECT_EQ(System(), before);
  }
  registry.Set(RegistryRoot::LocalMachine, "Software\\A", "", {RegistryType::String, "2"});
  EXPECT_THAT(System(), HasSubstr("@=\"2\""));
}

TEST_F(WineRegistryTest, ReadsARealPrefix) {
  const char* prefix = std::getenv("WINEPREFIX");
  if (prefix == nullptr || !std::filesystem::exists(std::string(prefix) + "/system.reg"))
    GTEST_SKIP() << "there is no Wine prefix here (WINEPREFIX)";
  WineRegistry registry(prefix, m_folder.Path("servers"));
  EXPECT_TRUE(registry.KeyExists(RegistryRoot::ClassesRoot, "CLSID"));
  EXPECT_FALSE(registry.SubKeys(RegistryRoot::LocalMachine, "Software\\Microsoft").empty());
}

}  // namespace
}  // namespace hearthmake::posix
