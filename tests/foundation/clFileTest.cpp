#include "foundation/clFile.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "automation/Utf.hpp"
#include "support/ErrorExpect.hpp"
#include "support/Workbench.hpp"

namespace hearthmake {
namespace {

using support::ErrorOf;
using support::ExpectError;
using support::Workbench;

clFile At(const std::string& path) {
  clFile file;
  file.SetFile(path);
  return file;
}

clFile Opened(const std::string& path) {
  clFile file = At(path);
  file.OpenFile();
  return file;
}

clFile Holding(const std::string& content) {
  clFile file;
  file.SetContent(content);
  return file;
}

TEST(clFile, TellsThePartsOfItsPath) {
  const clFile file = At("C:\\a b\\c.d\\Lib.one.vbp");
  EXPECT_EQ(file.Path(), "C:\\a b\\c.d\\");
  EXPECT_EQ(file.Name(), "Lib.one.vbp");
  EXPECT_EQ(file.NameWithoutExtention(), "Lib.one");
  EXPECT_EQ(file.PathName(), "C:\\a b\\c.d\\Lib.one.vbp");
}

TEST(clFile, APathWithoutFolderHasNone) {
  const clFile file = At("Makefile");
  EXPECT_EQ(file.Path(), "");
  EXPECT_EQ(file.Name(), "Makefile");
  EXPECT_EQ(file.NameWithoutExtention(), "Makefile");
}

TEST(clFile, AFullStopInAFolderIsNoExtension) {
  EXPECT_EQ(At("C:\\c.d\\Makefile").NameWithoutExtention(), "Makefile");
}

TEST(clFile, ExistsAsAFileOnly) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "x");
  EXPECT_TRUE(At("C:\\src\\a.txt").Exists());
  EXPECT_TRUE(At("c:\\SRC\\A.TXT").Exists());
  EXPECT_FALSE(At("C:\\src\\b.txt").Exists());
  EXPECT_FALSE(At("C:\\src").Exists());
  EXPECT_FALSE(At("").Exists());
  EXPECT_FALSE(At("Q:\\no\\drive").Exists()) << "an error while checking is a no";
}

TEST(clFile, SettingAFileReadsNothing) {
  const Workbench bench;
  const clFile file = At("C:\\gone\\a.txt");
  EXPECT_FALSE(file.FileIsOpen());
  EXPECT_EQ(file.Content(), "");
}

TEST(clFile, OpeningReadsTheWholeFile) {
  const Workbench bench;
  bench.WriteBytes("C:\\src\\a.txt",
                   "Title=\"Gr\xF6\xDF"
                   "e\"\r\nlast");
  const clFile file = Opened("C:\\src\\a.txt");
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(file.Content(), "Title=\"Größe\"\r\nlast");
}

TEST(clFile, OpeningMakesAMissingFile) {
  const Workbench bench;
  const clFile file = Opened("C:\\src\\new.txt");
  EXPECT_TRUE(file.FileIsOpen());
  EXPECT_EQ(file.Content(), "");
  EXPECT_EQ(bench.Read("C:\\src\\new.txt"), "");
}

TEST(clFile, OpeningTwiceKeepsTheContent) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "disk");
  clFile file = Opened("C:\\src\\a.txt");
  file.SetContent("memory");
  file.OpenFile();
  EXPECT_EQ(file.Content(), "memory");
  file.CloseFile();
  file.OpenFile();
  EXPECT_EQ(file.Content(), "disk");
}

TEST(clFile, FailuresOfOpeningReachTheCaller) {
  const Workbench bench;
  clFile folder = At("C:\\src");
  EXPECT_NE(ErrorOf([&] { folder.OpenFile(); }).Number(), 0);
  EXPECT_FALSE(folder.FileIsOpen());
  clFile lost = At("C:\\gone\\a.txt");
  EXPECT_EQ(ErrorOf([&] { lost.OpenFile(); }).Number(), 76);
}

TEST(clFile, TheContentSurvivesClosing) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "text");
  clFile file = Opened("C:\\src\\a.txt");
  file.CloseFile();
  EXPECT_FALSE(file.FileIsOpen());
  EXPECT_EQ(file.Content(), "text");
}

TEST(clFile, SetsAndReadsAttributes) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "x");
  clFile file = At("C:\\src\\a.txt");
  EXPECT_FALSE(file.ReadOnly());
  file.SetAttributes(platform::kReadOnly);
  EXPECT_TRUE(file.ReadOnly());
  file.SetAttributes(platform::kNormal);
  EXPECT_FALSE(file.ReadOnly());
}

