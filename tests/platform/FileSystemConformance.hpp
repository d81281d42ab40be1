#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/Error.hpp"
#include "platform/FileSystem.hpp"

// What every FileSystem does, whatever it stands on. An adapter's test instantiates the suite:
//
//   INSTANTIATE_TEST_SUITE_P(Posix, FileSystemConformance, ::testing::Values(MakePlayground));

namespace hearthmake::platform {

// A file system and an existing empty folder to play in (a DOS path without a final backslash), which
// `keepAlive` holds.
struct FileSystemPlayground {
  std::shared_ptr<FileSystem> files;
  std::string folder;
  std::shared_ptr<void> keepAlive;
};

using FileSystemFactory = std::function<FileSystemPlayground()>;

class FileSystemConformance : public ::testing::TestWithParam<FileSystemFactory> {
 protected:
  void SetUp() override { m_playground = GetParam()(); }

  FileSystem& Files() { return *m_playground.files; }
  std::string At(std::string_view name) const { return m_playground.folder + "\\" + std::string(name); }

  // Every name in a folder, in order, folders with a backslash behind them.
  std::vector<std::string> Names(std::string_view folder) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : Files().List(folder))
      names.push_back(entry.name + (entry.isFolder ? "\\" : ""));
    std::sort(names.begin(), names.end());
    return names;
  }

  // Expects a failure of the port: its number, its source, and the path in its text.
  void ExpectFailure(automation::RuntimeError expected, std::string_view path,
                     const std::function<void()>& call) {
    try {
      call();
      ADD_FAILURE() << "no failure on " << path;
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Number(), static_cast<std::int32_t>(expected)) << error.Description();
      EXPECT_EQ(error.Source(), "FileSystem");
      const std::string where = path.empty() ? "" : ": " + std::string(path);
      EXPECT_EQ(error.Description(), automation::RuntimeErrorText(expected) + where);
    }
  }

 private:
  FileSystemPlayground m_playground;
};

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(FileSystemConformance);

namespace conformance {
inline const std::vector<std::string> kNoNames;
}

TEST_P(FileSystemConformance, TellsFilesFromFolders) {
  Files().Replace(At("a.txt"), "x");
  EXPECT_TRUE(Files().FileExists(At("a.txt")));
  EXPECT_FALSE(Files().FolderExists(At("a.txt")));
  EXPECT_FALSE(Files().FileExists(At("")));
  EXPECT_TRUE(Files().FolderExists(At("")));
  EXPECT_FALSE(Files().FileExists(At("b.txt")));
  EXPECT_FALSE(Files().FolderExists(At("b.txt")));
  EXPECT_FALSE(Files().FileExists(At("a.txt\\b")));
}

TEST_P(FileSystemConformance, AnswersQuestionsAboutImpossiblePathsWithNo) {
  for (const std::string& path :
       {std::string(), std::string("\\\\nobody\\share\\x"), std::string("?:\\x"), At(std::string("a\0b", 3)),
        At(std::string(300, 'n')), At(std::string(9000, '\\') + "x"), At(std::string(70000, 'n'))}) {
    EXPECT_FALSE(Files().FileExists(path)) << path.substr(0, 40);
    EXPECT_FALSE(Files().FolderExists(path)) << path.substr(0, 40);
    EXPECT_EQ(Files().Stamp(path), FileStamp{}) << path.substr(0, 40);
  }
}

TEST_P(FileSystemConformance, MatchesNamesWithoutRegardToCase) {
  Files().CreateFolders(At("Source\\Übung mit Akzent é"));
  Files().Replace(At("Source\\Übung mit Akzent é\\Prüf Lib.vbp"), "x");
  EXPECT_TRUE(Files().FileExists(At("SOURCE\\üBUNG MIT AKZENT É\\PRÜF lib.VBP")));
  EXPECT_TRUE(Files().FileExists(At("source/übung mit akzent É/prüf LIB.vbp")));
  EXPECT_EQ(Files().Read(At("sOURCE\\ÜBUNG MIT akzent é\\prÜf lib.vbp")), "x");
  EXPECT_FALSE(Files().FileExists(At("source\\ubung mit akzent e\\pruf lib.vbp")));
}

