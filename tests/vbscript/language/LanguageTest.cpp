#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "LanguageMachine.hpp"
#include "automation/Utf.hpp"
#include "support/ScriptHost.hpp"
#include "vbscript/Engine.hpp"
#include "vbscript/values/Conversions.hpp"

// One test for each script beside this file: runs it and compares what it prints and how it ends with the
// comments beside its lines. The README tells how they are written.
namespace hearthmake::vbscript {
namespace {

constexpr std::int64_t kTimeout = 5000;
constexpr int kAnyLine = 0;

std::string Utf8(std::u16string_view text) { return automation::Utf16ToUtf8(text); }

// How a script must end.
struct Ending {
  bool isCompileError = false;
  std::int32_t number = 0;
  int line = kAnyLine;
  int column = 0;  // 0: any
  std::string description;
};

struct Expectations {
  std::map<int, std::vector<std::string>> prints;  // by line
  std::optional<Ending> ending;
  bool IsEmpty() const { return prints.empty() && !ending; }
};

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// "a | b | c"
std::vector<std::string> Alternatives(const std::string& text) {
  static const std::string kSeparator = " | ";
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find(kSeparator, start)) != std::string::npos;) {
    parts.push_back(text.substr(start, end - start));
    start = end + kSeparator.size();
  }
  parts.push_back(text.substr(start));
  return parts;
}

Ending ReadEnding(bool isCompileError, int line, const std::string& text) {
  static const std::regex kForm(R"(^(-?\d+)(?: @(\d+))?(?: (.*))?$)");
  std::smatch found;
  if (!std::regex_match(text, found, kForm)) throw std::runtime_error("unreadable expectation: " + text);
  Ending ending{isCompileError, std::stoi(found[1]), line, 0, found[3]};
  if (found[2].matched) ending.column = std::stoi(found[2]);
  return ending;
}

Expectations ReadExpectations(const std::vector<std::string>& lines) {
  static const std::regex kMark(R"(' (expect|error|compile error)(?: line (\d+)| (at end))?:(?: (.*))?$)");
  Expectations expectations;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::smatch found;
    if (!std::regex_search(lines[i], found, kMark)) continue;
    int line = static_cast<int>(i) + 1;
    if (found[2].matched) line = std::stoi(found[2]);
    if (found[3].matched) line = kAnyLine;
    if (found[1] == "expect") {
      expectations.prints[line] = Alternatives(found[4]);
    } else {
      expectations.ending = ReadEnding(found[1] == "compile error", line, found[4]);
    }
  }
  return expectations;
}

// What the scripts printed, by line.
class Output {
 public:
  void Add(int line, std::string text) { m_prints[line].push_back(std::move(text)); }
  const std::map<int, std::vector<std::string>>& Prints() const { return m_prints; }

 private:
  std::map<int, std::vector<std::string>> m_prints;
};

// The WScript of the tests. A script can't see from which line it is called, so the runner names the line
// in the source: WScript.Echo becomes WScript.Line(12).Echo.
class Printer : public automation::Object {
 public:
  explicit Printer(std::shared_ptr<Output> output, int line = 0)
      : m_output(std::move(output)), m_line(line) {}

  const automation::Interface& Declaration() const override {
    static const automation::Interface declaration = automation::Declare("WScript", "_WScript", "")
                                                         .method<&Printer::Echo>("Echo", {"text"})
                                                         .method<&Printer::Line>("Line", {"line"})
                                                         .build();
    return declaration;
  }
  // Booleans and what is no text by itself print differently in every host: scripts join them to a text.
  void Echo(const automation::Variant& value) {
    m_output->Add(m_line, IsPlain(value.Target()) ? Utf8(ToText16(value)) : "not a text or a number");
  }
  automation::Ref<automation::Object> Line(std::int32_t line) {
    return automation::Make<Printer>(m_output, line);
  }

 private:
  static bool IsPlain(const automation::Variant& value) {
    using automation::VariantType;
    switch (value.Type()) {
      case VariantType::Empty:
      case VariantType::Null:
      case VariantType::Boolean:
      case VariantType::Object:
      case VariantType::Error:
      case VariantType::Array: return false;
      default: return true;
    }
  }

  std::shared_ptr<Output> m_output;
  int m_line;
};

std::string NameLines(const std::vector<std::string>& lines) {
  static const std::regex kEcho(R"(WScript\.Echo\b)");
  std::string source;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string named = "WScript.Line(" + std::to_string(i + 1) + ").Echo";
    source += std::regex_replace(lines[i], kEcho, named) + "\r\n";
  }
  return source;
}