TEST(clFile, AttributesOfAMissingFileAreAnError) {
  const Workbench bench;
  EXPECT_EQ(ErrorOf([] { At("C:\\src\\gone.txt").SetAttributes(0); }).Number(), 53);
  EXPECT_EQ(ErrorOf([] { At("C:\\src\\gone.txt").ReadOnly(); }).Number(), 53);
}

TEST(clFile, GetTextNeedsAnOpenFile) {
  std::int32_t position = 1;
  const clFile file = Holding("a=b;");
  ExpectError([&] { file.GetText("a=", ";", position); }, 45, "cFile.GetText", "File is not open");
}

TEST(clFile, GetTextGivesThePieceBetweenTwoMarkers) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "Type=Exe\nName=\"Lib\"\n");
  const clFile file = Opened("C:\\src\\a.txt");
  std::int32_t position = 1;
  EXPECT_EQ(file.GetText("Name=", "\r\n", position), "\"Lib\"");
  EXPECT_EQ(position, 21) << "where the stop marker stands";
}

TEST(clFile, GetTextLeavesThePositionWhenThereIsNoPiece) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "a=b;c=;d=e");
  const clFile file = Opened("C:\\src\\a.txt");
  for (const char* marker : {"x=", "c=", "d="}) {
    std::int32_t position = 1;
    EXPECT_EQ(file.GetText(marker, ";", position), "") << marker;
    EXPECT_EQ(position, 1) << marker;
  }
  std::int32_t behind = 5;
  EXPECT_EQ(file.GetText("a=", ";", behind), "") << "searched from the position on";
}

TEST(clFile, SearchesRegardCase) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "Name=b\n");
  const clFile file = Opened("C:\\src\\a.txt");
  std::int32_t position = 1;
  EXPECT_EQ(file.GetText("NAME=", "\r\n", position), "");
  EXPECT_EQ(file.InFile("name"), 0);
}

TEST(clFile, APositionBeforeTheFirstIsInvalid) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "a=b;");
  const clFile file = Opened("C:\\src\\a.txt");
  std::int32_t position = 0;
  EXPECT_EQ(ErrorOf([&] { file.GetText("a=", ";", position); }).Number(), 5);
  EXPECT_EQ(ErrorOf([&] { file.GetRow("a=", position); }).Number(), 5);
  position = -1;
  EXPECT_EQ(ErrorOf([&] { file.GetRow("a=", position); }).Number(), 5);
}

TEST(clFile, APositionBehindTheEndFindsNothing) {
  const clFile file = Holding("a=b");
  std::int32_t position = 2147483647;
  EXPECT_EQ(file.GetRow("a", position), "");
  EXPECT_EQ(position, 0);
}

TEST(clFile, PutTextOverwritesInPlace) {
  clFile file = Holding("a=1234;");
  file.PutText("a=", "99", 1);
  EXPECT_EQ(file.Content(), "a=9934;");
}

TEST(clFile, PutTextAddsNothingBehindTheEnd) {
  clFile file = Holding("a=12");
  file.PutText("a=", "98765", 1);
  EXPECT_EQ(file.Content(), "a=98");
}

TEST(clFile, PutTextWithoutItsMarkerIsInvalidAndChangesNothing) {
  clFile file = Holding("a=12");
  EXPECT_EQ(ErrorOf([&] { file.PutText("b=", "9", 1); }).Number(), 5);
  EXPECT_EQ(ErrorOf([&] { file.PutText("a=", "9", 2); }).Number(), 5);
  EXPECT_EQ(file.Content(), "a=12");
}

TEST(clFile, ReplaceRowReplacesTheRowThatHoldsTheTextAndMovesToItsStart) {
  clFile file = Holding("Type=Exe\r\nMajorVer=1\r\n");
  std::int32_t position = 1;
  file.ReplaceRow("MajorVer=", "MajorVer=2", position);
  EXPECT_EQ(file.Content(), "Type=Exe\r\nMajorVer=2\r\n");
  EXPECT_EQ(position, 11);
}

TEST(clFile, ReplaceRowLeavesALastRowWithoutLineEndAlone) {
  clFile file = Holding("Type=Exe\r\nMajorVer=1");
  std::int32_t position = 1;
  file.ReplaceRow("MajorVer=", "MajorVer=2", position);
  EXPECT_EQ(file.Content(), "Type=Exe\r\nMajorVer=1");
  EXPECT_EQ(position, 11);
}