TEST_P(FileSystemConformance, WritesToTheFileWhoseNameDiffersInCaseOnly) {
  Files().Replace(At("Lib.vbp"), "one");
  Files().Replace(At("LIB.VBP"), "two");
  Files().Append(At("lib.vbp"), "!");
  Files().ReadOrCreate(At("lIB.vbp"));
  EXPECT_EQ(Names(At("")), std::vector<std::string>{"Lib.vbp"});
  EXPECT_EQ(Files().Read(At("Lib.vbp")), "two!");
}

TEST_P(FileSystemConformance, SeesWhatItHasJustMadeAndRemoved) {
  for (int i = 0; i < 50; ++i) {
    const std::string number = std::to_string(i);
    Files().Replace(At("File" + number), "x");
    EXPECT_TRUE(Files().FileExists(At("FILE" + number)));
    Files().Remove(At("file" + number));
    EXPECT_FALSE(Files().FileExists(At("FILE" + number)));
  }
}

TEST_P(FileSystemConformance, StampsChangeWithTheFile) {
  Files().Replace(At("a"), "one");
  const FileStamp first = Files().Stamp(At("a"));
  EXPECT_EQ(first.size, 3);
  EXPECT_NE(first.identity, 0U);
  EXPECT_GT(first.modified, 1'600'000'000'000'000'000);  // the year 2020
  EXPECT_EQ(Files().Stamp(At("A")), first);
  Files().Replace(At("a"), "longer");
  EXPECT_NE(Files().Stamp(At("a")), first);
  Files().Replace(At("b"), "one");
  EXPECT_NE(Files().Stamp(At("b")).identity, Files().Stamp(At("a")).identity);
}

TEST_P(FileSystemConformance, HasNoStampForWhatIsNoFile) {
  EXPECT_EQ(Files().Stamp(At("none")).size, -1);
  EXPECT_EQ(Files().Stamp(At("")).size, -1);
}

TEST_P(FileSystemConformance, SetsAndClearsTheReadOnlyAttribute) {
  Files().Replace(At("a.txt"), "x");
  EXPECT_EQ(Files().Attributes(At("a.txt")) & kReadOnly, 0U);
  Files().SetAttributes(At("A.txt"), kReadOnly);
  EXPECT_EQ(Files().Attributes(At("a.txt")) & kReadOnly, kReadOnly);
  Files().SetAttributes(At("a.txt"), kNormal);
  EXPECT_EQ(Files().Attributes(At("a.txt")) & kReadOnly, 0U);
}

TEST_P(FileSystemConformance, ReportsFolders) {
  EXPECT_EQ(Files().Attributes(At("")) & (kFolder | kReadOnly), kFolder);
  Files().Replace(At("a"), "");
  EXPECT_EQ(Files().Attributes(At("a")) & kFolder, 0U);
}

TEST_P(FileSystemConformance, AttributesOfAMissingFileAreAnError) {
  ExpectFailure(automation::RuntimeError::FileNotFound, At("a"), [&] { Files().Attributes(At("a")); });
  ExpectFailure(automation::RuntimeError::FileNotFound, At("a"),
                [&] { Files().SetAttributes(At("a"), kNormal); });
  ExpectFailure(automation::RuntimeError::PathNotFound, At("x\\a"), [&] { Files().Attributes(At("x\\a")); });
}

TEST_P(FileSystemConformance, ReadsBytesAsTheyAre) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  Files().Replace(At("a"), bytes);
  EXPECT_EQ(Files().Read(At("a")), bytes);
  Files().Replace(At("empty"), "");
  EXPECT_EQ(Files().Read(At("empty")), "");
}

TEST_P(FileSystemConformance, ReadingAMissingFileIsAnError) {
  ExpectFailure(automation::RuntimeError::FileNotFound, At("a"), [&] { Files().Read(At("a")); });
  ExpectFailure(automation::RuntimeError::PathNotFound, At("x\\a"), [&] { Files().Read(At("x\\a")); });
  ExpectFailure(automation::RuntimeError::FileNotFound, At("a"), [&] { Files().Open(At("a")); });
  Files().Replace(At("file"), "");
  ExpectFailure(automation::RuntimeError::PathNotFound, At("file\\a"), [&] { Files().Read(At("file\\a")); });
}