class LanguageTest : public testing::Test {
 public:
  explicit LanguageTest(std::filesystem::path path) : m_path(std::move(path)) {}

  void TestBody() override {
    const std::string reason = support::LanguageMachine::ReasonToSkip(m_path.stem().string());
    if (!reason.empty()) GTEST_SKIP() << reason;
    const std::vector<std::string> lines = Lines(ReadSource());
    const Expectations expectations = ReadExpectations(lines);
    ASSERT_FALSE(expectations.IsEmpty()) << m_path.string() << ": nothing is expected of this script";
    const auto output = std::make_shared<Output>();
    const std::optional<Ending> ending = RunScript(NameLines(lines), output);
    ComparePrints(expectations.prints, output->Prints());
    CompareEndings(expectations.ending, ending);
  }

 private:
  std::string ReadSource() const {
    std::ifstream file(m_path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    std::erase(text, '\r');
    return text;
  }

  static std::optional<Ending> RunScript(const std::string& source, const std::shared_ptr<Output>& output) {
    const support::LanguageMachine machine;
    ScriptHost host(machine.Ports());
    host.create = &support::LanguageMachine::CreateObject;
    std::optional<Ending> ending;
    Engine engine(host);
    engine.SetTimeout(kTimeout);
    engine.AddObject("WScript", automation::Make<Printer>(output), false);
    try {
      engine.AddCode(automation::Utf8ToUtf16(source));
    } catch (const automation::Error& error) {
      const ErrorRecord& record = engine.LastError();
      ending = Ending{record.isCompileError, error.Number(), record.line, record.column, error.Description()};
    }
    engine.Reset();
    return ending;
  }

  std::string Place(int line) const {
    return m_path.string() + (line == kAnyLine ? "" : ":" + std::to_string(line)) + ": ";
  }

  static std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) joined += (joined.empty() ? "[" : " [") + text + "]";
    return joined.empty() ? "nothing" : joined;
  }

  void ComparePrints(const std::map<int, std::vector<std::string>>& expected,
                     const std::map<int, std::vector<std::string>>& printed) const {
    static const std::vector<std::string> kNothing;
    const auto at = [](const auto& prints, int line) -> const std::vector<std::string>& {
      const auto found = prints.find(line);
      return found == prints.end() ? kNothing : found->second;
    };
    for (const auto& [line, texts] : expected) {
      const auto& actual = at(printed, line);
      EXPECT_TRUE(texts == actual) << Place(line) << "expected " << Joined(texts) << ", printed "
                                   << Joined(actual);
    }
    for (const auto& [line, texts] : printed) {
      EXPECT_TRUE(expected.contains(line)) << Place(line) << "expected nothing, printed " << Joined(texts);
    }
  }

  static std::string Text(const Ending& ending) {
    return (ending.isCompileError ? "compile error " : "error ") + std::to_string(ending.number) + " " +
           ending.description + " at column " + std::to_string(ending.column);
  }

  void CompareEndings(const std::optional<Ending>& expected, const std::optional<Ending>& actual) const {
    if (!expected) {
      EXPECT_FALSE(actual.has_value()) << Place(actual->line) << "unexpected " << Text(*actual);
      return;
    }
    ASSERT_TRUE(actual.has_value()) << Place(expected->line) << "expected " << Text(*expected)
                                    << ", but the script ran to its end";
    const bool isSame = expected->isCompileError == actual->isCompileError &&
                        expected->number == actual->number &&
                        (expected->line == kAnyLine || expected->line == actual->line) &&
                        (expected->column == 0 || expected->column == actual->column) &&
                        (expected->description.empty() || expected->description == actual->description);
    EXPECT_TRUE(isSame) << Place(expected->line) << "expected " << Text(*expected) << ", got "
                        << Text(*actual) << " in line " << actual->line;
  }

  std::filesystem::path m_path;
};

std::string TestName(const std::filesystem::path& script, const std::filesystem::path& root) {
  return script.lexically_relative(root).replace_extension().generic_string();
}

[[maybe_unused]] const bool kRegistered = [] {
  const std::filesystem::path root =
      std::filesystem::path(SOURCE_DIRECTORY) / "tests" / "vbscript" / "language";
  std::vector<std::filesystem::path> scripts;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
    if (entry.path().extension() == ".vbs") scripts.push_back(entry.path());
  }
  std::sort(scripts.begin(), scripts.end());
  for (const auto& script : scripts) {
    testing::RegisterTest("Language", TestName(script, root).c_str(), nullptr, nullptr,
                          script.string().c_str(), 1,
                          [script]() -> testing::Test* { return new LanguageTest(script); });
  }
  return true;
}();

}  // namespace
}  // namespace hearthmake::vbscript