TEST(clFile, ReplaceRowOfATextThatIsNowhereSetsThePositionToZero) {
  clFile file = Holding("Type=Exe\r\n");
  std::int32_t position = 1;
  file.ReplaceRow("MajorVer=", "MajorVer=2", position);
  EXPECT_EQ(file.Content(), "Type=Exe\r\n");
  EXPECT_EQ(position, 0);
}

TEST(clFile, ARowInTheFirstLineBeginsAtItsSecondCharacter) {
  clFile file = Holding("Type=Exe\r\nx\r\n");
  std::int32_t position = 1;
  file.ReplaceRow("Type=", "New", position);
  EXPECT_EQ(file.Content(), "TNew\r\nx\r\n");
  EXPECT_EQ(position, 2);
  position = 1;
  EXPECT_EQ(file.GetRow("New", position), "New");
  position = 1;
  file.RemoveRow("New", position);
  EXPECT_EQ(file.Content(), "Tx\r\n");
}

TEST(clFile, ARowIsFoundByATextInItsMiddle) {
  clFile file = Holding("a\r\nfirst second third\r\nb\r\n");
  std::int32_t position = 1;
  file.ReplaceRow("second", "new", position);
  EXPECT_EQ(file.Content(), "a\r\nnew\r\nb\r\n");
}

TEST(clFile, RemoveRowTakesTheRowWithItsLineEnd) {
  clFile file = Holding("a\r\nb=1\r\nc\r\n");
  std::int32_t position = 1;
  file.RemoveRow("b=", position);
  EXPECT_EQ(file.Content(), "a\r\nc\r\n");
  EXPECT_EQ(position, 4);
}

TEST(clFile, RemoveRowOfTheLastRowWithoutLineEndKeepsItsLastCharacter) {
  clFile file = Holding("a\r\nb=12");
  std::int32_t position = 1;
  file.RemoveRow("b=", position);
  EXPECT_EQ(file.Content(), "a\r\n2");
}

TEST(clFile, RemoveRowStartsAtThePosition) {
  clFile file = Holding("\r\nb=1\r\nb=2\r\n");
  std::int32_t position = 5;
  file.RemoveRow("b=", position);
  EXPECT_EQ(file.Content(), "\r\nb=1\r\n");
}

TEST(clFile, GetRowGivesARowAndMovesPastTheFirstCharacterOfItsLineEnd) {
  const clFile file = Holding("a\r\nb=1\r\nc\r\n");
  std::int32_t position = 1;
  EXPECT_EQ(file.GetRow("b=", position), "b=1");
  EXPECT_EQ(position, 8) << "on the line feed";
}

TEST(clFile, GetRowOfALastRowWithoutLineEndIsEmpty) {
  const clFile file = Holding("a\r\nb=1");
  std::int32_t position = 1;
  EXPECT_EQ(file.GetRow("b=", position), "");
  EXPECT_EQ(position, 4) << "the start of the row";
}

TEST(clFile, GetRowWalksAllRowsThatHoldAText) {
  const clFile file = Holding("\r\nR=1\r\nR=2\r\nX\r\nR=3\r\n");
  std::vector<std::string> rows;
  for (std::int32_t position = 1; position != 0;) {
    const std::string row = file.GetRow("R=", position);
    if (!row.empty()) rows.push_back(row);
  }
  EXPECT_EQ(rows, (std::vector<std::string>{"R=1", "R=2", "R=3"}));
}

TEST(clFile, InsertNewRowIntoEmptyContentGivesJustTheRow) {
  clFile file;
  file.InsertNewRow("a=1", "", false);
  EXPECT_EQ(file.Content(), "a=1");
  file.SetContent("");
  file.InsertNewRow("a=1", "x", true);
  EXPECT_EQ(file.Content(), "a=1");
}

TEST(clFile, InsertNewRowBehindAFinalLineEndEndsTheRowToo) {
  clFile file = Holding("a\r\n");
  file.InsertNewRow("b=1", "", false);
  EXPECT_EQ(file.Content(), "a\r\nb=1\r\n");
}

TEST(clFile, InsertNewRowBehindARowWithoutLineEndAddsOneInBetween) {
  clFile file = Holding("a");
  file.InsertNewRow("b=1", "not there", false);
  EXPECT_EQ(file.Content(), "a\r\nb=1");
}

TEST(clFile, InsertNewRowPutsARowBehindTheOneFound) {
  clFile file = Holding("Type=Exe\r\nb\r\n");
  file.InsertNewRow("new", "Type=", false);
  EXPECT_EQ(file.Content(), "Type=Exe\r\nnew\r\nb\r\n");
}