TEST_P(FileSystemConformance, RefusesFoldersWhereFilesAreMeant) {
  Files().CreateFolders(At("d"));
  using automation::RuntimeError;
  ExpectFailure(RuntimeError::PathFileAccess, At("d"), [&] { Files().Read(At("d")); });
  ExpectFailure(RuntimeError::PathFileAccess, At("d"), [&] { Files().ReadOrCreate(At("d")); });
  ExpectFailure(RuntimeError::PathFileAccess, At("d"), [&] { Files().Open(At("d")); });
  ExpectFailure(RuntimeError::PathFileAccess, At("d"), [&] { Files().Replace(At("d"), "x"); });
  ExpectFailure(RuntimeError::PathFileAccess, At("d"), [&] { Files().Append(At("d"), "x"); });
  ExpectFailure(RuntimeError::PathFileAccess, At("d"), [&] { Files().Remove(At("d")); });
  ExpectFailure(RuntimeError::PathFileAccess, At("d"), [&] { Files().Copy(At("d"), At("e")); });
  Files().Replace(At("f"), "x");
  ExpectFailure(RuntimeError::PathFileAccess, At("d"), [&] { Files().Copy(At("f"), At("d")); });
  EXPECT_EQ(Names(At("")), (std::vector<std::string>{"d\\", "f"}));
}

TEST_P(FileSystemConformance, ReadOrCreateMakesAnEmptyFile) {
  EXPECT_EQ(Files().ReadOrCreate(At("New.txt")), "");
  EXPECT_EQ(Names(At("")), std::vector<std::string>{"New.txt"});
  Files().Replace(At("New.txt"), "x");
  EXPECT_EQ(Files().ReadOrCreate(At("new.txt")), "x");
  ExpectFailure(automation::RuntimeError::PathNotFound, At("x\\a"),
                [&] { Files().ReadOrCreate(At("x\\a")); });
}

TEST_P(FileSystemConformance, OpensFilesForReadingAtAnyPlace) {
  Files().Replace(At("a"), "0123456789");
  const auto file = Files().Open(At("A"));
  EXPECT_EQ(file->Size(), 10U);
  std::string buffer(4, '.');
  EXPECT_EQ(file->Read(3, buffer.data(), 4), 4U);
  EXPECT_EQ(buffer, "3456");
  EXPECT_EQ(file->Read(8, buffer.data(), 4), 2U);
  EXPECT_EQ(buffer, "8956");
  EXPECT_EQ(file->Read(10, buffer.data(), 4), 0U);
  EXPECT_EQ(file->Read(~std::uint64_t{0}, buffer.data(), 4), 0U);
  EXPECT_EQ(file->Read(0, buffer.data(), 0), 0U);
}

TEST_P(FileSystemConformance, ReplaceGivesAFileNewContent) {
  Files().Replace(At("a"), "a longer first text");
  Files().Replace(At("a"), "short");
  EXPECT_EQ(Files().Read(At("a")), "short");
  EXPECT_EQ(Names(At("")), std::vector<std::string>{"a"});
}

TEST_P(FileSystemConformance, ReplaceLeavesAFileAloneThatHasTheseBytes) {
  Files().Replace(At("a"), "same");
  const FileStamp before = Files().Stamp(At("a"));
  Files().Replace(At("A"), "same");
  EXPECT_EQ(Files().Stamp(At("a")), before);
}

TEST_P(FileSystemConformance, ReadOnlyFilesAreNotWrittenReplacedOrRemoved) {
  Files().Replace(At("a"), "old");
  Files().Replace(At("b"), "new");
  Files().SetAttributes(At("a"), kReadOnly);
  using automation::RuntimeError;
  ExpectFailure(RuntimeError::PathFileAccess, At("a"), [&] { Files().Replace(At("a"), "new"); });
  ExpectFailure(RuntimeError::PathFileAccess, At("a"), [&] { Files().Replace(At("a"), "old"); });
  ExpectFailure(RuntimeError::PathFileAccess, At("a"), [&] { Files().Append(At("a"), "new"); });
  ExpectFailure(RuntimeError::PathFileAccess, At("a"), [&] { Files().Copy(At("b"), At("a")); });
  ExpectFailure(RuntimeError::PathFileAccess, At("a"), [&] { Files().Remove(At("a")); });
  EXPECT_EQ(Files().Read(At("a")), "old");
  EXPECT_EQ(Files().ReadOrCreate(At("a")), "old");
  Files().SetAttributes(At("a"), kNormal);
  Files().Replace(At("a"), "new");
  EXPECT_EQ(Files().Read(At("a")), "new");
  EXPECT_EQ(Names(At("")), (std::vector<std::string>{"a", "b"}));
}

