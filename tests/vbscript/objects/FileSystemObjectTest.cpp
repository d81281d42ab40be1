#include "vbscript/objects/FileSystemObject.hpp"

#include <filesystem>

#include "support/SystemObjectTest.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Object;
using automation::Ref;
using automation::Variant;

class FileSystemObjectTest : public SystemObjectTest {
 protected:
  void Make(const std::string& name, const std::string& content = "x") {
    root.MakeFile("c/" + name, content);
  }
  bool Has(const std::string& name) { return std::filesystem::exists(root.Path("c/" + name)); }
  std::int32_t ErrorOfCall(const char* member, std::initializer_list<Variant> arguments) {
    return ErrorOf([&] { files->Call(member, arguments); });
  }
  Ref<Object> Folder(const std::string& path) { return ToObject(files->Call("GetFolder", {Text(path)})); }
  Ref<Object> File(const std::string& path) { return ToObject(files->Call("GetFile", {Text(path)})); }
  static std::vector<std::string> Walk(Object& collection) {
    std::vector<std::string> items;
    const auto walk = collection.Enumerate();
    for (Variant item; walk->Next(item);) items.push_back(ToText(ToObject(item)->Get("Path")));
    return items;
  }

  Ref<Object> files = CreateFileSystemObject(context);
};

TEST_F(FileSystemObjectTest, CopiesFiles) {
  Make("a.txt");
  Make("b.txt", "old");
  files->Call("CopyFile", {Text("C:\\a.txt"), Text("C:\\b.txt")});
  EXPECT_EQ(root.Content("c/b.txt"), "x");
  EXPECT_EQ(ErrorOfCall("CopyFile", {Text("C:\\a.txt"), Text("C:\\b.txt"), Flag(false)}), 58);
  EXPECT_EQ(ErrorOfCall("CopyFile", {Text("C:\\none"), Text("C:\\q")}), 53);
  EXPECT_EQ(ErrorOfCall("CopyFile", {Text("C:\\none*"), Text("C:\\temp")}), 53);
  EXPECT_EQ(ErrorOfCall("CopyFile", {Text("C:\\a.txt"), Text("C:\\temp")}), 70);
  EXPECT_EQ(ErrorOfCall("CopyFile", {Text("C:\\a.txt"), Text("C:\\none\\")}), 76);
  files->Call("CopyFile", {Text("C:\\*.TXT"), Text("C:\\temp")});
  files->Call("CopyFile", {Text("C:\\a.txt"), Text("C:\\temp\\c.txt")});
  EXPECT_TRUE(Has("temp/a.txt") && Has("temp/b.txt") && Has("temp/c.txt"));
}

TEST_F(FileSystemObjectTest, CopiesFoldersWhole) {
  Make("from/a.txt");
  Make("from/deep/er/b.txt");
  files->Call("CopyFolder", {Text("C:\\from"), Text("C:\\to")});
  EXPECT_TRUE(Has("to/a.txt") && Has("to/deep/er/b.txt"));
  files->Call("CopyFolder", {Text("C:\\fr*"), Text("C:\\temp\\")});
  EXPECT_TRUE(Has("temp/from/deep/er/b.txt"));
  EXPECT_EQ(ErrorOfCall("CopyFolder", {Text("C:\\from"), Text("C:\\to"), Flag(false)}), 58);
  EXPECT_EQ(ErrorOfCall("CopyFolder", {Text("C:\\none"), Text("C:\\x")}), 76);
  EXPECT_EQ(ErrorOfCall("CopyFolder", {Text("C:\\from"), Text("C:\\From\\inner")}), 70);
}

TEST_F(FileSystemObjectTest, MovesFilesAndFolders) {
  Make("a.txt");
  Make("b.txt");
  Make("from/c.txt");
  EXPECT_EQ(ErrorOfCall("MoveFile", {Text("C:\\a.txt"), Text("C:\\b.txt")}), 58);
  EXPECT_EQ(ErrorOfCall("MoveFile", {Text("C:\\none"), Text("C:\\q")}), 53);
  files->Call("MoveFile", {Text("C:\\?.txt"), Text("C:\\temp\\")});
  EXPECT_TRUE(Has("temp/a.txt") && Has("temp/b.txt") && !Has("a.txt"));
  files->Call("MoveFolder", {Text("C:\\from"), Text("C:\\to")});
  EXPECT_TRUE(Has("to/c.txt") && !Has("from"));
  EXPECT_EQ(ErrorOfCall("MoveFolder", {Text("C:\\to"), Text("C:\\temp")}), 58);
  EXPECT_EQ(ErrorOfCall("MoveFolder", {Text("C:\\none"), Text("C:\\x")}), 76);
}

