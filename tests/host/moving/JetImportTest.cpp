#include "host/moving/JetImport.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "adapters/sqlite/BuildSchema.hpp"
#include "automation/OleDate.hpp"
#include "host/HostError.hpp"
#include "support/JetFileWriter.hpp"
#include "support/LegacyDatabase.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::host {
namespace {

namespace fs = std::filesystem;
using support::JetFileWriter;
using support::SmallBuilds;
using testing::ElementsAre;
using testing::HasSubstr;
using Rows = std::vector<std::vector<std::string>>;

// Bytes that no text of these databases has.
constexpr char kColumnEnd = '\x1F';
constexpr char kRowEnd = '\x1E';
constexpr const char* kNull = "\x1D";

std::vector<std::string> Split(const std::string& text, char end) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  for (std::size_t at; (at = text.find(end, begin)) != std::string::npos; begin = at + 1) {
    parts.push_back(text.substr(begin, at - begin));
  }
  parts.push_back(text.substr(begin));
  return parts;
}

std::string OutputOf(const std::string& command) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return output;
  for (int c = 0; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
  pclose(pipe);
  return output;
}

bool HasMdbExport() { return !OutputOf("command -v mdb-export").empty(); }

// The first row names the columns. It shows an empty text as Null.
Rows MdbExport(const std::string& file, const std::string& table) {
  const std::string output = OutputOf(
      "mdb-export -Q -d \"$(printf '\\037')\" -R \"$(printf '\\036')\" -0 \"$(printf '\\035')\" -D "
      "'%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' '" +
      file + "' '" + table + "'");
  Rows rows;
  for (const std::string& row : Split(output, kRowEnd)) {
    if (!row.empty()) rows.push_back(Split(row, kColumnEnd));
  }
  return rows;
}

sqlite::ColumnKind KindOf(const std::string& table, const std::string& column) {
  for (const auto& schema : sqlite::BuildTables()) {
    if (schema.name != table) continue;
    for (const auto& item : schema.columns) {
      if (item.name == column) return item.kind;
    }
  }
  ADD_FAILURE() << "no column " << table << "." << column;
  return sqlite::ColumnKind::Text;
}

std::string Shown(sqlite3_stmt* row, int column, sqlite::ColumnKind kind) {
  if (sqlite3_column_type(row, column) == SQLITE_NULL) return kNull;
  if (kind == sqlite::ColumnKind::YesNo) return sqlite3_column_int(row, column) != 0 ? "1" : "0";
  if (kind == sqlite::ColumnKind::Date) return automation::FormatIsoDate(sqlite3_column_double(row, column));
  const std::string text(reinterpret_cast<const char*>(sqlite3_column_text(row, column)),
                         static_cast<std::size_t>(sqlite3_column_bytes(row, column)));
  return text.empty() ? kNull : text;
}

class JetImportTest : public testing::Test {
 protected:
  JetSummary Import(const std::string& file, bool isReplacing = false) {
    return ImportJet(file, Target(), isReplacing, {}, "");
  }
  std::string FailureOf(const std::string& file) {
    try {
      Import(file);
    } catch (const HostError& error) {
      return error.what();
    }
    return "imported";
  }
  std::string Target() { return root.MakeFolder("data") + "/Build.mdb"; }
  bool IsNothingLeft() { return fs::is_empty(root.MakeFolder("data")); }