TEST_P(FileSystemConformance, WritingIntoAMissingFolderIsAnError) {
  using automation::RuntimeError;
  ExpectFailure(RuntimeError::PathNotFound, At("x\\a"), [&] { Files().Replace(At("x\\a"), "1"); });
  ExpectFailure(RuntimeError::PathNotFound, At("x\\a"), [&] { Files().Append(At("x\\a"), "1"); });
  Files().Replace(At("a"), "1");
  ExpectFailure(RuntimeError::PathNotFound, At("x\\a"), [&] { Files().Copy(At("a"), At("x\\a")); });
  ExpectFailure(RuntimeError::PathNotFound, At("x\\a"), [&] { Files().Rename(At("a"), At("x\\a")); });
  EXPECT_EQ(Names(At("")), std::vector<std::string>{"a"});
}

TEST_P(FileSystemConformance, CopesWithLargeFiles) {
  std::string bytes(50U << 20U, 'x');
  for (std::size_t i = 0; i < bytes.size(); i += 4093) bytes[i] = static_cast<char>(i >> 12U);
  Files().Replace(At("large"), bytes);
  EXPECT_EQ(Files().Stamp(At("large")).size, static_cast<std::int64_t>(bytes.size()));
  EXPECT_TRUE(Files().Read(At("large")) == bytes);
  const FileStamp before = Files().Stamp(At("large"));
  Files().Replace(At("large"), bytes);
  EXPECT_EQ(Files().Stamp(At("large")), before);
  bytes.back() = '!';
  Files().Replace(At("large"), bytes);
  Files().Copy(At("large"), At("copy"));
  EXPECT_TRUE(Files().Read(At("copy")) == bytes);
}

TEST_P(FileSystemConformance, AppendsToAFileOrMakesIt) {
  Files().Append(At("a"), "one");
  Files().Append(At("a"), " two");
  Files().Append(At("a"), "");
  EXPECT_EQ(Files().Read(At("a")), "one two");
}

TEST_P(FileSystemConformance, RemovesFiles) {
  Files().Replace(At("a.log"), "x");
  Files().Remove(At("A.LOG"));
  EXPECT_EQ(Names(At("")), conformance::kNoNames);
  ExpectFailure(automation::RuntimeError::FileNotFound, At("a.log"), [&] { Files().Remove(At("a.log")); });
  ExpectFailure(automation::RuntimeError::PathNotFound, At("x\\a"), [&] { Files().Remove(At("x\\a")); });
}

TEST_P(FileSystemConformance, CopiesContentAttributeAndTime) {
  Files().Replace(At("a"), "one");
  Files().SetAttributes(At("a"), kReadOnly);
  Files().Replace(At("b"), "other content");
  Files().Copy(At("A"), At("B"));
  EXPECT_EQ(Files().Read(At("b")), "one");
  EXPECT_EQ(Files().Attributes(At("b")) & kReadOnly, kReadOnly);
  EXPECT_EQ(Files().Stamp(At("b")).modified, Files().Stamp(At("a")).modified);
  EXPECT_NE(Files().Stamp(At("b")).identity, Files().Stamp(At("a")).identity);
  EXPECT_EQ(Names(At("")), (std::vector<std::string>{"a", "b"}));
}

TEST_P(FileSystemConformance, RefusesToCopyAMissingFileOrOneOntoItself) {
  using automation::RuntimeError;
  ExpectFailure(RuntimeError::FileNotFound, At("a"), [&] { Files().Copy(At("a"), At("b")); });
  Files().Replace(At("a"), "one");
  ExpectFailure(RuntimeError::PermissionDenied, At("A"), [&] { Files().Copy(At("a"), At("A")); });
  EXPECT_EQ(Files().Read(At("a")), "one");
}

