#include "adapters/posix/RegistryStore.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "adapters/posix/TextEncoding.hpp"
#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

using platform::RegistryRoot;
using platform::RegistryType;
using support::PosixFolder;

constexpr RegistryRoot kUser = RegistryRoot::CurrentUser;
constexpr RegistryRoot kMachine = RegistryRoot::LocalMachine;

class RegistryStoreTest : public ::testing::Test {
 protected:
  std::string Path() const { return m_folder.Path("registry.reg"); }
  std::string Content() const { return m_folder.Content("registry.reg"); }
  static void Set(RegistryStore& store, const std::string& key, const std::string& text) {
    store.Set(kUser, key, "v", {RegistryType::String, text});
  }
  static std::string Get(RegistryStore& store, const std::string& key) {
    const auto value = store.Query(kUser, key, "v");
    return value ? value->data : "(none)";
  }
  std::string Reread(const std::string& key) const {
    RegistryStore store(Path());
    return Get(store, key);
  }

  PosixFolder m_folder;
};

TEST_F(RegistryStoreTest, WritesAFileForPeopleAndImport) {
  RegistryStore store(Path());
  store.Set(RegistryRoot::ClassesRoot, "A.B", "", {RegistryType::String, "x"});
  store.Set(RegistryRoot::ClassesRoot, "A.B", "n", {RegistryType::String, "y"});
  store.RemoveValue(RegistryRoot::ClassesRoot, "A.B", "");
  const std::string content = Content();
  EXPECT_TRUE(content.starts_with("Windows Registry Editor Version 5.00\n\n; ")) << content;
  EXPECT_TRUE(
      content.ends_with("[HKEY_LOCAL_MACHINE\\Software\\Classes\\A.B]\n@=\"x\"\n\n"
                        "[HKEY_LOCAL_MACHINE\\Software\\Classes\\A.B]\n\"n\"=\"y\"\n@=-\n"))
      << content;
}

TEST_F(RegistryStoreTest, WritesNothingWhenNothingChanges) {
  RegistryStore store(Path());
  Set(store, "k", "1");
  const std::string before = Content();
  Set(store, "K", "1");
  store.RemoveKey(kUser, "missing");
  store.RemoveValue(kUser, "k", "missing");
  EXPECT_EQ(Content(), before);
}

TEST_F(RegistryStoreTest, TakesNoLockForWhatIsSetAlready) {
  RegistryStore store(Path());
  Set(store, "k", "1");
  std::filesystem::remove(Path() + ".lock");
  Set(store, "K", "1");
  EXPECT_FALSE(std::filesystem::exists(Path() + ".lock"));
  {
    RegistryStore other(Path());
    Set(other, "k", "2");
  }
  Set(store, "k", "1");
  EXPECT_EQ(Reread("k"), "1");
}

TEST_F(RegistryStoreTest, TakesNoLockForWhatAnotherProcessHasSetAlready) {
  {
    RegistryStore store(Path());
    Set(store, "k", "1");
  }
  std::filesystem::remove(Path() + ".lock");
  RegistryStore store(Path());
  Set(store, "k", "1");
  EXPECT_FALSE(std::filesystem::exists(Path() + ".lock"));
}

TEST_F(RegistryStoreTest, SetsManyValuesAllOrNone) {
  RegistryStore store(Path());
  Set(store, "k", "1");
  const std::string before = Content();
  const auto entry = [](const std::string& key, const std::string& text) {
    return platform::RegistryEntry{key, "v", {RegistryType::String, text}};
  };
  std::string tooDeep;
  for (int i = 0; i < 600; ++i) tooDeep += "x\\";
  for (const std::string& wrong : {std::string("\n"), tooDeep}) {
    const std::vector<platform::RegistryEntry> entries = {entry("k", "2"), entry(wrong, "3")};
    EXPECT_THROW(store.SetAll(kUser, entries), automation::Error);
    EXPECT_EQ(Content(), before);
    EXPECT_EQ(Get(store, "k"), "1");
  }
  store.SetAll(kUser, std::vector{entry("K", "1")});
  EXPECT_EQ(Content(), before);
  store.SetAll(kUser, std::vector{entry("K", "1"), entry("l", "2")});
  EXPECT_EQ(Content(), before + "\n[HKEY_CURRENT_USER\\l]\n\"v\"=\"2\"\n");
  EXPECT_EQ(Reread("l"), "2");
}