TEST_F(FileSystemObjectTest, DeletesFiles) {
  Make("a.txt");
  Make("b.txt");
  Make("c.dat");
  File("C:\\c.dat")->Let("Attributes", {Number(1)});
  files->Call("DeleteFile", {Text("C:\\*.txt")});
  EXPECT_FALSE(Has("a.txt") || Has("b.txt"));
  EXPECT_EQ(ErrorOfCall("DeleteFile", {Text("C:\\*.txt")}), 53);
  EXPECT_EQ(ErrorOfCall("DeleteFile", {Text("C:\\a.txt")}), 53);
  EXPECT_EQ(ErrorOfCall("DeleteFile", {Text("C:\\c.dat")}), 70);
  files->Call("DeleteFile", {Text("C:\\c.dat"), Flag(true)});
  EXPECT_FALSE(Has("c.dat"));
}

TEST_F(FileSystemObjectTest, DeletesFoldersButNotBehindLinks) {
  Make("tree/deep/a.txt");
  Make("kept/b.txt");
  std::filesystem::create_directory_symlink(root.Path("c/kept"), root.Path("c/tree/link"));
  std::filesystem::create_directory_symlink(root.Path("c/kept"), root.Path("c/link"));
  EXPECT_EQ(ErrorOfCall("DeleteFolder", {Text("C:\\tree\\")}), 76);
  files->Call("DeleteFolder", {Text("C:\\tree")});
  files->Call("DeleteFolder", {Text("C:\\link")});
  EXPECT_FALSE(Has("tree") || Has("link"));
  EXPECT_TRUE(Has("kept/b.txt"));
  EXPECT_EQ(ErrorOfCall("DeleteFolder", {Text("C:\\none")}), 76);
  Make("locked/a.txt");
  File("C:\\locked\\a.txt")->Let("Attributes", {Number(1)});
  EXPECT_EQ(ErrorOfCall("DeleteFolder", {Text("C:\\locked")}), 70);
  files->Call("DeleteFolder", {Text("C:\\locked"), Flag(true)});
  EXPECT_FALSE(Has("locked"));
}

TEST_F(FileSystemObjectTest, MakesFolders) {
  EXPECT_EQ(ToText(ToObject(files->Call("CreateFolder", {Text("C:\\new")}))->Get("Path")), "C:\\new");
  EXPECT_EQ(ErrorOfCall("CreateFolder", {Text("C:\\NEW")}), 58);
  EXPECT_EQ(ErrorOfCall("CreateFolder", {Text("C:\\x\\y")}), 76);
}

TEST_F(FileSystemObjectTest, TellsWhatIsThere) {
  Make("a.txt");
  EXPECT_TRUE(automation::ToBoolean(files->Call("FileExists", {Text("C:\\A.TXT")})));
  EXPECT_FALSE(automation::ToBoolean(files->Call("FileExists", {Text("C:\\temp")})));
  EXPECT_TRUE(automation::ToBoolean(files->Call("FolderExists", {Text("C:\\temp\\")})));
  EXPECT_TRUE(automation::ToBoolean(files->Call("DriveExists", {Text("c")})));
  EXPECT_FALSE(automation::ToBoolean(files->Call("DriveExists", {Text("q:")})));
  EXPECT_EQ(ErrorOfCall("GetFile", {Text("C:\\none")}), 53);
  EXPECT_EQ(ErrorOfCall("GetFile", {Text("C:\\none\\none")}), 76);
  EXPECT_EQ(ErrorOfCall("GetFile", {Text("C:\\temp")}), 53);
  EXPECT_EQ(ErrorOfCall("GetFolder", {Text("C:\\none")}), 76);
  EXPECT_EQ(ErrorOfCall("GetDrive", {Text("q")}), 68);
  EXPECT_EQ(ErrorOfCall("GetDrive", {Text("c:\\x")}), 5);
  EXPECT_EQ(ErrorOfCall("GetSpecialFolder", {Number(3)}), 5);
  EXPECT_EQ(ToText(ToObject(files->Call("GetSpecialFolder", {Number(0)}))->Get("Path")), "C:\\windows");
}

