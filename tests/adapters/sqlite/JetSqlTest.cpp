#include "adapters/sqlite/JetSql.hpp"

#include <gtest/gtest.h>

#include "support/SqliteTestFolder.hpp"

namespace hearthmake::sqlite {
namespace {

using test::ErrorOf;

std::string Text(const std::string& sql) { return JetSql(sql, "test").Text(); }
int ErrorIn(const std::string& sql) {
  return ErrorOf([&] { JetSql(sql, "test"); });
}

TEST(JetSql, QuotesNamesWhateverTheyAre) {
  EXPECT_EQ(Text("DELETE FROM References WHERE idREferencing = 3"),
            "DELETE FROM \"References\" WHERE \"idREferencing\" = ?");
  EXPECT_EQ(Text("SELECT a.[b c] FROM a"), "SELECT \"a\".\"b c\" FROM \"a\"");
  EXPECT_EQ(Text("SELECT pragma FROM limit"), "SELECT \"pragma\" FROM \"limit\"");
}

TEST(JetSql, NamesATableWrittenAgainstItsBracket) {
  EXPECT_EQ(Text("INSERT INTO References(idReferencing, idreferenced) VALUES (1,2)"),
            "INSERT INTO \"References\" ( \"idReferencing\" , \"idreferenced\" ) VALUES ( ? , ? )");
}

TEST(JetSql, TakesLiteralsOutOfTheText) {
  const JetSql sql(
      "INSERT INTO T VALUES ('a''b', \"c\"\"d\", 5, 1.5, &HFF, #1/2/2000#, 99999999999999999999)", "test");
  EXPECT_EQ(sql.Text(), "INSERT INTO \"T\" VALUES ( ? , ? , ? , ? , ? , ? , ? )");
  ASSERT_EQ(sql.Literals().size(), 7u);
  EXPECT_EQ(std::get<std::string>(sql.Literals()[0]), "a'b");
  EXPECT_EQ(std::get<std::string>(sql.Literals()[1]), "c\"d");
  EXPECT_EQ(std::get<std::int64_t>(sql.Literals()[2]), 5);
  EXPECT_EQ(std::get<double>(sql.Literals()[3]), 1.5);
  EXPECT_EQ(std::get<std::int64_t>(sql.Literals()[4]), 255);
  EXPECT_EQ(std::get<double>(sql.Literals()[5]), 36527);
  EXPECT_EQ(std::get<double>(sql.Literals()[6]), 1e20);
}

TEST(JetSql, LeavesTextsUntouched) {
  const std::string value = "a -- b; \"c\" References /* */ [x] #1# ? \n\t\xFF";
  const JetSql sql("INSERT INTO T VALUES ('" + value + "')", "test");
  EXPECT_EQ(std::get<std::string>(sql.Literals().at(0)), value);
}

TEST(JetSql, WritesDifferentBlanksAndCaseOfValuesAsOneText) {
  EXPECT_EQ(Text("SELECT * FROM T WHERE  id=5"), Text("SELECT *  FROM T WHERE id = 77 ;"));
}

TEST(JetSql, KnowsTheConstants) {
  EXPECT_EQ(Text("DELETE FROM T WHERE a = True OR b = false"),
            "DELETE FROM \"T\" WHERE \"a\" = -1 OR \"b\" = 0");
}

TEST(JetSql, NamesUnnamedResultColumnsAsJetDoes) {
  EXPECT_EQ(Text("SELECT COUNT(*) FROM References"),
            "SELECT COUNT ( * ) AS \"Expr1000\" FROM \"References\"");
  EXPECT_EQ(Text("SELECT a, MAX(b), b AS c, -1 FROM T"),
            "SELECT \"a\" , MAX ( \"b\" ) AS \"Expr1001\" , \"b\" AS \"c\" , - ? AS \"Expr1003\" FROM \"T\"");
  EXPECT_EQ(Text("SELECT COUNT(x)FROM T"), "SELECT COUNT ( \"x\" ) AS \"Expr1000\" FROM \"T\"");
}

TEST(JetSql, AsksForTheKeyOfPlainRows) {
  for (const char* plain :
       {"SELECT * FROM T", "SELECT * FROM T WHERE a = 1", "SELECT * FROM [T] ORDER BY 1;"}) {
    EXPECT_TRUE(JetSql(plain, "test").SelectsKey()) << plain;
  }
  for (const char* other : {"SELECT a FROM T", "SELECT * FROM T, U", "SELECT * FROM T AS U",
                            "SELECT DISTINCT * FROM T", "SELECT * FROM T INNER JOIN U ON T.a = U.a",
                            "SELECT * FROM T WHERE a = 1 UNION SELECT * FROM U", "DELETE * FROM T"}) {
    EXPECT_FALSE(JetSql(other, "test").SelectsKey()) << other;
  }
  const JetSql sql("SELECT * FROM T WHERE a = 1", "test");
  EXPECT_EQ(sql.Text(), "SELECT *,_rowid_ FROM \"T\" WHERE \"a\" = ?");
  EXPECT_EQ(sql.TextWithoutKey(), "SELECT * FROM \"T\" WHERE \"a\" = ?");
  EXPECT_EQ(sql.Table(), "T");
}

TEST(JetSql, LeavesPositionsInOrderByAlone) {
  EXPECT_EQ(Text("SELECT a FROM T ORDER BY 1 DESC"), "SELECT \"a\" FROM \"T\" ORDER BY 1 DESC");
}

TEST(JetSql, AcceptsTheStarOfADelete) { EXPECT_EQ(Text("DELETE * FROM T"), "DELETE FROM \"T\""); }

TEST(JetSql, RefusesOtherStatements) {
  for (const char* sql :
       {"", "  ", ";", "PRAGMA journal_mode=OFF", "ATTACH DATABASE 'x' AS y", "CREATE TABLE T (a)",
        "DROP TABLE Build", "VACUUM", "BEGIN", "WITH x AS (SELECT 1) DELETE FROM T",
        "REPLACE INTO T VALUES (1)", "EXPLAIN SELECT 1", "'SELECT'", "[SELECT] 1", "(SELECT 1)"}) {
    EXPECT_EQ(ErrorIn(sql), 3129) << sql;
  }
}

TEST(JetSql, RefusesASecondStatement) {
  EXPECT_EQ(ErrorIn("DELETE FROM T; DELETE FROM U"), 3142);
  EXPECT_EQ(ErrorIn("DELETE FROM T;--"), 3142);
  EXPECT_EQ(ErrorIn("DELETE FROM T;/* */"), 3142);
  EXPECT_EQ(ErrorIn("DELETE FROM T ; ;"), 3142);
  EXPECT_EQ(ErrorIn(std::string("DELETE FROM T;\0DELETE FROM U", 29)), 3142);
}

TEST(JetSql, RefusesWordsThatJetDoesNotKnow) {
  for (const char* sql : {"DELETE FROM T --x",
                          "DELETE FROM T /*x*/",
                          "SELECT * FROM T WHERE a = ?",
                          "SELECT * FROM T WHERE a = :b",
                          "SELECT * FROM T WHERE a = @b",
                          "SELECT * FROM T WHERE a == $b",
                          "SELECT `a` FROM T",
                          "SELECT a || b FROM T",
                          "SELECT a % b FROM T",
                          "DELETE FROM T WHERE a != 1",
                          "DELETE FROM T WHERE a = 'x",
                          "DELETE FROM T WHERE a = \"x",
                          "DELETE FROM T WHERE a = 5x",
                          "DELETE FROM T WHERE a = 1.5e",
                          "DELETE FROM T WHERE a = &HZ",
                          "DELETE FROM T WHERE a = #x#",
                          "DELETE FROM T WHERE a = #1/1/2000",
                          "DELETE FROM [T",
                          "DELETE FROM []",
                          "DELETE FROM T WHERE a = x'00' \\"}) {
    EXPECT_EQ(ErrorIn(sql), 3075) << sql;
  }
  EXPECT_EQ(ErrorIn(std::string("DELETE FROM T \0", 15)), 3075);
  EXPECT_EQ(ErrorIn("SELECT load_extension('x') FROM T"), 3085);
  EXPECT_EQ(ErrorIn("SELECT * FROM T WHERE randomblob(9) = 1"), 3085);
}

TEST(JetSql, ShowsWhereTheMistakeIs) {
  std::string description;
  std::string source;
  ErrorOf([] { JetSql("INSERT INTO T VALUES ('it's')", "DAO.Database"); }, &description, &source);
  EXPECT_EQ(description, "Syntax error in string in query expression '')'.");
  EXPECT_EQ(source, "DAO.Database");
}

TEST(ParseJetDate, ReadsDaysAndTimes) {
  double date = 0;
  EXPECT_TRUE(ParseJetDate("1/2/2000", date));
  EXPECT_EQ(date, 36527);
  EXPECT_TRUE(ParseJetDate(" 2000-01-02 18:00 ", date));
  EXPECT_EQ(date, 36527.75);
  EXPECT_TRUE(ParseJetDate("1/2/2000 6:00:00 PM", date));
  EXPECT_EQ(date, 36527.75);
  EXPECT_TRUE(ParseJetDate("12:00 AM", date));
  EXPECT_EQ(date, 0);
  EXPECT_TRUE(ParseJetDate("12/29/1899 6:00", date));
  EXPECT_EQ(date, -1.25);
}

TEST(ParseJetDate, RefusesWhatIsNoDate) {
  double date = 0;
  for (const char* text :
       {"", " ", "x", "1/2", "2/30/2000", "13/1/2000", "0/1/2000", "1/1/99", "1/1/2000x", "1/1/2000 25:00",
        "1/1/2000 1:60", "1/1/2000 13:00 PM", "1/2-2000", "1/1/99999", ":", "2000-01-02 1"}) {
    EXPECT_FALSE(ParseJetDate(text, date)) << text;
  }
}

}  // namespace
}  // namespace hearthmake::sqlite
