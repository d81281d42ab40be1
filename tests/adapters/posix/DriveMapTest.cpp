#include "adapters/posix/DriveMap.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>

#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

namespace fs = std::filesystem;
using support::CurrentFolderOverride;
using support::EnvironmentOverride;

void ExpectError(automation::RuntimeError expected, const std::string& detail,
                 const std::function<void()>& call) {
  try {
    call();
    ADD_FAILURE() << "no error";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(expected));
    EXPECT_NE(error.Description().find(detail), std::string::npos) << error.Description();
  }
}

class DriveMapTest : public ::testing::Test {
 protected:
  DriveMapTest() { m_map.SetDrive('D', m_folder.Path()); }

  std::optional<std::string> ToPosix(std::string_view path) const { return m_map.ToPosix(path); }

  support::PosixFolder m_folder;
  DriveMap m_map;
};

TEST(DriveMap, BuiltInDrivesAreTheDataFolderAndTheRoot) {
  const DriveMap map = DriveMap::BuiltIn("/data/me");
  EXPECT_EQ(map.Drive('C'), "/data/me/drive_c");
  EXPECT_EQ(map.Drive('z'), "/");
  EXPECT_EQ(map.Drive('D'), std::nullopt);
  EXPECT_EQ(map.Drive('?'), std::nullopt);
  EXPECT_EQ(map.ToPosix("C:\\src\\a.vbp"), "/data/me/drive_c/src/a.vbp");
  EXPECT_EQ(map.ToPosix("Z:\\"), "/");
}

TEST_F(DriveMapTest, ReadsTheDrivesOfAWinePrefix) {
  m_folder.MakeFolder("prefix/dosdevices");
  m_folder.MakeFolder("prefix/drive_c/windows");
  m_folder.MakeFolder("elsewhere");
  const fs::path devices = m_folder.Path("prefix/dosdevices");
  fs::create_directory_symlink("../drive_c", devices / "c:");
  fs::create_directory_symlink("/", devices / "z:");
  fs::create_directory_symlink(m_folder.Path("elsewhere"), devices / "e:");
  fs::create_symlink("/dev/cdrom", devices / "d::");
  fs::create_symlink("/dev/ttyS0", devices / "com1");
  fs::create_directory_symlink("prefix", m_folder.Path("alias"));

  const DriveMap map = DriveMap::FromWinePrefix(m_folder.Path("prefix"));
  EXPECT_EQ(map.Drive('C'), m_folder.Path("prefix/drive_c"));
  EXPECT_EQ(map.Drive('E'), m_folder.Path("elsewhere"));
  EXPECT_EQ(map.Drive('Z'), "/");
  EXPECT_EQ(map.Drive('D'), std::nullopt);
  EXPECT_EQ(map.ToPosix("c:\\WINDOWS"), m_folder.Path("prefix/drive_c/windows"));

  const DriveMap aliased = DriveMap::FromWinePrefix(m_folder.Path("alias"));
  EXPECT_EQ(aliased.Drive('C'), m_folder.Path("alias/drive_c"));
  EXPECT_EQ(aliased.FromPosix(m_folder.Path("alias/drive_c/windows")), "C:\\windows");
  EXPECT_EQ(aliased.FromPosix(m_folder.Path("prefix/drive_c/windows")), "C:\\windows");
}

TEST_F(DriveMapTest, AWinePrefixWithoutTheRootGetsIt) {
  m_folder.MakeFolder("prefix/dosdevices/c:");
  const DriveMap map = DriveMap::FromWinePrefix(m_folder.Path("prefix"));
  EXPECT_EQ(map.Drive('C'), m_folder.Path("prefix/dosdevices/c:"));
  EXPECT_EQ(map.Drive('Z'), "/");
}

TEST_F(DriveMapTest, RefusesAFolderThatIsNoWinePrefix) {
  ExpectError(automation::RuntimeError::PathNotFound, m_folder.Path("dosdevices"),
              [&] { DriveMap::FromWinePrefix(m_folder.Path()); });
}

TEST_F(DriveMapTest, SurvivesSerialization) {
  DriveMap map = DriveMap::BuiltIn("/data");
  map.SetDrive('Q', "/a;b%3B/\n ü\xFF");
  EXPECT_EQ(map.Serialize(), "C:=/data/drive_c;Q:=/a%3Bb%253B/%0A ü\xFF;Z:=/");
  const DriveMap copy = DriveMap::Parse(map.Serialize());
  EXPECT_EQ(copy.Serialize(), map.Serialize());
  EXPECT_EQ(copy.Drive('Q'), "/a;b%3B/\n ü\xFF");
  EXPECT_EQ(DriveMap::Parse("").Serialize(), "");
}