TEST_F(FileSystemObjectTest, ShowsAFile) {
  Make("Sub/Prices.txt", "12345");
  const auto file = File("c:\\sub\\prices.txt");
  EXPECT_EQ(ToText(file->Invoke(automation::kDefaultMember, automation::InvokeKind::Get, {})),
            "c:\\sub\\prices.txt");
  EXPECT_EQ(ToText(file->Get("Size")), "5");
  EXPECT_EQ(ToText(file->Get("Type")), "TXT File");
  EXPECT_EQ(ToText(ToObject(file->Get("ParentFolder"))->Get("Name")), "sub");
  EXPECT_EQ(ToText(ToObject(file->Get("Drive"))->Get("Path")), "C:");
  EXPECT_NEAR(file->Get("DateLastModified").AsDouble(), host.Platform().clock->Now(), 0.01);
  EXPECT_NEAR(file->Get("DateCreated").AsDouble(), host.Platform().clock->Now(), 0.01);
  file->Let("Name", {Text("new.txt")});
  EXPECT_TRUE(Has("Sub/new.txt"));
  EXPECT_EQ(ToText(file->Get("Name")), "new.txt");
  EXPECT_EQ(ErrorOf([&] { file->Let("Name", {Text("a\\b")}); }), 5);
  file->Call("Move", {Text("C:\\temp\\")});
  EXPECT_EQ(ToText(file->Get("Path")), "C:\\temp\\new.txt");
  EXPECT_EQ(ToText(ToObject(file->Call("OpenAsTextStream"))->Call("ReadAll")), "12345");
  file->Call("Delete");
  EXPECT_EQ(ErrorOf([&] { file->Get("Size"); }), 53);
}

TEST_F(FileSystemObjectTest, ShowsAFolder) {
  Make("f/b.txt", "22");
  Make("f/A.txt", "333");
  Make("f/sub/c.txt", "4444");
  const auto folder = Folder("C:\\f");
  EXPECT_EQ(Walk(*ToObject(folder->Get("Files"))),
            (std::vector<std::string>{"C:\\f\\A.txt", "C:\\f\\b.txt"}));
  EXPECT_EQ(Walk(*ToObject(folder->Get("SubFolders"))), std::vector<std::string>{"C:\\f\\sub"});
  EXPECT_EQ(ToText(folder->Get("Size")), "9");
  EXPECT_EQ(ToText(ToObject(folder->Get("Files"))->Get("Count")), "2");
  EXPECT_EQ(ToText(ToObject(folder->Get("Files", {Text("a.TXT")}))->Get("Size")), "3");
  EXPECT_EQ(ErrorOf([&] { folder->Get("Files", {Text("zz")}); }), 53);
  EXPECT_EQ(ErrorOf([&] { folder->Get("SubFolders", {Text("zz")}); }), 76);
  EXPECT_FALSE(automation::ToBoolean(folder->Get("IsRootFolder")));
  const auto top = Folder("C:\\");
  EXPECT_TRUE(automation::ToBoolean(top->Get("IsRootFolder")));
  EXPECT_EQ(ToText(top->Get("Name")), "");
  EXPECT_EQ(top->Get("ParentFolder").AsObject(), nullptr);
  ToObject(folder->Get("SubFolders"))->Call("Add", {Text("more")});
  EXPECT_TRUE(Has("f/more"));
}

TEST_F(FileSystemObjectTest, ShowsDrives) {
  const auto all = ToObject(files->Get("Drives"));
  EXPECT_EQ(Walk(*all), (std::vector<std::string>{"C:", "Z:"}));
  const auto drive = ToObject(files->Get("Drives", {Text("c")}));
  EXPECT_TRUE(automation::ToBoolean(drive->Get("IsReady")));
  EXPECT_GT(drive->Get("TotalSize").AsDouble(), 0);
  EXPECT_GE(drive->Get("FreeSpace").AsDouble(), drive->Get("AvailableSpace").AsDouble());
  EXPECT_EQ(ToText(ToObject(drive->Get("RootFolder"))->Get("Path")), "C:\\");
  EXPECT_EQ(ErrorOf([&] { all->Get("Item", {Text("q")}); }), 68);
}

TEST_F(FileSystemObjectTest, ReadsTheVersionOfAProgram) {
  using namespace std::string_literals;
  const std::string key = "V\0S\0_\0V\0E\0R\0S\0I\0O\0N\0_\0I\0N\0F\0O\0\0\0\0\0"s;
  const std::string numbers = "\xBD\x04\xEF\xFE\0\0\1\0\2\0\1\0\4\0\3\0"s;
  Make("a.exe", "MZ" + std::string(262'000, 'x') + key + numbers);
  EXPECT_EQ(ToText(files->Call("GetFileVersion", {Text("C:\\a.exe")})), "1.2.3.4");
  Make("b.exe", "MZ" + key);
  EXPECT_EQ(ToText(files->Call("GetFileVersion", {Text("C:\\b.exe")})), "");
  EXPECT_EQ(ErrorOfCall("GetFileVersion", {Text("C:\\none.exe")}), 53);
}

TEST_F(FileSystemObjectTest, MakesUpNames) {
  const std::string name = ToText(files->Call("GetTempName"));
  EXPECT_EQ(name.size(), 12U);
  EXPECT_TRUE(name.starts_with("rad") && name.ends_with(".tmp")) << name;
}

}  // namespace
}  // namespace hearthmake::vbscript