TEST_P(FileSystemConformance, RenamesFilesAndFolders) {
  Files().CreateFolders(At("d"));
  Files().Replace(At("a"), "one");
  Files().Rename(At("A"), At("d\\b"));
  Files().Rename(At("d"), At("e"));
  EXPECT_EQ(Names(At("")), std::vector<std::string>{"e\\"});
  EXPECT_EQ(Files().Read(At("e\\b")), "one");
}

TEST_P(FileSystemConformance, RenameGivesANameAnotherSpelling) {
  Files().Replace(At("Lib.vbp"), "one");
  Files().Rename(At("lib.vbp"), At("LIB.vbp"));
  EXPECT_EQ(Names(At("")), std::vector<std::string>{"LIB.vbp"});
  Files().Rename(At("lib.vbp"), At("LIB.vbp"));
  EXPECT_EQ(Files().Read(At("LIB.vbp")), "one");
}

TEST_P(FileSystemConformance, RenameRefusesATakenNameAndAMissingFile) {
  using automation::RuntimeError;
  Files().Replace(At("a"), "one");
  Files().Replace(At("b"), "two");
  ExpectFailure(RuntimeError::FileAlreadyExists, At("B"), [&] { Files().Rename(At("a"), At("B")); });
  ExpectFailure(RuntimeError::FileNotFound, At("none"), [&] { Files().Rename(At("none"), At("c")); });
  EXPECT_EQ(Files().Read(At("b")), "two");
}

TEST_P(FileSystemConformance, CreatesFoldersWithThoseAboveThem) {
  Files().CreateFolders(At("One\\Two\\Three"));
  EXPECT_TRUE(Files().FolderExists(At("One\\Two\\Three")));
  Files().CreateFolders(At("ONE\\two\\three"));
  Files().CreateFolders(At("one\\TWO\\Four\\"));
  EXPECT_EQ(Names(At("")), std::vector<std::string>{"One\\"});
  EXPECT_EQ(Names(At("One\\Two")), (std::vector<std::string>{"Four\\", "Three\\"}));
  Files().CreateFolders(At(""));
}

TEST_P(FileSystemConformance, RefusesToCreateAFolderInPlaceOfAFile) {
  using automation::RuntimeError;
  Files().Replace(At("a"), "one");
  ExpectFailure(RuntimeError::PathFileAccess, At("A"), [&] { Files().CreateFolders(At("A")); });
  ExpectFailure(RuntimeError::PathNotFound, At("a\\b"), [&] { Files().CreateFolders(At("a\\b")); });
}

TEST_P(FileSystemConformance, RemovesEmptyFoldersOnly) {
  using automation::RuntimeError;
  Files().CreateFolders(At("d\\e"));
  ExpectFailure(RuntimeError::PathFileAccess, At("d"), [&] { Files().RemoveFolder(At("d")); });
  Files().RemoveFolder(At("D\\E"));
  Files().RemoveFolder(At("d"));
  EXPECT_EQ(Names(At("")), conformance::kNoNames);
  ExpectFailure(RuntimeError::PathNotFound, At("d"), [&] { Files().RemoveFolder(At("d")); });
  Files().Replace(At("f"), "");
  ExpectFailure(RuntimeError::PathNotFound, At("f"), [&] { Files().RemoveFolder(At("f")); });
}

TEST_P(FileSystemConformance, ListsFilesAndFolders) {
  Files().CreateFolders(At("sub folder"));
  Files().Replace(At("Größe.txt"), "");
  Files().Replace(At("sub folder\\inner"), "");
  EXPECT_EQ(Names(At("")), (std::vector<std::string>{"Größe.txt", "sub folder\\"}));
  EXPECT_EQ(Names(At("SUB FOLDER")), std::vector<std::string>{"inner"});
  EXPECT_EQ(Names(At("sub folder\\..")).size(), 2U);
}

TEST_P(FileSystemConformance, ListingAMissingFolderIsAnError) {
  using automation::RuntimeError;
  ExpectFailure(RuntimeError::PathNotFound, At("none"), [&] { Files().List(At("none")); });
  Files().Replace(At("a"), "");
  ExpectFailure(RuntimeError::PathNotFound, At("a"), [&] { Files().List(At("a")); });
  ExpectFailure(RuntimeError::PathNotFound, "", [&] { Files().List(""); });
}

