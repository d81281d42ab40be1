#include "host/moving/BuildJson.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "host/HostError.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::ordered_json;
using testing::HasSubstr;

StoredRow EmptyRow(const std::string& table) {
  StoredRow row;
  for (const DocumentColumn& column : DocumentColumns(table)) {
    row.push_back(column.type == ValueType::YesNo ? StoredValue(false) : StoredValue());
  }
  return row;
}

StoredValue& Field(StoredRow& row, const std::string& table, const std::string& column) {
  return row.at(ColumnPlace(table, column));
}

StoredProject Named(const std::string& name) {
  StoredProject project{EmptyRow("Project"), {}, {}, {}};
  if (!name.empty()) Field(project.row, "Project", "Name") = '"' + name + '"';
  return project;
}

BuildDocument Sample() {
  BuildDocument document;
  document.build = {"Laden", 0x11000000};
  document.scripts = EmptyRow("Scripts");
  document.sourceProjects = {EmptyRow("SSProjects")};
  document.packages = {EmptyRow("MTSPackages"), EmptyRow("MTSPackages")};
  Field(document.packages[0], "MTSPackages", "Name") = "Bestellung";
  Field(document.packages[0], "MTSPackages", "Password") = "geheim";
  document.projects = {Named("Kern"), Named("Kasse"), Named("kasse"), Named("")};
  document.projects[1].references = {1, 3, 4};
  document.projects[0].package = 1;
  document.projects[1].package = 2;
  document.projects[2].package = 0;
  document.projects[3].externalReferences = {EmptyRow("ExternalReferences")};
  return document;
}

ordered_json Printed(const BuildDocument& document) { return ordered_json::parse(PrintBuild(document)); }

BuildDocument WithScript(const std::string& text) {
  BuildDocument document = Sample();
  Field(*document.scripts, "Scripts", "BeforeCompile") = text;
  return document;
}

std::string FailureOf(const std::string& text) {
  try {
    ParseBuild(text);
  } catch (const HostError& error) {
    return error.what();
  }
  return "parsed";
}

// The text of the sample with a change.
std::string Changed(const std::function<void(ordered_json&)>& change) {
  ordered_json json = Printed(Sample());
  change(json);
  return json.dump(2);
}

TEST(BuildJson, PrintsWhatItParses) {
  const std::string text = PrintBuild(Sample());
  EXPECT_EQ(PrintBuild(ParseBuild(text)), text);
  EXPECT_THAT(text, testing::StartsWith("{\n  \"format\": \"hearthmake build\",\n  \"version\": 1,\n"));
}

TEST(BuildJson, RefersByNameWhereThatIsClear) {
  const ordered_json json = Printed(Sample());
  EXPECT_EQ(json["projects"][1]["references"].dump(), R"(["Kern",3,4])");
  EXPECT_EQ(json["projects"][0]["package"], "Bestellung");
  EXPECT_EQ(json["projects"][1]["package"], 2);
  EXPECT_EQ(json["projects"][2]["package"], 0);
  EXPECT_EQ(json["projects"][3]["package"], nullptr);
  const BuildDocument parsed = ParseBuild(PrintBuild(Sample()));
  EXPECT_EQ(parsed.projects[1].references, Sample().projects[1].references);
  EXPECT_EQ(parsed.projects[0].package, 1U);
}

TEST(BuildJson, LeavesPasswordsOutUnlessTheyAreWanted) {
  EXPECT_FALSE(Printed(Sample())["packages"][0].contains("Password"));
  BuildDocument document = Sample();
  document.hasPasswords = true;
  EXPECT_EQ(Printed(document)["packages"][0]["Password"], "geheim");
  EXPECT_EQ(PrintBuild(ParseBuild(PrintBuild(document))), PrintBuild(document));
}

