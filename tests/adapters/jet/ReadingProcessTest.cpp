#include "adapters/jet/ReadingProcess.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>

#include "automation/Error.hpp"
#include "support/JetFileWriter.hpp"
#include "support/JetRows.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::jet {
namespace {

using support::CollectedRows;
using support::CollectedTables;
using support::JetFileWriter;
using support::SmallBuilds;
using testing::ElementsAre;
using testing::HasSubstr;
using Type = JetFileWriter::Type;

constexpr const char* kProgram = BINARY_DIRECTORY "/src/hearthmake";

class ReadingProcessTest : public testing::Test {
 protected:
  static ReadingProcess::Options Options(const std::string& program = "") {
    ReadingProcess::Options options;
    options.program = program;
    options.tables = {"Build", "Project", "Scripts"};
    return options;
  }
  CollectedTables Read(JetFileWriter writer, ReadingProcess::Options options = Options()) {
    CollectedRows rows;
    ReadingProcess(root.MakeFile("old.mdb", writer.Write()), std::move(options)).Read(rows);
    return static_cast<CollectedTables&&>(rows);
  }
  std::string FailureOf(const std::string& path, ReadingProcess::Options options = Options()) {
    CollectedRows rows;
    try {
      ReadingProcess(path, std::move(options)).Read(rows);
    } catch (const automation::Error& error) {
      return error.Description();
    }
    return "read";
  }
  std::string FailureOfBytes(const std::string& bytes) { return FailureOf(root.MakeFile("old.mdb", bytes)); }
  std::string FailureOfFile(JetFileWriter writer) { return FailureOfBytes(writer.Write()); }