TEST(DriveMap, RefusesTextThatIsNoMap) {
  for (const char* text : {"C", "C:", "C:=", "C:=x", "1:=/x", "C:=/a;;D:=/b", "C:=/%", "C:=/%4", "C:=/%zz",
                           "C:=/%00", "=C:/x", "C:/x"}) {
    ExpectError(automation::RuntimeError::InvalidProcedureCall, "X:=/folder", [&] { DriveMap::Parse(text); });
  }
}

TEST(DriveMap, ComesFromTheEnvironment) {
  const EnvironmentOverride none(DriveMap::kEnvironmentVariable, std::nullopt);
  EXPECT_FALSE(DriveMap::FromEnvironment().has_value());
  const EnvironmentOverride some(DriveMap::kEnvironmentVariable, "K:=/k");
  ASSERT_TRUE(DriveMap::FromEnvironment().has_value());
  EXPECT_EQ(DriveMap::FromEnvironment()->Drive('K'), "/k");
}

TEST_F(DriveMapTest, SetDriveReplacesADriveAndTakesRelativeFolders) {
  const CurrentFolderOverride current(m_folder.Path());
  m_map.SetDrive('d', "sub/../other//folder/");
  EXPECT_EQ(m_map.Drive('D'), m_folder.Path("other/folder"));
}

TEST(DriveMap, SetDriveRefusesWhatIsNoDrive) {
  DriveMap map;
  ExpectError(automation::RuntimeError::InvalidProcedureCall, "1:=", [&] { map.SetDrive('1', "/"); });
  ExpectError(automation::RuntimeError::InvalidProcedureCall, "A:=", [&] { map.SetDrive('A', ""); });
}

TEST_F(DriveMapTest, KeepsTheSpellingOfWhatDoesNotExist) {
  m_folder.MakeFolder("Source");
  EXPECT_EQ(ToPosix("D:\\SOURCE\\New\\File.TXT"), m_folder.Path("Source/New/File.TXT"));
  EXPECT_EQ(ToPosix("D:/None/a"), m_folder.Path("None/a"));
  EXPECT_EQ(ToPosix("d:\\"), m_folder.Path());
  EXPECT_EQ(ToPosix("d:"), m_folder.Path());
}

TEST_F(DriveMapTest, MatchesNamesWithoutRegardToCase) {
  m_folder.MakeFile("Quell Texte/Übung é/Größe Œ.VBP");
  EXPECT_EQ(ToPosix("d:\\QUELL texte\\übung É\\GRÖße œ.vbp"),
            m_folder.Path("Quell Texte/Übung é/Größe Œ.VBP"));
  EXPECT_EQ(ToPosix("D:/quell texte//.\\ÜBUNG É/"), m_folder.Path("Quell Texte/Übung é"));
}

TEST(DriveMap, MatchesNamesInTheRootFolder) {
  const DriveMap map = DriveMap::BuiltIn("/data");
  EXPECT_EQ(map.ToPosix("Z:\\USR\\Bin"), "/usr/bin");
  EXPECT_EQ(map.ToPosix("Z:\\USR."), "/usr");
}

TEST_F(DriveMapTest, TakesTheExactSpellingFirst) {
  m_folder.MakeFile("Lib/one.txt");
  m_folder.MakeFile("LIB/two.txt");
  EXPECT_EQ(ToPosix("D:\\Lib\\one.txt"), m_folder.Path("Lib/one.txt"));
  EXPECT_EQ(ToPosix("D:\\LIB\\TWO.txt"), m_folder.Path("LIB/two.txt"));
  EXPECT_EQ(ToPosix("D:\\Lib\\TWO.txt"), m_folder.Path("Lib/TWO.txt"));
}

TEST_F(DriveMapTest, MatchesNamesThatAreNotUtf8) {
  const std::string legacy = m_folder.MakeFile("M\xFCller \x80.vbp");
  EXPECT_EQ(ToPosix("D:\\MÜLLER €.VBP"), legacy);
  EXPECT_EQ(m_map.FromPosix(legacy), "D:\\Müller €.vbp");
  const std::string modern = m_folder.MakeFile("Größe.txt");
  EXPECT_EQ(ToPosix("D:\\gr\xF6\xDF\x65.TXT"), modern);
  EXPECT_EQ(ToPosix("D:\\\xFF\xFE"), m_folder.Path("\xFF\xFE"));
}

TEST_F(DriveMapTest, DropsTrailingDotsAndBlanksOnlyWhereTheNameDoesNotExist) {
  m_folder.MakeFile("Plain/a.txt");
  m_folder.MakeFile("Dotted./b.txt");
  EXPECT_EQ(ToPosix("D:\\Plain.\\A.txt. "), m_folder.Path("Plain/a.txt"));
  EXPECT_EQ(ToPosix("D:\\dotted.\\b.TXT"), m_folder.Path("Dotted./b.txt"));
  EXPECT_EQ(ToPosix("D:\\dotted\\b.txt"), m_folder.Path("dotted/b.txt"));
  EXPECT_EQ(ToPosix("D:\\New. \\c."), m_folder.Path("New/c"));
}