TEST_F(RegistryStoreTest, ManyValuesThatAreSetAlreadyGoByWhatTheFileSaysNow) {
  RegistryStore store(Path());
  const std::vector<platform::RegistryEntry> entries = {{"k", "v", {RegistryType::String, "1"}}};
  store.SetAll(kUser, entries);
  RegistryStore other(Path());
  Set(other, "k", "2");
  store.SetAll(kUser, entries);
  EXPECT_EQ(Reread("k"), "1");
}

TEST_F(RegistryStoreTest, TheLastLineOfATextWinsWhicheverNameItsKeyHas) {
  m_folder.MakeFile("registry.reg",
                    "Windows Registry Editor Version 5.00\n\n"
                    "[HKEY_LOCAL_MACHINE\\Software\\Classes\\A]\n@=\"1\"\n\"n\"=\"x\"\n"
                    "[HKEY_CLASSES_ROOT\\A]\n@=\"2\"\n"
                    "[HKEY_CURRENT_USER\\software\\classes\\a]\n@=\"3\"\n@=-\n\"N\"=\"y\"\n"
                    "[HKEY_CURRENT_USER\\Gone]\n@=\"4\"\n[-HKEY_CURRENT_USER\\gone]\n"
                    "[HKEY_CURRENT_USER\\Gone]\n\"z\"=\"5\"\n");
  RegistryStore store(Path());
  EXPECT_EQ(store.Query(RegistryRoot::ClassesRoot, "A", "")->data, "2");
  EXPECT_EQ(store.Query(RegistryRoot::ClassesRoot, "A", "n")->data, "y");
  EXPECT_EQ(store.Query(kMachine, "Software\\Classes\\A", "n")->data, "x");
  EXPECT_FALSE(store.Query(kUser, "Gone", ""));
  EXPECT_EQ(store.Query(kUser, "Gone", "z")->data, "5");
}

TEST_F(RegistryStoreTest, ReadsAFileThatPeopleWroteAndTakesItOver) {
  m_folder.MakeFile("registry.reg", "\xFF\xFE" + Utf16FromUtf8("Windows Registry Editor Version 5.00\r\n\r\n"
                                                               "[HKEY_CURRENT_USER\\Größe]\r\n\"v\"=\"€\""));
  RegistryStore store(Path());
  EXPECT_EQ(Get(store, "Größe"), "€");
  Set(store, "k", "1");
  EXPECT_EQ(Reread("größe"), "€");
  EXPECT_EQ(Reread("k"), "1");
}

TEST_F(RegistryStoreTest, DropsALastLineThatWasCutOff) {
  {
    RegistryStore store(Path());
    Set(store, "first", "1");
    Set(store, "second", "a long text that is cut off somewhere");
  }
  const std::string whole = Content();
  const std::size_t complete = whole.find("[HKEY_CURRENT_USER\\second]");
  ASSERT_NE(complete, std::string::npos);
  for (std::size_t length = complete; length < whole.size(); ++length) {
    m_folder.MakeFile("registry.reg", whole.substr(0, length));
    RegistryStore store(Path());
    EXPECT_EQ(Get(store, "first"), "1") << length;
    EXPECT_EQ(Get(store, "second"), "(none)") << length;
    Set(store, "third", "3");
    EXPECT_EQ(Reread("first"), "1") << length;
    EXPECT_EQ(Reread("third"), "3") << length;
  }
}