TEST(clFile, InsertNewRowPutsARowBeforeTheOneFound) {
  clFile file = Holding("a\r\n[Section]\r\nb\r\n");
  file.InsertNewRow("new", "[", true);
  EXPECT_EQ(file.Content(), "a\r\nnew\r\n[Section]\r\nb\r\n");
}

TEST(clFile, InsertNewRowBeforeTheFirstRowGoesToTheEnd) {
  clFile file = Holding("[a]\r\nb\r\n");
  file.InsertNewRow("new", "[", true);
  EXPECT_EQ(file.Content(), "[a]\r\nb\r\n\r\nnew");
}

TEST(clFile, InsertNewRowBehindALastRowWithoutLineEndGoesToTheEnd) {
  clFile file = Holding("a\r\nType=Exe");
  file.InsertNewRow("new", "Type=", false);
  EXPECT_EQ(file.Content(), "a\r\nType=Exe\r\nnew");
}

TEST(clFile, SaveWritesTheContentInOnePieceAndCloses) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "a much longer old content");
  clFile file = Opened("C:\\src\\a.txt");
  file.SetContent("neu: ä€");
  file.Save();
  EXPECT_FALSE(file.FileIsOpen());
  EXPECT_EQ(bench.Read("C:\\src\\a.txt"), "neu: \xE4\x80");
  EXPECT_EQ(file.Content(), "neu: ä€");
}

TEST(clFile, SaveMakesTheFile) {
  const Workbench bench;
  clFile file = At("C:\\src\\new.txt");
  file.SetContent("x");
  file.Save();
  EXPECT_EQ(bench.Read("C:\\src\\new.txt"), "x");
}

TEST(clFile, SaveOfAReadOnlyFileSucceedsAndTheFileIsWriteableAfterwards) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "old");
  clFile file = Opened("C:\\src\\a.txt");
  file.SetAttributes(platform::kReadOnly);
  file.SetContent("new");
  file.Save();
  EXPECT_FALSE(file.ReadOnly());
  EXPECT_EQ(bench.Read("C:\\src\\a.txt"), "new");
}

TEST(clFile, AFileReadAndSavedUnchangedIsByteIdentical) {
  const Workbench bench;
  std::string bytes = "lf only\nno end \r\r\n";
  for (int byte = 0; byte < 256; ++byte) bytes.push_back(static_cast<char>(byte));
  bench.WriteBytes("C:\\src\\a.txt", bytes);
  clFile file = Opened("C:\\src\\a.txt");
  const std::string content = file.Content();
  file.SetContent(content);
  file.Save();
  EXPECT_EQ(bench.Read("C:\\src\\a.txt"), bytes);
}

TEST(clFile, AFileSavedAsReadIsMadeAgainWhenItHasGone) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "x");
  clFile file = Opened("C:\\src\\a.txt");
  file.DeleteFile();
  file.Save();
  EXPECT_EQ(Opened("C:\\src\\a.txt").Content(), "x");
}

TEST(clFile, WhatWasReadCountsForItsOwnFileOnly) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "x");
  bench.Write("C:\\src\\b.txt", "other");
  clFile file = Opened("C:\\src\\a.txt");
  file.SetFile("C:\\src\\b.txt");
  file.Save();
  EXPECT_EQ(Opened("C:\\src\\b.txt").Content(), "x");
  file.SetContent("y");
  file.Save();
  file.SetContent("x");
  file.Save();
  EXPECT_EQ(Opened("C:\\src\\b.txt").Content(), "x");
}

TEST(clFile, SaveIntoAMissingFolderIsAnErrorAndKeepsTheContent) {
  const Workbench bench;
  clFile file = At("C:\\gone\\a.txt");
  file.SetContent("x");
  EXPECT_EQ(ErrorOf([&] { file.Save(); }).Number(), 76);
  EXPECT_EQ(file.Content(), "x");
}

TEST(clFile, SaveAsWritesUnderTheNewName) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "text");
  clFile file = Opened("C:\\src\\a.txt");
  file.SaveAs("C:\\src\\b.txt", false);
  EXPECT_EQ(bench.Read("C:\\src\\b.txt"), "text");
  EXPECT_EQ(bench.Read("C:\\src\\a.txt"), "text");
  EXPECT_EQ(file.PathName(), "C:\\src\\b.txt");
  EXPECT_FALSE(file.FileIsOpen());
}