TEST_F(DriveMapTest, GoesUpByNamesAndStopsAtTheRootOfTheDrive) {
  m_folder.MakeFolder("Deep/Target");
  fs::create_directory_symlink("Deep/Target", m_folder.Path("link"));
  EXPECT_EQ(ToPosix("D:\\nowhere\\..\\DEEP"), m_folder.Path("Deep"));
  EXPECT_EQ(ToPosix("D:\\link\\..\\deep"), m_folder.Path("Deep"));
  EXPECT_EQ(ToPosix("D:\\..\\..\\..\\etc\\passwd"), m_folder.Path("etc/passwd"));
  EXPECT_EQ(ToPosix("D:\\Deep\\..\\.."), m_folder.Path());
}

TEST_F(DriveMapTest, RelativePathsStartAtTheCurrentFolder) {
  m_folder.MakeFile("Source/Lib/a.vbp");
  const CurrentFolderOverride current(m_folder.Path("Source"));
  EXPECT_EQ(ToPosix("LIB\\A.vbp"), m_folder.Path("Source/Lib/a.vbp"));
  EXPECT_EQ(ToPosix("."), m_folder.Path("Source"));
  EXPECT_EQ(ToPosix("..\\..\\..\\SOURCE"), m_folder.Path("Source"));
  EXPECT_EQ(ToPosix("\\source\\lib"), m_folder.Path("Source/Lib"));
  EXPECT_EQ(ToPosix("D:source\\lib"), m_folder.Path("Source/Lib"));
  EXPECT_EQ(m_map.FromPosix("Lib/a.vbp"), "D:\\Source\\Lib\\a.vbp");
}

TEST_F(DriveMapTest, HasNoPathWhereNoneLeads) {
  for (const std::string& path :
       {std::string(), std::string("Q:\\x"), std::string("1:\\x"), std::string("\\\\server\\share\\x"),
        std::string("//server/share"), std::string("\\\\.\\D:\\x"), std::string("\\\\?\\x"),
        std::string("\\\\?\\"), std::string("\\\\"), std::string("D:\\a\0b", 6)}) {
    EXPECT_EQ(ToPosix(path), std::nullopt) << path;
    EXPECT_EQ(m_map.ToPosixAsSpelled(path), std::nullopt) << path;
  }
}

TEST_F(DriveMapTest, HasNoRelativePathInARemovedFolder) {
  const std::string gone = m_folder.MakeFolder("gone");
  const CurrentFolderOverride current(gone);
  fs::remove(gone);
  EXPECT_EQ(ToPosix("a"), std::nullopt);
  EXPECT_EQ(ToPosix("D:\\a"), m_folder.Path("a"));
}

TEST_F(DriveMapTest, UnderstandsLongPathPrefixes) {
  m_folder.MakeFile("Source/a.vbp");
  EXPECT_EQ(ToPosix("\\\\?\\D:\\source\\A.vbp"), m_folder.Path("Source/a.vbp"));
  EXPECT_EQ(ToPosix("\\\\?\\unix" + m_folder.Path("SOURCE/a.vbp")), m_folder.Path("Source/a.vbp"));
}

TEST_F(DriveMapTest, SpellsPathsWithoutALookAtTheDisk) {
  m_folder.MakeFile("Source/a.vbp");
  EXPECT_EQ(m_map.ToPosixAsSpelled("D:\\SOURCE\\x\\..\\A.vbp."), m_folder.Path("SOURCE/A.vbp."));
}

TEST_F(DriveMapTest, SpellsNamesHoweverTheyAreParted) {
  const std::string expected = m_folder.Path("a long folder of sources/.git/Library.vbp");
  for (const char* path :
       {"D:\\a long folder of sources\\.git\\Library.vbp", "D:/a long folder of sources/.git/Library.vbp",
        "D:\\a long folder of sources\\\\.git/\\Library.vbp",
        "D:\\.\\a long folder of sources\\.git\\Library.vbp", "D:a long folder of sources\\.git\\Library.vbp",
        "D:\\a long folder of sources\\.git\\Library.vbp\\/",
        "D:\\a long folder of sources\\.git\\Library.vbp\\."}) {
    EXPECT_EQ(m_map.ToPosixAsSpelled(path), expected) << path;
  }
  EXPECT_EQ(m_map.ToPosixAsSpelled("D:\\..."), m_folder.Path("..."));
  EXPECT_EQ(m_map.ToPosixAsSpelled("D:\\"), m_map.Drive('D'));
  EXPECT_EQ(m_map.ToPosixAsSpelled("D:"), m_map.Drive('D'));
}

