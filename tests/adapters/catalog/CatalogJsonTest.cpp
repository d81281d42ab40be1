#include "adapters/catalog/CatalogJson.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/ErrorExpect.hpp"

namespace hearthmake::catalog {
namespace {

using automation::Variant;
using automation::VariantType;
using support::ErrorOf;
using testing::HasSubstr;
using testing::StartsWith;

// A catalog with one package of these properties.
CatalogData With(const Properties& properties) {
  CatalogData data;
  data.packages.emplace_back();
  data.packages[0].key = "{1}";
  data.packages[0].properties = properties;
  return data;
}

std::string Failure(const std::string& text) {
  return ErrorOf([&] { ParseCatalog(text, "/data/catalog.json"); }).Description();
}

// The text of a sound catalog with a piece of it replaced.
std::string Spoilt(const std::string& piece, const std::string& by) {
  Properties properties;
  properties.Set("Name", Variant::FromText("Orders"));
  properties.Set("Size", Variant::FromLong(3));
  std::string text = PrintCatalog(With(properties));
  const std::size_t place = text.find(piece);
  EXPECT_NE(place, std::string::npos) << piece;
  return text.replace(place, piece.size(), by);
}

TEST(CatalogJson, KeepsEveryTypeOfValue) {
  Properties properties;
  properties.Set("text", Variant::FromText("Stra\xC3\x9F"
                                           "e \xF0\x9F\x98\x80 \"\\\n"));
  properties.Set("long", Variant::FromLong(-2147483647 - 1));
  properties.Set("double", Variant::FromDouble(3));
  properties.Set("small", Variant::FromDouble(1e-300));
  properties.Set("true", Variant::FromBoolean(true));
  properties.Set("false", Variant::FromBoolean(false));
  properties.Set("null", Variant::Null());
  properties.Set("empty", Variant());
  properties.Set("integer", Variant::FromInteger(-32768));
  properties.Set("byte", Variant::FromByte(255));
  properties.Set("single", Variant::FromSingle(0.1F));
  properties.Set("date", Variant::FromDate(36975.545138888889));
  properties.Set("currency", Variant::FromCurrency(-9223372036854775807LL));
  properties.Set("error", Variant::FromErrorCode(-2147352572));
  properties.Set("Password", Variant::FromText("x"));
  const std::string text = PrintCatalog(With(properties));
  const CatalogData read = ParseCatalog(text, "catalog.json");
  const auto& all = read.packages.at(0).properties.All();
  ASSERT_EQ(all.size(), properties.All().size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(all[i].name, properties.All()[i].name);
    EXPECT_TRUE(IsSame(all[i], properties.All()[i])) << all[i].name;
  }
  EXPECT_EQ(PrintCatalog(read), text);
}

TEST(CatalogJson, ReadsAnEmptyTextAsAnEmptyCatalog) {
  EXPECT_TRUE(ParseCatalog("", "x").packages.empty());
  EXPECT_TRUE(ParseCatalog(PrintCatalog({}), "x").applications.empty());
}

TEST(CatalogJson, ReplacesWhatIsNoCharacter) {
  Properties properties;
  const char16_t lone[] = {u'a', 0xD800, u'b'};
  properties.Set("text", Variant::FromUtf16(std::u16string_view(lone, 3)));
  EXPECT_THAT(PrintCatalog(With(properties)), HasSubstr("a\xEF\xBF\xBD"));
}

TEST(CatalogJson, SaysWhereAFileIsDamaged) {
  EXPECT_EQ(Failure("{\n\"format\": \"hearthmake catalog\",\n\"version\": 1"),
            "/data/catalog.json, line 3: this is damaged or no JSON. Nothing was changed; repair the file or "
            "move it away.");
  EXPECT_THAT(Failure("\xFF\xFE"), StartsWith("/data/catalog.json, line 1: this is damaged"));
}

TEST(CatalogJson, RefusesAForeignFile) {
  for (const char* text : {"{}", "[]", "3", "\"hearthmake catalog\"", "{\"format\": \"other\"}"})
    EXPECT_THAT(Failure(text), StartsWith("/data/catalog.json, line 1: this is another file, no catalog"));
}

TEST(CatalogJson, RefusesACatalogOfANewerProgram) {
  EXPECT_THAT(Failure(Spoilt("\"version\": 1", "\"version\": 2")),
              StartsWith("/data/catalog.json, line 3: a newer hearthmake"));
}

TEST(CatalogJson, NamesTheLineOfWhatDoesNotFit) {
  // Lines: 1 {, 2 format, 3 version, 4 packages, 5 {, 6 key, 7 properties, 8 Name, 9 Size
  EXPECT_THAT(Failure(Spoilt("\"{1}\"", "7")), StartsWith("/data/catalog.json, line 6: a text is expected"));
  EXPECT_THAT(Failure(Spoilt("\"key\"", "\"kee\"")),
              StartsWith("/data/catalog.json, line 5: \"key\" is missing"));
  EXPECT_THAT(Failure(Spoilt("3\n", "{\"Colour\": 3}\n")),
              StartsWith("/data/catalog.json, line 9: \"Colour\" is no type of a value"));
  EXPECT_THAT(Failure(Spoilt("3\n", "[1]\n")), StartsWith("/data/catalog.json, line 9: this is no value"));
  EXPECT_THAT(Failure(Spoilt("\"Orders\"", "{\"Integer\": 40000}")),
              StartsWith("/data/catalog.json, line 8: a smaller whole number"));
  EXPECT_THAT(Failure(Spoilt("\"applications\": []", "\"applications\": {}")),
              StartsWith("/data/catalog.json, line 16: a list"));
}

TEST(CatalogJson, ReadsLargeNumbersAsDoubles) {
  const CatalogData data = ParseCatalog(Spoilt("3\n", "5000000000\n"), "x");
  EXPECT_EQ(data.packages[0].properties.Value("Size").Type(), VariantType::Double);
  EXPECT_EQ(data.packages[0].properties.Value("Size").AsDouble(), 5e9);
}

TEST(CatalogJson, RefusesNumbersBeyondADouble) {
  EXPECT_THAT(Failure(Spoilt("3\n", "1e400\n")),
              StartsWith("/data/catalog.json, line 9: the number is too large"));
}

TEST(CatalogJson, RefusesDeepNesting) {
  const std::string deep = std::string(200000, '[') + std::string(200000, ']');
  EXPECT_THAT(Failure(Spoilt("\"packages\": [", "\"x\": " + deep + ", \"packages\": [")),
              StartsWith("/data/catalog.json, line 4: this is nested deeper than any catalog"));
  EXPECT_THAT(Failure(std::string(100000, '{')), HasSubstr("nested deeper"));
  const CatalogData data = ParseCatalog(Spoilt("Orders", "\\\"" + std::string(100, '[')), "x");
  EXPECT_EQ(data.packages[0].Name(), "\"" + std::string(100, '['));
}

// Any cut of a catalog is damage or a catalog, and any flipped bit too.
TEST(CatalogJson, SurvivesEveryDamage) {
  Properties properties;
  properties.Set("Name", Variant::FromText("Orders"));
  properties.Set("Date", Variant::FromDate(1.5));
  CatalogData data = With(properties);
  data.packages[0].components.push_back(
      {"C:\\a.dll", "", "", "{2}", "A", "1.0", {InstalledClass{{"{3}", properties}, "A.B"}}});
  data.packages[0].exports.push_back({"C:\\x", 2});
  const std::string text = PrintCatalog(data);
  int refused = 0;
  const auto attempt = [&](const std::string& damaged) {
    try {
      ParseCatalog(damaged, "x");
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Number(), 45);
      ++refused;
    }
  };
  for (std::size_t i = 1; i < text.size(); ++i) attempt(text.substr(0, i));
  for (std::size_t i = 0; i < text.size(); ++i) {
    for (const int bit : {1, 2, 16, 64}) {
      std::string damaged = text;
      damaged[i] = static_cast<char>(damaged[i] ^ bit);
      attempt(damaged);
    }
  }
  EXPECT_GT(refused, static_cast<int>(text.size()));
}

}  // namespace
}  // namespace hearthmake::catalog