TEST(clFile, SaveAsOntoAnExistingFileIsRefusedAndKeepsTheNewName) {
  const Workbench bench;
  bench.Write("C:\\src\\b.txt", "there");
  clFile file = At("C:\\src\\a.txt");
  file.SetContent("x");
  ExpectError([&] { file.SaveAs("C:\\src\\b.txt", false); }, 45, "clFile.SaveAs", "File alredy exits");
  EXPECT_EQ(file.PathName(), "C:\\src\\b.txt");
  EXPECT_EQ(bench.Read("C:\\src\\b.txt"), "there");
}

TEST(clFile, SaveAsOverwritesWhenAskedTo) {
  const Workbench bench;
  bench.Write("C:\\src\\b.txt", "a longer text that was there");
  clFile file = Holding("x");
  file.SaveAs("C:\\src\\b.txt", true);
  EXPECT_EQ(bench.Read("C:\\src\\b.txt"), "x");
}

TEST(clFile, SaveAsDoesNotOverwriteAReadOnlyFile) {
  const Workbench bench;
  bench.Write("C:\\src\\b.txt", "there");
  At("C:\\src\\b.txt").SetAttributes(platform::kReadOnly);
  clFile file = Holding("x");
  EXPECT_EQ(ErrorOf([&] { file.SaveAs("C:\\src\\b.txt", true); }).Number(), 75);
  EXPECT_EQ(bench.Read("C:\\src\\b.txt"), "there");
}

TEST(clFile, DeletesItsFile) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "x");
  At("C:\\src\\a.txt").DeleteFile();
  EXPECT_FALSE(bench.files->FileExists("C:\\src\\a.txt"));
  EXPECT_EQ(ErrorOf([] { At("C:\\src\\a.txt").DeleteFile(); }).Number(), 53);
}

TEST(clFile, DeletesWithoutErrorWhenAskedTo) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "x");
  At("C:\\src\\a.txt").DeleteFileWithOutError();
  EXPECT_FALSE(bench.files->FileExists("C:\\src\\a.txt"));
  At("C:\\src\\a.txt").DeleteFileWithOutError();
  At("C:\\src").DeleteFileWithOutError();
  EXPECT_TRUE(bench.files->FolderExists("C:\\src"));
}

TEST(clFile, TellsWhereATextStandsFirst) {
  const clFile file = Holding("aXbX");
  EXPECT_EQ(file.InFile("X"), 2);
  EXPECT_EQ(file.InFile("Y"), 0);
}

TEST(clFile, PositionsCountCharactersOfTheCodePage) { EXPECT_EQ(Holding("äöüX").InFile("X"), 4); }

TEST(clFile, CopiesItsFileIntoAFolderAndCompletesTheCallersPath) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "x");
  bench.files->CreateFolders("C:\\dist");
  std::string folder = "C:\\dist";
  At("C:\\src\\a.txt").Copy(folder);
  EXPECT_EQ(folder, "C:\\dist\\");
  EXPECT_EQ(bench.Read("C:\\dist\\a.txt"), "x");
  At("C:\\src\\a.txt").Copy(folder);
  EXPECT_EQ(folder, "C:\\dist\\");
}

TEST(clFile, FailuresOfCopyingReachTheCaller) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "x");
  std::string folder = "C:\\gone";
  EXPECT_EQ(ErrorOf([&] { At("C:\\src\\a.txt").Copy(folder); }).Number(), 76);
  EXPECT_EQ(folder, "C:\\gone\\") << "completed before the copy";
  folder = "C:\\src";
  EXPECT_EQ(ErrorOf([&] { At("C:\\src\\gone.txt").Copy(folder); }).Number(), 53);
}

TEST(clFile, HasNoShortName) {
  EXPECT_EQ(At("C:\\Long Folder\\file.text").ShortFileName(), "C:\\Long Folder\\file.text");
}

TEST(clFile, TellsItsSizeOrZero) {
  const Workbench bench;
  bench.WriteBytes("C:\\src\\a.txt", std::string(1234, 'x'));
  EXPECT_EQ(At("C:\\src\\a.txt").Size(), 1234);
  EXPECT_EQ(At("C:\\src\\gone.txt").Size(), 0);
}