TEST(BuildJson, KeepsEveryText) {
  using namespace std::string_literals;
  for (const std::string& text :
       {""s, "a"s, "a\r\nb"s, "a\nb"s, "\r\n"s, "\n"s, "a\r\n\r\nb\r\n"s, "a\nb\r\nc"s, "a\rb"s, "\r\r\n"s,
        "a\n\n"s, "\0x"s, "\"\\\t\x01 Grüße 😀"s, std::string(200'000, 'x') + "\r\n"}) {
    const BuildDocument document = WithScript(text);
    const BuildDocument parsed = ParseBuild(PrintBuild(document));
    EXPECT_EQ(
        std::get<std::string>(Field(*const_cast<BuildDocument&>(parsed).scripts, "Scripts", "BeforeCompile")),
        text);
  }
}

TEST(BuildJson, ShowsLines) {
  const auto script = [](const std::string& text) {
    return Printed(WithScript(text))["scripts"]["BeforeCompile"].dump();
  };
  EXPECT_EQ(script("a\r\nb"), R"(["a","b"])");
  EXPECT_EQ(script("a\nb"), R"({"lineEnd":"\n","lines":["a","b"]})");
  EXPECT_EQ(script("a\nb\r\nc"), R"("a\nb\r\nc")");
}

TEST(BuildJson, KeepsEveryDate) {
  for (const double date : {37755.729224537034, 0.0, -1.25, 37755.5, 37755.7292245, 1e300, -0.0}) {
    BuildDocument document = Sample();
    Field(document.projects[0].row, "Project", "LastCompiled") = date;
    BuildDocument parsed = ParseBuild(PrintBuild(document));
    EXPECT_EQ(std::get<double>(Field(parsed.projects[0].row, "Project", "LastCompiled")), date);
    EXPECT_EQ(PrintBuild(parsed), PrintBuild(document));
  }
}

TEST(BuildJson, RefusesToPrintWhatIsDamaged) { EXPECT_THROW(PrintBuild(WithScript("a\xFF")), HostError); }

TEST(BuildJson, GivesDefaultsToWhatIsLeftOut) {
  const BuildDocument document =
      ParseBuild(Changed([](ordered_json& json) { json["projects"][0].erase("Compile"); }));
  EXPECT_EQ(document.projects[0].row, Sample().projects[0].row);
}

TEST(BuildJson, SaysWhereATextIsDamaged) {
  const std::string text = PrintBuild(Sample());
  EXPECT_EQ(FailureOf(""), "line 1: this is damaged, cut off or no JSON.");
  EXPECT_EQ(FailureOf("hello"), "line 1: this is damaged, cut off or no JSON.");
  EXPECT_EQ(FailureOf("{}"), "line 1: this is no exported build.");
  EXPECT_EQ(FailureOf("[1]"), "line 1: this is no exported build.");
  EXPECT_EQ(FailureOf(std::string(100'000, '[')), "line 1: this is nested deeper than any build.");
  for (std::size_t size = 0; size + 2 < text.size(); size += 97) {
    EXPECT_THAT(FailureOf(text.substr(0, size)), HasSubstr("cut off"));
  }
}

TEST(BuildJson, SaysWhatIsWrongAndWhere) {
  EXPECT_EQ(FailureOf(Changed([](ordered_json& json) { json["version"] = 2; })),
            "line 3: a newer hearthmake has written this build.");
  EXPECT_EQ(FailureOf(Changed([](ordered_json& json) { json["build"]["Name"] = 3; })),
            "line 6: a text is expected.");
  EXPECT_EQ(FailureOf(Changed([](ordered_json& json) { json["build"]["StartDllBaseAddress"] = 3e9; })),
            "line 7: a whole number from -2147483648 to 2147483647 is expected.");
  EXPECT_EQ(FailureOf(Changed([](ordered_json& json) { json["build"]["Nmae"] = "x"; })),
            "line 8: \"Nmae\" is not known here.");
  EXPECT_THAT(FailureOf(Changed([](ordered_json& json) { json.erase("projects"); })),
              HasSubstr("\"projects\" is missing"));
  EXPECT_THAT(FailureOf(Changed([](ordered_json& json) { json["projects"][0]["Compile"] = nullptr; })),
              HasSubstr("true or false is expected"));
  EXPECT_THAT(FailureOf(Changed(
                  [](ordered_json& json) { json["projects"][0]["LastCompiled"] = "2003-02-31 10:00:00"; })),
              HasSubstr("a date"));
  EXPECT_THAT(FailureOf(Changed([](ordered_json& json) { json["projects"][1]["references"][0] = "kASSE"; })),
              HasSubstr("no single project of the name \"kASSE\""));
  EXPECT_THAT(FailureOf(Changed([](ordered_json& json) { json["projects"][1]["references"][0] = 5; })),
              HasSubstr("from 1 to 4"));
  EXPECT_THAT(FailureOf(Changed([](ordered_json& json) { json["projects"][1]["package"] = "Keins"; })),
              HasSubstr("no single package of the name \"Keins\""));
  EXPECT_THAT(FailureOf(R"({"format": "hearthmake build", "format": "hearthmake build"})"),
              HasSubstr("stands twice"));
}

}  // namespace
}  // namespace hearthmake::host