TEST_F(RegistryStoreTest, WritesTheFileAnewWhenMostOfItIsOutOfDate) {
  RegistryStore store(Path());
  Set(store, "other", "kept");
  for (int i = 0; i < 5000; ++i) Set(store, "k", std::to_string(i));
  EXPECT_LT(std::filesystem::file_size(Path()), 80'000U);
  EXPECT_EQ(Reread("k"), "4999");
  EXPECT_EQ(Reread("other"), "kept");
}

TEST_F(RegistryStoreTest, GoesOnWithTheFileThatWasWrittenAnew) {
  RegistryStore store(Path());
  Set(store, "other\\deep", "kept");
  Set(store, "gone", "x");
  store.RemoveKey(kUser, "gone");
  for (int i = 0; i < 2000; ++i) Set(store, "k", std::to_string(i));
  EXPECT_EQ(Get(store, "k"), "1999");
  EXPECT_EQ(Get(store, "OTHER\\deep"), "kept");
  EXPECT_FALSE(store.KeyExists(kUser, "gone"));
  EXPECT_EQ(store.SubKeys(kUser, ""), (std::vector<std::string>{"k", "other"}));
  Set(store, "other\\deep", "new");
  EXPECT_EQ(Reread("other\\deep"), "new");
}

TEST_F(RegistryStoreTest, ReadsKeysInWhateverOrderTheyStand) {
  m_folder.MakeFile("registry.reg",
                    "Windows Registry Editor Version 5.00\n"
                    "[HKEY_CURRENT_USER\\a\\\\b\\c\\]\n\"v\"=\"1\"\n"
                    "[HKEY_CURRENT_USER\\a\\b]\n\"v\"=\"2\"\n"
                    "[HKEY_LOCAL_MACHINE\\a\\b\\d]\n\"v\"=\"3\"\n"
                    "[HKEY_CURRENT_USER\\a\\b\\d]\n\"v\"=\"4\"\n"
                    "[-HKEY_CURRENT_USER\\a\\B]\n"
                    "[HKEY_CURRENT_USER\\a\\b\\d\\e]\n\"v\"=\"5\"\n"
                    "[HKEY_CURRENT_USER\\A\\b\\x]\n\"v\"=\"6\"\n");
  RegistryStore store(Path());
  EXPECT_FALSE(store.KeyExists(kUser, "a\\b\\c"));
  EXPECT_EQ(Get(store, "a\\b"), "(none)");
  EXPECT_EQ(Get(store, "a\\b\\d"), "(none)");
  EXPECT_EQ(Get(store, "a\\b\\d\\e"), "5");
  EXPECT_EQ(Get(store, "a\\b\\x"), "6");
  EXPECT_EQ(store.Query(kMachine, "a\\b\\d", "v")->data, "3");
}

TEST_F(RegistryStoreTest, TellsOfJunkOnlyToThoseWhoWrite) {
  m_folder.MakeFile("registry.reg",
                    "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\k]\nnonsense\n");
  RegistryStore store(Path());
  EXPECT_EQ(Get(store, "k"), "(none)");
  EXPECT_FALSE(store.KeyExists(kUser, "k"));
  EXPECT_TRUE(store.SubKeys(kUser, "").empty());
  for (int i = 0; i < 2; ++i) {
    try {
      Set(store, "k", "1");
      FAIL();
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Number(), automation::kInvalidValue);
      EXPECT_NE(error.Description().find(Path() + ", line 4"), std::string::npos) << error.Description();
    }
  }
  EXPECT_TRUE(Content().ends_with("nonsense\n"));
}

TEST_F(RegistryStoreTest, ImportsWhollyOrNotAtAll) {
  RegistryStore store(Path());
  const std::string text = "Windows Registry Editor Version 5.00\n\n[HKEY_CLASSES_ROOT\\A]\n@=\"x\"\n";
  EXPECT_THROW(store.Import(text + "nonsense", "x.reg"), automation::Error);
  EXPECT_FALSE(store.KeyExists(kMachine, "Software\\Classes\\A"));
  store.Import(text + "[HKEY_CURRENT_USER\\empty]\n[-HKEY_CURRENT_USER\\gone]\n", "x.reg");
  RegistryStore other(Path());
  EXPECT_TRUE(other.KeyExists(kMachine, "Software\\Classes\\A"));
  EXPECT_TRUE(other.KeyExists(kUser, "empty"));
}

TEST_F(RegistryStoreTest, LosesNothingWhenProcessesWriteAtOnceAndAreKilled) {
  constexpr int kProcesses = 4;
  constexpr int kKeys = 400;
  std::vector<pid_t> children;
  for (int process = 0; process < kProcesses; ++process) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      RegistryStore store(Path());
      for (int key = 0; key < kKeys; ++key)
        Set(store, std::to_string(process) + "\\" + std::to_string(key), "x");
      kill(getpid(), SIGKILL);  // no destructor, no flush
    }
    children.push_back(child);
  }
  for (const pid_t child : children) waitpid(child, nullptr, 0);
  RegistryStore store(Path());
  for (int process = 0; process < kProcesses; ++process)
    EXPECT_EQ(store.SubKeys(kUser, std::to_string(process)).size(), std::size_t{kKeys});
}

TEST_F(RegistryStoreTest, CostsTheSameAmongManyKeys) {
  RegistryStore store(Path());
  std::string text = "Windows Registry Editor Version 5.00\n";
  for (int i = 0; i < 100'000; ++i)
    text += "[HKEY_CURRENT_USER\\CLSID\\{" + std::to_string(i) + "}]\n\"v\"=\"name\"\n";
  store.Import(std::move(text), "many.reg");
  const auto size = std::filesystem::file_size(Path());
  Set(store, "CLSID\\{new}", "x");
  EXPECT_LT(std::filesystem::file_size(Path()) - size, 100U);  // added to the end, not written anew
  EXPECT_EQ(Get(store, "clsid\\{99999}"), "name");
}

}  // namespace
}  // namespace hearthmake::posix
