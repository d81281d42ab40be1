#include "adapters/sqlite/SqlTranslations.hpp"

#include <gtest/gtest.h>

#include <string>

#include "support/SqliteTestFolder.hpp"

namespace hearthmake::sqlite {
namespace {

using test::ErrorOf;

// Whether the translation is what the text alone would give.
void ExpectAsAlone(SqlTranslations& translations, const std::string& sql) {
  const JetSql alone(sql, "test");
  const JetSql& result = translations.Of(sql, "test");
  EXPECT_EQ(result.Text(), alone.Text()) << sql;
  EXPECT_EQ(result.Literals(), alone.Literals()) << sql;
  EXPECT_EQ(result.Table(), alone.Table()) << sql;
  EXPECT_EQ(result.Kind(), alone.Kind()) << sql;
  EXPECT_EQ(result.SelectsKey(), alone.SelectsKey()) << sql;
  EXPECT_EQ(result.SoughtColumn(), alone.SoughtColumn()) << sql;
}

TEST(SqlTranslations, DifferFromOneAnotherInTheNumberAtTheEndAlone) {
  SqlTranslations translations;
  const JetSql* first = &translations.Of("SELECT * FROM T WHERE id = 5", "test");
  EXPECT_EQ(first, &translations.Of("SELECT * FROM T WHERE id = 1234567890", "test"));
  EXPECT_EQ(first->EndNumber(), 1234567890);
  EXPECT_NE(first, &translations.Of("SELECT * FROM U WHERE id = 5", "test"));
}

TEST(SqlTranslations, AreThoseOfTheTextWhateverCameBefore) {
  SqlTranslations translations;
  for (int round = 0; round < 2; ++round) {
    for (const char* sql : {"SELECT * FROM T WHERE id = 5",
                            "SELECT * FROM T WHERE id = 007",
                            "SELECT * FROM T WHERE id=5",
                            "SELECT * FROM T WHERE id = -5",
                            "SELECT * FROM T WHERE id = 5 ",
                            "SELECT * FROM T WHERE id = 5;",
                            "SELECT * FROM T WHERE id = 99999999999999999999",
                            "SELECT * FROM T WHERE id = 1.5",
                            "SELECT * FROM T WHERE id = .5",
                            "SELECT * FROM T WHERE id = &H10",
                            "SELECT * FROM T WHERE a5",
                            "SELECT * FROM T5",
                            "SELECT * FROM T ORDER BY 1",
                            "SELECT * FROM T ORDER BY 2",
                            "SELECT 1",
                            "SELECT 2",
                            "SELECT * FROM T WHERE a = 'x' AND id = 5",
                            "SELECT * FROM T WHERE a = 'y' AND id = 5",
                            "SELECT a FROM T WHERE id = 5",
                            "DELETE FROM T WHERE id = 5",
                            "SELECT * FROM T WHERE id < 5",
                            "SELECT * FROM T WHERE TRUE = 5",
                            "SELECT * FROM T WHERE [a b] = 5"}) {
      ExpectAsAlone(translations, sql);
    }
  }
}

TEST(SqlTranslations, RefuseWhatIsNoStatementHoweverOftenItIsSent) {
  SqlTranslations translations;
  translations.Of("SELECT * FROM T WHERE id = 5", "test");
  for (const char* sql : {"SELECT * FROM T WHERE a = 'x 5", "SELECT * FROM T WHERE a = #1/1/2000 5",
                          "SELECT * FROM T WHERE [a 5", "PRAGMA user_version = 5", " 5", "5", ""}) {
    for (int round = 0; round < 2; ++round) {
      EXPECT_NE(ErrorOf([&] { translations.Of(sql, "test"); }), 0) << sql;
    }
  }
}

TEST(SqlTranslations, OfManyTextsAreStillRight) {
  SqlTranslations translations;
  for (int i = 0; i < 200; ++i) {
    ExpectAsAlone(translations, "SELECT * FROM T" + std::to_string(i) + " WHERE id = " + std::to_string(i));
  }
  ExpectAsAlone(translations, "SELECT * FROM T0 WHERE id = 7");
}

}  // namespace
}  // namespace hearthmake::sqlite