  support::PosixFolder root;
};

TEST_F(ReadingProcessTest, ReadsEveryValueOfBothVersions) {
  for (const int version : {3, 4}) {
    for (const char* program : {"", kProgram}) {
      const CollectedTables rows = Read(SmallBuilds(version), Options(program));
      ASSERT_EQ(rows.tables.size(), 3U);
      EXPECT_EQ(rows.tables[0].name, "Build");
      EXPECT_THAT(rows.tables[0].columns, ElementsAre("Id", "Name"));
      EXPECT_THAT(rows.tables[0].rows,
                  ElementsAre(std::vector<Value>{4, "Büro"}, std::vector<Value>{7, "Laden – €"}));
      EXPECT_THAT(rows.tables[1].rows,
                  ElementsAre(std::vector<Value>{11, 4, "C:\\Büro\\Kern.vbp", "\"Kern\"", true, false,
                                                 37755.729224537034},
                              std::vector<Value>{12, 4, "C:\\Büro\\Rest.vbp", {}, false, true, {}},
                              std::vector<Value>{15, 7, "", "\"Kasse\"", true, true, -1.25}));
      EXPECT_THAT(rows.tables[2].rows,
                  ElementsAre(std::vector<Value>{4, "' kurz", std::string(1500, 'x') + "ü",
                                                 std::string(30000, 'y') + "ß"},
                              std::vector<Value>{7, {}, "", {}}));
    }
  }
}

TEST_F(ReadingProcessTest, ReadsTablesOfManyPages) {
  JetFileWriter writer = SmallBuilds(4);
  auto& rows = writer.tables[1].rows;
  for (std::int32_t i = 0; i < 2000; ++i) rows.push_back({100 + i, 7, "C:\\x", {}, i % 2 == 0, false, {}});
  const CollectedTables read = Read(writer);
  EXPECT_EQ(read.tables[1].rows, rows);
}

TEST_F(ReadingProcessTest, NamesOtherTablesAndLeavesThoseOfTheSystemAlone) {
  JetFileWriter writer = SmallBuilds(4);
  writer.tables.push_back({"Wetter", {{"Tag", Type::Date}}, {{1.5}}, 0, 0, 0});
  writer.tables.push_back({"MSysACEs", {{"ACM", Type::Long}}, {}, 0x80000000, 0, 0});
  EXPECT_THAT(Read(writer).others, ElementsAre("Wetter"));
}

TEST_F(ReadingProcessTest, LeavesOutColumnsThatNoBuildHas) {
  JetFileWriter writer = SmallBuilds(4);
  writer.tables[0].columns.push_back({"Logo", Type::Ole});
  for (auto& row : writer.tables[0].rows) row.emplace_back();
  EXPECT_THAT(Read(writer).tables[0].columns, ElementsAre("Id", "Name"));
}

TEST_F(ReadingProcessTest, RefusesATableWithFewerRowsThanItCounts) {
  JetFileWriter writer = SmallBuilds(4);
  writer.tables[1].countedTooMany = 2;
  EXPECT_EQ(FailureOfFile(writer),
            "The database is damaged: the table Project should have 5 rows, and 3 can be found.");
}

TEST_F(ReadingProcessTest, RefusesWhatIsLocked) {
  JetFileWriter writer = SmallBuilds(4);
  writer.password = "secret";
  EXPECT_EQ(FailureOfFile(writer), "The database has a password.");
  writer.key = 1;
  EXPECT_EQ(FailureOfFile(writer), "The database is encrypted.");
}

TEST_F(ReadingProcessTest, RefusesForeignFiles) {
  EXPECT_EQ(FailureOfBytes(""), "It is empty.");
  EXPECT_EQ(FailureOfBytes("hello"), "It is no Jet database.");
  EXPECT_EQ(FailureOfBytes(std::string(10000, '\0')), "It is no Jet database.");
  std::string newer = SmallBuilds(4).Write();
  newer[20] = 3;
  EXPECT_THAT(FailureOfBytes(newer), HasSubstr("Access 2007 or later"));
}

TEST_F(ReadingProcessTest, RefusesWhatIsNoFile) {
  EXPECT_THAT(FailureOf(root.Path("missing.mdb")), HasSubstr("No such file"));
  EXPECT_EQ(FailureOf(root.Path()), "It is not a file.");
  ASSERT_EQ(mkfifo(root.Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(FailureOf(root.Path("pipe")), "It is not a file.");
  if (geteuid() == 0) return;  // who may read everything
  const std::string secret = root.MakeFile("secret.mdb", SmallBuilds(4).Write());
  std::filesystem::permissions(secret, std::filesystem::perms(0));
  EXPECT_THAT(FailureOf(secret), HasSubstr("Permission denied"));
}

TEST_F(ReadingProcessTest, TellsOfAProgramThatIsNotThere) {
  const std::string path = root.MakeFile("old.mdb", SmallBuilds(4).Write());
  EXPECT_THAT(FailureOf(path, Options("/nowhere/hearthmake")),
              HasSubstr("can't be started: /nowhere/hearthmake"));
}

TEST_F(ReadingProcessTest, TellsOfAReaderThatSaysNothingOrSomethingElse) {
  const std::string path = root.MakeFile("old.mdb", SmallBuilds(4).Write());
  EXPECT_THAT(FailureOf(path, Options("/bin/true")), HasSubstr("its reader ended early"));
  EXPECT_THAT(FailureOf(path, Options("/bin/echo")), HasSubstr("something else than rows"));
  const std::string dying = root.MakeFile("dying", "#!/bin/sh\nkill -SEGV $$\n");
  std::filesystem::permissions(dying, std::filesystem::perms(0755));
  EXPECT_THAT(FailureOf(path, Options(dying)), HasSubstr("ended by the signal 11"));
}

TEST_F(ReadingProcessTest, EndsAReaderWhenAStopIsWanted) {
  const std::string path = root.MakeFile("old.mdb", SmallBuilds(4).Write());
  const std::string slow = root.MakeFile("slow", "#!/bin/sh\nexec sleep 60\n");
  std::filesystem::permissions(slow, std::filesystem::perms(0755));
  ReadingProcess::Options options = Options(slow);
  options.isStopWanted = [] { return true; };
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(FailureOf(path, options), "Cancelled.");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

TEST_F(ReadingProcessTest, IsDamagedWhereAPieceOfALongTextLeadsAstray) {
  const std::string bytes = SmallBuilds(4).Write();
  const std::size_t piece = bytes.find("\xFF\xFEyyyyyyyy");
  ASSERT_NE(piece, std::string::npos);
  for (const char wrong : {'\0', '\x7F'}) {
    std::string damaged = bytes;
    // The first piece begins with the place of the next.
    damaged.replace(piece - 4, 4, std::string(4, wrong));
    EXPECT_THAT(FailureOfBytes(damaged), HasSubstr("a piece of a long text is missing"));
  }
}

}  // namespace
}  // namespace hearthmake::jet