TEST(clFile, TellsWhichRowsAreMissing) {
  const clFile file = Holding("Type=Exe\r\nTitle=\"A\"\r\nName=\"B\"\r\n");
  using Rows = std::vector<clFile::ExpectedRow>;
  using Indexes = std::vector<std::size_t>;
  EXPECT_EQ(file.MissingRows(Rows{{"Title=", "\"A\""}, {"Name=", "\"B\""}}), Indexes{});
  EXPECT_EQ(file.MissingRows(Rows{{"HelpFile=", "\"\""}, {"Name=", "\"B\""}}), Indexes{0});
  EXPECT_EQ(file.MissingRows(Rows{{"Title=", "\"A\""}, {"Name=", "\"C\""}}), std::nullopt) << "another value";
}

// The quick answer must be that of the replacing itself, for every way in which keys can hide in rows.
TEST(clFile, RowsThatReplacingWouldChangeAreNeverTakenForPresent) {
  const std::vector<std::string> pieces = {"Name=",  "a", "\"b\"", "FileName=", "\r\n",
                                           "Title=", "=", "\r\n",  "Name=a",    "\xE9"};
  const std::vector<clFile::ExpectedRow> rows = {{"Name=", "a"}, {"Title=", "\"b\""}};
  std::mt19937 random(7);
  int complete = 0;
  for (int round = 0; round < 50000; ++round) {
    std::string content;
    for (auto count = random() % 9; count > 0; --count) content += pieces[random() % pieces.size()];
    clFile file = Holding(automation::Windows1252ToUtf8(content));
    const auto missing = file.MissingRows(rows);
    if (!missing) continue;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const std::string before = file.Content();
      std::int32_t position = 1;
      file.ReplaceRow(rows[i].marker, std::string(rows[i].marker) + std::string(rows[i].value), position);
      const bool isMissing = std::find(missing->begin(), missing->end(), i) != missing->end();
      EXPECT_EQ(position == 0, isMissing) << content;
      EXPECT_EQ(file.Content(), before) << content;
    }
    complete += missing->empty() ? 1 : 0;
  }
  EXPECT_GT(complete, 100);
}

// The one walk must do what taking the rows out and putting others in one by one does.
TEST(clFile, PutsRowsBehindTheFirstAsByOne) {
  const std::vector<std::string> pieces = {"Type=", "Ref=", "Obj=", "\r\n", "a", "\r\n", "xObj=y", "\xE9"};
  const std::vector<std::string> rows = {"Ref=\xC3\xA9", "Obj=2"};
  const std::vector<std::string_view> keys = {"Ref=", "Obj="};
  std::mt19937 random(3);
  int done = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string content = "Type=x";
    for (auto count = random() % 12; count > 0; --count) content += pieces[random() % pieces.size()];
    clFile quick = Holding(automation::Windows1252ToUtf8(content));
    if (!quick.PutRowsBehindFirst(rows, keys)) {
      EXPECT_EQ(quick.Content(), automation::Windows1252ToUtf8(content));
      continue;
    }
    clFile slow = Holding(automation::Windows1252ToUtf8(content));
    for (const std::string_view key : keys) {
      while (slow.InFile(key) != 0) {
        std::int32_t position = 1;
        slow.RemoveRow(key, position);
      }
    }
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) slow.InsertNewRow(*row, "Type=", false);
    EXPECT_EQ(quick.Content(), slow.Content()) << content;
    // Now the rows stand there, and one of those that settings bring back may hold a key again.
    quick.InsertNewRow("LastObj=1\r\nb", "", false);
    quick.InsertNewRow("", "", false);
    EXPECT_TRUE(quick.PutRowsBehindFirst(rows, keys));
    slow.InsertNewRow("b", "", false);
    slow.InsertNewRow("", "", false);
    EXPECT_EQ(quick.Content(), slow.Content()) << content;
    ++done;
  }
  EXPECT_GT(done, 1000);
}

TEST(clFile, EndsTheLastRowWhenItHoldsAText) {
  clFile file = Holding("a\r\nReference=x");
  file.EndLastRow("Object=");
  EXPECT_EQ(file.Content(), "a\r\nReference=x");
  file.EndLastRow("Reference=");
  EXPECT_EQ(file.Content(), "a\r\nReference=x\r\n");
  file.EndLastRow("Reference=");
  EXPECT_EQ(file.Content(), "a\r\nReference=x\r\n");
}

TEST(clFile, DropsItsContentAndCloses) {
  const Workbench bench;
  bench.Write("C:\\src\\a.txt", "x");
  clFile file = Opened("C:\\src\\a.txt");
  file.DropContent();
  EXPECT_FALSE(file.FileIsOpen());
  EXPECT_EQ(file.Content(), "");
  file.OpenFile();
  EXPECT_EQ(file.Content(), "x");
}

}  // namespace
}  // namespace hearthmake