TEST_F(DriveMapTest, FindsFilesThatAppearChangeTheirSpellingAndGo) {
  m_folder.MakeFolder("Source");
  for (int pause = 0; pause <= 30; pause += 15) {
    const auto wait = [pause] { std::this_thread::sleep_for(std::chrono::milliseconds(pause)); };
    EXPECT_EQ(ToPosix("D:\\source\\FILE"), m_folder.Path("Source/FILE"));
    wait();
    m_folder.MakeFile("Source/File");
    EXPECT_EQ(ToPosix("D:\\source\\FILE"), m_folder.Path("Source/File"));
    wait();
    EXPECT_EQ(ToPosix("D:\\source\\FILE"), m_folder.Path("Source/File"));
    fs::rename(m_folder.Path("Source/File"), m_folder.Path("Source/file"));
    EXPECT_EQ(ToPosix("D:\\source\\FILE"), m_folder.Path("Source/file"));
    wait();
    fs::remove(m_folder.Path("Source/file"));
    EXPECT_EQ(ToPosix("D:\\source\\FILE"), m_folder.Path("Source/FILE"));
  }
}

TEST_F(DriveMapTest, FollowsAFolderThatIsReplacedByAnother) {
  m_folder.MakeFile("Source/One");
  std::this_thread::sleep_for(std::chrono::milliseconds(40));
  EXPECT_EQ(ToPosix("D:\\SOURCE\\ONE"), m_folder.Path("Source/One"));
  m_folder.MakeFile("Other/oNE");
  std::this_thread::sleep_for(std::chrono::milliseconds(40));
  fs::rename(m_folder.Path("Source"), m_folder.Path("Old"));
  fs::rename(m_folder.Path("Other"), m_folder.Path("Source"));
  EXPECT_EQ(ToPosix("D:\\SOURCE\\ONE"), m_folder.Path("Source/oNE"));
}

TEST_F(DriveMapTest, LooksIntoFoldersThatCanNotBeListed) {
  m_folder.MakeFile("Closed/Inner/a");
  fs::permissions(m_folder.Path("Closed"), fs::perms::owner_exec);
  EXPECT_EQ(ToPosix("D:\\CLOSED\\Inner\\A"), m_folder.Path("Closed/Inner/a"));
}

TEST_F(DriveMapTest, LinksToNothingKeepTheirSpelling) {
  fs::create_symlink("nothing", m_folder.Path("Dangling"));
  EXPECT_EQ(ToPosix("D:\\Dangling"), m_folder.Path("Dangling"));
  EXPECT_EQ(ToPosix("D:\\DANGLING"), m_folder.Path("Dangling"));
}

TEST_F(DriveMapTest, FromPosixTakesTheLongestDrive) {
  DriveMap map = DriveMap::BuiltIn(m_folder.Path("data"));
  EXPECT_EQ(map.FromPosix(m_folder.Path("data/drive_c/src/a b.vbp")), "C:\\src\\a b.vbp");
  EXPECT_EQ(map.FromPosix(m_folder.Path("data/drive_c")), "C:\\");
  EXPECT_EQ(map.FromPosix(m_folder.Path("data/drive_c/")), "C:\\");
  EXPECT_EQ(map.FromPosix("/data/drive_cx"), "Z:\\data\\drive_cx");
  EXPECT_EQ(map.FromPosix("/"), "Z:\\");
  EXPECT_EQ(map.FromPosix("//usr/./lib/../bin/"), "Z:\\usr\\bin");
}

TEST_F(DriveMapTest, FromPosixKnowsADriveFolderBehindLinks) {
  m_folder.MakeFolder("real/drive");
  fs::create_directory_symlink("real", m_folder.Path("link"));
  m_map.SetDrive('L', m_folder.Path("link/drive"));
  EXPECT_EQ(m_map.FromPosix(m_folder.Path("link/drive/x")), "L:\\x");
  EXPECT_EQ(m_map.FromPosix(m_folder.Path("real/drive/x")), "L:\\x");
  EXPECT_EQ(m_map.FromPosix(m_folder.Path("link/../x")), "D:\\x");
}

TEST_F(DriveMapTest, FromPosixNamesWhatNoDriveReaches) {
  EXPECT_EQ(m_map.FromPosix("/usr/bin"), "\\\\?\\unix\\usr\\bin");
  EXPECT_EQ(ToPosix(m_map.FromPosix("/usr/bin")), "/usr/bin");
}

TEST_F(DriveMapTest, PathsSurviveTheWayThereAndBack) {
  const std::string file = m_folder.MakeFile("Source/ä ö/Lib.vbp");
  EXPECT_EQ(ToPosix(m_map.FromPosix(file)), file);
}

}  // namespace
}  // namespace hearthmake::posix
