#include "adapters/typelib/ComponentRegistration.hpp"

#include <gtest/gtest.h>

#include <map>

#include "adapters/posix/RegistryStore.hpp"
#include "automation/Error.hpp"
#include "support/ErrorExpect.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::typelib {
namespace {

using platform::RegistryRoot;
using platform::TypeDescription;
using platform::TypeKind;

// The libraries of binaries by path.
class Libraries final : public platform::TypeLibReader {
 public:
  struct Library {
    platform::TypeLibInfo info;
    std::vector<TypeDescription> types;
  };
  platform::TypeLibInfo Read(std::string_view path) override { return Find(path).info; }
  std::vector<TypeDescription> ReadTypes(std::string_view path) override { return Find(path).types; }
  std::map<std::string, Library, std::less<>> byPath;

 private:
  const Library& Find(std::string_view path) const {
    const auto found = byPath.find(path);
    if (found == byPath.end()) automation::Raise(45, "TypeLibReader", "no type library");
    return found->second;
  }
};

class ComponentRegistrationTest : public testing::Test {
 protected:
  ComponentRegistrationTest() : store(folder.Path("registry.reg")), registration(store, libraries) {
    Put("C:\\bin\\Lib.dll", "{10000000-0000-0000-0000-000000000000}");
  }
  void Put(const std::string& path, const std::string& libraryId) {
    Libraries::Library library;
    library.info = {libraryId, 2, 10, 0, 8, "Stock", "Stock keeping"};
    library.types = {
        {TypeKind::Dispatch, "{20000000-0000-0000-0000-000000000000}", "_Item", "", 64 + 16, 1, 0},
        {TypeKind::CoClass, "{30000000-0000-0000-0000-000000000000}", "Item", "", 2, 1, 0},
        {TypeKind::CoClass, "{40000000-0000-0000-0000-000000000000}", "Hidden", "", 0, 1, 0},
        {TypeKind::Enum, "", "Colours", "", 0, 0, 0}};
    libraries.byPath[path] = library;
  }
  std::string Value(const std::string& key, const std::string& name = "") {
    const auto value = store.Query(RegistryRoot::ClassesRoot, key, name);
    return value ? value->data : "(none)";
  }
  bool Exists(const std::string& key) { return store.KeyExists(RegistryRoot::ClassesRoot, key); }

  support::PosixFolder folder;
  Libraries libraries;
  posix::RegistryStore store;
  ComponentRegistration registration;
};

constexpr const char* kItem = "CLSID\\{30000000-0000-0000-0000-000000000000}";

TEST_F(ComponentRegistrationTest, WritesTheLibraryUnderItsIdAndHexadecimalVersion) {
  registration.Register("C:\\bin\\Lib.dll");
  const std::string key = "TypeLib\\{10000000-0000-0000-0000-000000000000}\\2.a";
  EXPECT_EQ(Value(key), "Stock keeping");
  EXPECT_EQ(Value(key + "\\0\\win32"), "C:\\bin\\Lib.dll");
  EXPECT_EQ(Value(key + "\\FLAGS"), "8");
  EXPECT_EQ(Value(key + "\\HELPDIR"), "C:\\bin");
}

TEST_F(ComponentRegistrationTest, WritesInterfacesClassesAndProgIds) {
  registration.Register("C:\\bin\\Lib.dll");
  EXPECT_EQ(Value("Interface\\{20000000-0000-0000-0000-000000000000}"), "_Item");
  EXPECT_EQ(Value("Interface\\{20000000-0000-0000-0000-000000000000}\\TypeLib", "Version"), "2.a");
  EXPECT_EQ(Value(kItem), "Stock.Item");
  EXPECT_EQ(Value(std::string(kItem) + "\\InprocServer32"), "C:\\bin\\Lib.dll");
  EXPECT_EQ(Value(std::string(kItem) + "\\InprocServer32", "ThreadingModel"), "Apartment");
  EXPECT_EQ(Value("Stock.Item\\Clsid"), "{30000000-0000-0000-0000-000000000000}");
  EXPECT_FALSE(Exists("CLSID\\{40000000-0000-0000-0000-000000000000}"));
}

TEST_F(ComponentRegistrationTest, AProgramIsALocalServer) {
  Put("C:\\bin\\Srv.EXE", "{11000000-0000-0000-0000-000000000000}");
  registration.Register("C:\\bin\\Srv.EXE");
  EXPECT_EQ(Value(std::string(kItem) + "\\LocalServer32"), "C:\\bin\\Srv.EXE");
  EXPECT_FALSE(Exists(std::string(kItem) + "\\InprocServer32"));
}

TEST_F(ComponentRegistrationTest, AgainChangesNothingInTheStore) {
  registration.Register("C:\\bin\\Lib.dll");
  const std::string before = folder.Content("registry.reg");
  registration.Register("C:\\bin\\Lib.dll");
  EXPECT_EQ(folder.Content("registry.reg"), before);
}

TEST_F(ComponentRegistrationTest, RegistersAComponentWhollyOrNotAtAll) {
  registration.Register("C:\\bin\\Lib.dll");
  const std::string before = folder.Content("registry.reg");
  Put("C:\\bin\\Odd.dll", "{13000000-0000-0000-0000-000000000000}");
  libraries.byPath["C:\\bin\\Odd.dll"].types.front().guid = "{2\n}";
  EXPECT_THROW(registration.Register("C:\\bin\\Odd.dll"), automation::Error);
  EXPECT_EQ(folder.Content("registry.reg"), before);
}

TEST_F(ComponentRegistrationTest, UnregisteringLeavesTheRegistryAsItWas) {
  registration.Register("C:\\bin\\Lib.dll");
  registration.Unregister("C:\\bin\\Lib.dll");
  for (const char* key : {"TypeLib", "Interface", "CLSID", "Stock.Item"}) EXPECT_FALSE(Exists(key)) << key;
}

TEST_F(ComponentRegistrationTest, UnregisteringKeepsWhatAnotherComponentTookOver) {
  registration.Register("C:\\bin\\Lib.dll");
  Put("C:\\new\\Lib.dll", "{12000000-0000-0000-0000-000000000000}");
  registration.Register("C:\\new\\Lib.dll");
  registration.Unregister("C:\\bin\\Lib.dll");
  EXPECT_EQ(Value(std::string(kItem) + "\\InprocServer32"), "C:\\new\\Lib.dll");
  EXPECT_TRUE(Exists("Stock.Item"));
  EXPECT_TRUE(Exists("Interface\\{20000000-0000-0000-0000-000000000000}"));
  EXPECT_FALSE(Exists("TypeLib\\{10000000-0000-0000-0000-000000000000}"));
}

TEST_F(ComponentRegistrationTest, ABinaryWithoutTypeLibraryIsTheReadersError) {
  EXPECT_EQ(support::ErrorOf([&] { registration.Register("C:\\bin\\Other.dll"); }).Number(), 45);
}

}  // namespace
}  // namespace hearthmake::typelib