TEST_P(FileSystemConformance, ShowsTheDetailsOfFilesAndFolders) {
  Files().Replace(At("a.txt"), "12345");
  const FileDetails file = Files().Details(At("A.TXT"));
  EXPECT_FALSE(file.isFolder);
  EXPECT_EQ(file.size, 5U);
  EXPECT_GT(file.modified, 43'831);  // the year 2020
  EXPECT_GT(file.created, 43'831);
  EXPECT_GT(file.accessed, 43'831);
  const FileDetails folder = Files().Details(At(""));
  EXPECT_TRUE(folder.isFolder);
  EXPECT_EQ(folder.attributes & kFolder, kFolder);
  ExpectFailure(automation::RuntimeError::FileNotFound, At("none"), [&] { Files().Details(At("none")); });
  ExpectFailure(automation::RuntimeError::PathNotFound, At("none\\x"),
                [&] { Files().Details(At("none\\x")); });
}

TEST_P(FileSystemConformance, WritesPieceByPiece) {
  const auto file = Files().OpenForWriting(At("a.txt"), {});
  file->Write("one ");
  EXPECT_EQ(Files().Read(At("a.txt")), "one ");
  file->Write("two");
  EXPECT_EQ(Files().Read(At("a.txt")), "one two");
  Files().OpenForWriting(At("A.txt"), {false, true, true})->Write("!");
  EXPECT_EQ(Files().Read(At("a.txt")), "one two!");
  Files().OpenForWriting(At("a.txt"), {})->Write("new");
  EXPECT_EQ(Files().Read(At("a.txt")), "new");
}

TEST_P(FileSystemConformance, OpensForWritingOnlyWhatTheModeAllows) {
  using automation::RuntimeError;
  const auto open = [&](const char* name, WriteMode mode) {
    return [this, name, mode] { Files().OpenForWriting(At(name), mode); };
  };
  Files().Replace(At("a.txt"), "kept");
  ExpectFailure(RuntimeError::FileNotFound, At("none"), open("none", {false, true, false}));
  ExpectFailure(RuntimeError::FileAlreadyExists, At("a.txt"), open("a.txt", {true, false, false}));
  ExpectFailure(RuntimeError::PathNotFound, At("no\\x"), open("no\\x", {}));
  Files().SetAttributes(At("a.txt"), kReadOnly);
  ExpectFailure(RuntimeError::PathFileAccess, At("a.txt"), open("a.txt", {}));
  EXPECT_EQ(Files().Read(At("a.txt")), "kept");
}

TEST_P(FileSystemConformance, MakesOneFolder) {
  using automation::RuntimeError;
  Files().CreateFolder(At("sub"));
  EXPECT_TRUE(Files().FolderExists(At("sub")));
  ExpectFailure(RuntimeError::FileAlreadyExists, At("SUB"), [&] { Files().CreateFolder(At("SUB")); });
  ExpectFailure(RuntimeError::PathNotFound, At("x\\y"), [&] { Files().CreateFolder(At("x\\y")); });
}

TEST_P(FileSystemConformance, ChangesTheCurrentFolder) {
  const std::string before = Files().CurrentFolder();
  Files().CreateFolder(At("sub"));
  Files().Replace(At("sub\\a.txt"), "x");
  Files().SetCurrentFolder(At("sub"));
  EXPECT_TRUE(Files().FileExists("a.txt"));
  EXPECT_TRUE(Files().CurrentFolder().ends_with("\\sub"));
  ExpectFailure(automation::RuntimeError::PathNotFound, At("none"),
                [&] { Files().SetCurrentFolder(At("none")); });
  Files().SetCurrentFolder(before);
}

TEST_P(FileSystemConformance, KnowsItsDrives) {
  const char letter = static_cast<char>(At("").front() & ~0x20);
  EXPECT_NE(Files().DriveLetters().find(letter), std::string::npos);
  const VolumeDetails volume = Files().Volume(At("").front());
  EXPECT_TRUE(volume.isReady);
  EXPECT_NE(volume.kind, VolumeKind::Unknown);
  EXPECT_GT(volume.totalBytes, 0U);
  EXPECT_GE(volume.totalBytes, volume.freeBytes);
  EXPECT_FALSE(Files().Volume('?').isReady);
}

}  // namespace hearthmake::platform