  Rows Imported(const std::string& table, const std::vector<std::string>& columns) {
    Rows rows;
    sqlite3* db = nullptr;
    sqlite3_stmt* statement = nullptr;
    std::string names;
    for (const std::string& column : columns) names += (names.empty() ? "\"" : ",\"") + column + '"';
    const std::string sql = "SELECT " + names + " FROM \"" + table + "\" ORDER BY rowid";
    EXPECT_EQ(sqlite3_open(Target().c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_prepare_v2(db, sql.c_str(), -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(db);
    while (sqlite3_step(statement) == SQLITE_ROW) {
      std::vector<std::string> row;
      for (std::size_t i = 0; i < columns.size(); ++i) {
        row.push_back(Shown(statement, static_cast<int>(i), KindOf(table, columns[i])));
      }
      rows.push_back(row);
    }
    sqlite3_finalize(statement);
    sqlite3_close(db);
    return rows;
  }

  // Every value of every table against what another program prints of it.
  void ExpectLikeMdbExport(const std::string& file) {
    const JetSummary summary = Import(file);
    for (const auto& [table, count] : summary.tables) {
      Rows expected = MdbExport(file, table);
      ASSERT_FALSE(expected.empty()) << table;
      const std::vector<std::string> columns = expected.front();
      expected.erase(expected.begin());
      EXPECT_EQ(expected.size(), count);
      EXPECT_EQ(Imported(table, columns), expected) << table;
    }
  }

  // Damages the file in as many ways: it is imported whole, or refused and nothing is left.
  void DamageAndImport(const std::string& bytes, unsigned times) {
    std::mt19937 random(20010324);  // the same everywhere
    unsigned imported = 0;
    for (unsigned i = 0; i < times; ++i) {
      std::string damaged = bytes;
      if (i % 5 == 0) {
        damaged.resize(random() % bytes.size());
      } else {
        for (unsigned change = 0; change < 1 + i % 4; ++change) {
          damaged[random() % bytes.size()] ^= static_cast<char>(1 << random() % 8);
        }
      }
      const std::string failure = FailureOf(root.MakeFile("damaged.mdb", damaged));
      if (failure != "imported") {
        EXPECT_THAT(failure, HasSubstr("can't be imported"));
        EXPECT_TRUE(IsNothingLeft()) << i;
        continue;
      }
      ++imported;
      EXPECT_THAT(sqlite::MissingColumns(Target()), testing::IsEmpty()) << i;
      EXPECT_FALSE(Imported("Build", {"Id"}).empty()) << i;
      fs::remove_all(root.Path("data"));
    }
    EXPECT_GT(imported, 0U);
    EXPECT_LT(imported, times);
  }

  support::PosixFolder root;
};

// In memory where that can be had: each import waits for the disk several times.
struct TemporaryInMemory {
  support::EnvironmentOverride folder{"TMPDIR", "/dev/shm"};
};
class JetDamageTest : private TemporaryInMemory, public JetImportTest {};

std::string BytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

TEST_F(JetImportTest, TakesOverEveryValueOfADatabaseOfJet) {
  const std::string file = support::LegacyDatabase();
  if (file.empty()) GTEST_SKIP() << "no database of Jet is here (HEARTHMAKE_LEGACY)";
  if (!HasMdbExport()) GTEST_SKIP() << "mdb-export is not here (package mdbtools)";
  ExpectLikeMdbExport(file);
}

TEST_F(JetImportTest, TakesOverEveryValueOfBothVersions) {
  if (!HasMdbExport()) GTEST_SKIP() << "mdb-export is not here (package mdbtools)";
  for (const int version : {3, 4}) {
    JetFileWriter writer = SmallBuilds(version);
    writer.tables[1].rows.pop_back();  // a date that mdb-export takes for another one
    ExpectLikeMdbExport(root.MakeFile("old.mdb", writer.Write()));
    fs::remove_all(root.Path("data"));
  }
}

TEST_F(JetImportTest, TellsWhatCameOver) {
  JetFileWriter writer = SmallBuilds(3);
  writer.tables.push_back({"Wetter", {{"Tag", JetFileWriter::Type::Date}}, {{1.5}}, 0, 0, 0});
  writer.tables[0].columns.push_back({"Farbe", JetFileWriter::Type::Long});
  for (auto& row : writer.tables[0].rows) row.emplace_back(5);
  const JetSummary summary = Import(root.MakeFile("old.mdb", writer.Write()));
  EXPECT_EQ(summary.format, "Jet 3");
  EXPECT_THAT(summary.tables, ElementsAre(testing::Pair("Build", 2U), testing::Pair("Project", 3U),
                                          testing::Pair("Scripts", 2U)));
  EXPECT_THAT(summary.builds, ElementsAre(testing::Pair(4, "Büro"), testing::Pair(7, "Laden – €")));
  EXPECT_THAT(summary.leftOut, ElementsAre("Build.Farbe", "Wetter"));
  EXPECT_THAT(summary.missing, testing::IsSupersetOf({"Build.StartDllBaseAddress", "Project.CopyPath",
                                                      "Scripts.BuildFailed", "References", "SSProjects"}));
}

TEST_F(JetImportTest, GivesDefaultsToWhatAnOldFileLacks) {
  Import(root.MakeFile("old.mdb", SmallBuilds(4).Write()));
  EXPECT_EQ(Imported("Project", {"Id", "CheckInVBP", "CopyPath", "MTSPackage"}),
            (Rows{{"11", "0", kNull, kNull}, {"12", "0", kNull, kNull}, {"15", "0", kNull, kNull}}));
}

// Yes is -1 where a number is kept.
TEST_F(JetImportTest, ConvertsValuesOfAnotherType) {
  using Type = JetFileWriter::Type;
  JetFileWriter writer = SmallBuilds(4);
  writer.tables.push_back({"MTSPackages",
                           {{"Id", Type::Long},
                            {"Name", Type::Text},
                            {"Autentication", Type::YesNo},
                            {"Shutdowntime", Type::Text},
                            {"IsSystem", Type::Integer}},
                           {{2, "P", true, "17", 1}},
                           0,
                           0,
                           0});
  Import(root.MakeFile("old.mdb", writer.Write()));
  EXPECT_EQ(Imported("MTSPackages", {"Id", "Autentication", "Shutdowntime", "IsSystem"}),
            (Rows{{"2", "-1", "17", "1"}}));
}

TEST_F(JetImportTest, RefusesValuesThatDontFit) {
  JetFileWriter writer = SmallBuilds(4);
  writer.tables[0].rows[2][0] = 4;
  EXPECT_THAT(FailureOf(root.MakeFile("old.mdb", writer.Write())), HasSubstr("Row 2 of the table Build: "));
  EXPECT_TRUE(IsNothingLeft());
  writer.tables[0].rows[2][0] = {};
  EXPECT_THAT(FailureOf(root.MakeFile("old.mdb", writer.Write())), HasSubstr("it has no id"));
  EXPECT_TRUE(IsNothingLeft());
}

TEST_F(JetImportTest, RefusesOtherDatabases) {
  JetFileWriter writer(4);
  writer.tables.push_back({"Wetter", {{"Tag", JetFileWriter::Type::Date}}, {{1.5}}, 0, 0, 0});
  const std::string file = root.MakeFile("old.mdb", writer.Write());
  EXPECT_EQ(FailureOf(file),
            file +
                " can't be imported. It is no build database: the table Build is missing. Its other "
                "tables: Wetter.");
  EXPECT_TRUE(IsNothingLeft());
  writer = SmallBuilds(4);
  writer.tables[1].columns[2].name = "Weg";
  EXPECT_THAT(FailureOf(root.MakeFile("old.mdb", writer.Write())),
              HasSubstr("the column Project.ProjectPath is missing"));
  EXPECT_TRUE(IsNothingLeft());
}

TEST_F(JetImportTest, ReplacesOnlyWhatItMay) {
  const std::string file = root.MakeFile("old.mdb", SmallBuilds(4).Write());
  root.MakeFile("data/Build.mdb", "somebody's work");
  EXPECT_THAT(FailureOf(file), HasSubstr("File already exists"));
  EXPECT_EQ(root.Content("data/Build.mdb"), "somebody's work");
  Import(file, true);
  EXPECT_EQ(Imported("Build", {"Id"}), (Rows{{"4"}, {"7"}}));
  Import(file, true);  // one of ours as well
  EXPECT_EQ(std::distance(fs::directory_iterator(root.Path("data")), fs::directory_iterator()), 1);
}

TEST_F(JetImportTest, DoesNotReplaceADatabaseInUse) {
  const std::string file = root.MakeFile("old.mdb", SmallBuilds(4).Write());
  Import(file);
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(Target().c_str(), &db), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(db, "BEGIN; UPDATE Build SET Name='new' WHERE Id=4", nullptr, nullptr, nullptr),
            SQLITE_OK);
  try {
    Import(file, true);
    ADD_FAILURE() << "it is replaced";
  } catch (const HostError& error) {
    EXPECT_THAT(error.what(), HasSubstr("already in use"));
  }
  EXPECT_EQ(sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(db);
  EXPECT_EQ(Imported("Build", {"Name"}).front().front(), "new");
}

TEST_F(JetDamageTest, SurvivesDamageOfADatabaseOfJet) {
  const std::string file = support::LegacyDatabase();
  if (file.empty()) GTEST_SKIP() << "no database of Jet is here (HEARTHMAKE_LEGACY)";
  DamageAndImport(BytesOf(file), 500);
}

TEST_F(JetDamageTest, SurvivesDamageOfBothVersions) {
  for (const int version : {3, 4}) DamageAndImport(SmallBuilds(version).Write(), 100);
}

}  // namespace
}  // namespace hearthmake::host
