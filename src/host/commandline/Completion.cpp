#include "host/commandline/Completion.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <string_view>
#include <system_error>

#include "adapters/sqlite/NameReader.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "foundation/Settings.hpp"
#include "host/HostSettings.hpp"
#include "host/builds/Properties.hpp"
#include "host/commandline/ShellWords.hpp"

namespace hearthmake::host {

namespace {

using automation::Member;
using Words = std::vector<std::string>;

Words Split(std::string_view text, std::string_view separators) {
  Words parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(separators), text.size());
    if (end > 0) parts.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

bool IsHidden(const CLI::App* word) { return word->get_group().empty(); }

// The same in any case, because names of this world are matched so.
bool BeginsWith(std::string_view text, std::string_view typed) {
  return automation::Lower(text).starts_with(automation::Lower(typed));
}

// An option's names for values as they are declared: "PROJECT TARGET" has two.
Words ValueNames(const CLI::Option& option) {
  if (option.get_positional()) return Split(option.get_name(true), " ");
  const std::string type = option.get_type_name();
  return Split(type.substr(0, type.find(':')), " ");
}

// What the declaration lists as the only values: {a,b} of a check, or a|b.
Words ListedValues(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::size_t open = type.find('{');
  if (open != std::string::npos) return Split(type.substr(open + 1, type.find('}') - open - 1), ",");
  return type.find('|') == std::string::npos ? Words{} : Split(type, "|");
}

// The words before the cursor, taken apart as the parser will do it. Nothing is required to be complete.
class TypedLine {
 public:
  TypedLine(const CLI::App& app, const Words& words) : m_word(&app) {
    for (std::size_t i = 0; i + 1 < words.size(); ++i) Take(words[i]);
  }

  const CLI::App& Word() const { return *m_word; }
  // The option whose value is at the cursor, null for none, and which of its values that is.
  const CLI::Option* Pending() const { return m_pending; }
  std::size_t PendingIndex() const { return m_pendingValues.size(); }
  bool OnlyPositionals() const { return m_onlyPositionals; }
  // Behind these nothing is the command's own.
  bool IsPassedOn() const { return m_word->get_prefix_command() && !m_positionals.empty(); }
  const Words& Positionals() const { return m_positionals; }
  bool Has(const CLI::Option& option) const { return m_values.contains(&option); }
  bool Has(std::string_view longName) const { return !ValueOf(longName).empty() || HasFlag(longName); }

  std::string ValueOf(std::string_view longName) const {
    for (const auto& [option, value] : m_values) {
      if (IsCalled(*option, longName)) return value;
    }
    return {};
  }

  // Own options first, then those that may stand behind any word.
  std::vector<const CLI::Option*> Options() const {
    std::vector<const CLI::Option*> options;
    for (const CLI::App* word = m_word; word != nullptr; word = word->get_parent()) {
      for (const CLI::Option* option : word->get_options()) {
        const bool isHelpOfOther = word != m_word && option == word->get_help_ptr();
        const bool isOffered = option->nonpositional() && !option->get_group().empty() && !isHelpOfOther;
        if (isOffered) options.push_back(option);
      }
      if (!word->get_fallthrough()) break;
    }
    return options;
  }

  const CLI::Option* FindOption(std::string_view typed) const {
    for (const CLI::Option* option : Options()) {
      if (option->check_name(std::string(typed))) return option;
    }
    return nullptr;
  }

 private:
  static bool IsCalled(const CLI::Option& option, std::string_view longName) {
    const Words& names = option.get_lnames();
    return std::find(names.begin(), names.end(), longName) != names.end();
  }
  bool HasFlag(std::string_view longName) const {
    return std::any_of(m_values.begin(), m_values.end(),
                       [&](const auto& entry) { return IsCalled(*entry.first, longName); });
  }

  void Take(const std::string& text) {
    if (IsPassedOn()) return;
    const bool isOption = !m_onlyPositionals && text.size() > 1 && text[0] == '-';
    if (m_pending != nullptr && !isOption) {
      TakeValue(text);
    } else if (isOption) {
      TakeOption(text);
    } else {
      TakeWord(text);
    }
  }

  void TakeOption(const std::string& text) {
    m_pending = nullptr;
    if (text == "--") {
      m_onlyPositionals = true;
      return;
    }
    const std::size_t equals = text.find('=');
    const CLI::Option* option = FindOption(text.substr(0, equals));
    if (option == nullptr) return;
    m_values[option] = equals == std::string::npos ? "" : text.substr(equals + 1);
    if (equals == std::string::npos && option->get_items_expected_max() > 0) m_pending = option;
    m_pendingValues.clear();
  }

  void TakeValue(const std::string& text) {
    m_values[m_pending] = text;
    m_pendingValues.push_back(text);
    if (static_cast<int>(m_pendingValues.size()) >= m_pending->get_items_expected_max()) m_pending = nullptr;
  }

  void TakeWord(const std::string& text) {
    const CLI::App* word = m_onlyPositionals ? nullptr : FindWord(text);
    if (word != nullptr) {
      m_word = word;
    } else {
      m_positionals.push_back(text);
    }
  }

  const CLI::App* FindWord(const std::string& text) const {
    const auto words = m_word->get_subcommands([&](const CLI::App* word) { return word->check_name(text); });
    return words.empty() ? nullptr : words.front();
  }

  const CLI::App* m_word;
  Words m_positionals;
  std::map<const CLI::Option*, std::string> m_values;
  const CLI::Option* m_pending = nullptr;
  Words m_pendingValues;
  bool m_onlyPositionals = false;
};

std::string DatabaseIn(const std::string& folder) {
  std::error_code ignored;
  const std::string path = folder + "/Build.mdb";
  if (std::filesystem::exists(path, ignored)) return path;
  for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
    if (automation::EqualsIgnoreCaseAscii(entry.path().filename().string(), "Build.mdb"))
      return entry.path().string();
  }
  return path;
}

// The values for one place of a line.
class Values {
 public:
  Values(const TypedLine& line, std::string typed, Completion& answer)
      : m_line(line), m_typed(std::move(typed)), m_answer(answer) {}

  // By the name that the declaration gives the value.
  void Offer(std::string_view name) {
    static const std::map<std::string, void (Values::*)(), std::less<>> kOffers = {
        {"BUILD", &Values::OfferBuilds},       {"PROJECT", &Values::OfferProjects},
        {"PACKAGE", &Values::OfferPackages},   {"SOURCE", &Values::OfferSourceProjects},
        {"TARGET", &Values::OfferTargets},     {"PROPERTY", &Values::OfferProperties},
        {"KEY", &Values::OfferKeys},           {"VALUE", &Values::OfferSettingValues},
        {"EVENT", &Values::OfferScriptEvents}, {"FILE", &Values::OfferFiles},
        {"DIR", &Values::OfferFolders},
    };
    if (const auto found = kOffers.find(name); found != kOffers.end()) (this->*found->second)();
  }

  // set has a row of words that may begin with a project.
  void OfferOfSet(const Words& row) {
    const bool isOfBuild =
        !row.empty() && Among(SettableProperties(Build::Describe()), row[0]) != nullptr && !IsProject(row[0]);
    const automation::Interface& declaration = isOfBuild ? Build::Describe() : Project::Describe();
    if (row.empty()) {
      OfferProjects();
      OfferNames(SettableProperties(Build::Describe()));
    } else if (row.size() == 1 && !isOfBuild) {
      OfferNames(SettableProperties(declaration));
    } else if (const Member* property = Among(SettableProperties(declaration), row.back())) {
      OfferValuesOf(*property);
    }
  }

  void OfferProjects() {
    if (m_line.Word().get_name() == "sources") return OfferSourceProjects();
    if (const auto build = BuildId()) Add(Names().Projects(*build));
  }
  void OfferPackages() {
    if (const auto build = BuildId()) Add(Names().Packages(*build));
  }
  void OfferFiles() { m_answer.files = Completion::Files::Any; }

  void Add(const std::string& value, const std::string& description = {}) {
    const bool isClean = std::none_of(value.begin(), value.end(), [](char c) { return c >= 0 && c < ' '; });
    if (!value.empty() && isClean && BeginsWith(value, m_typed))
      m_answer.values.push_back({value, description});
  }

 private:
  void Add(const std::vector<sqlite::NameReader::Entry>& entries) {
    for (const auto& entry : entries) Add(entry.name, "id " + automation::Decimal(entry.id));
  }

  void OfferNames(const std::vector<const Member*>& members) {
    for (const Member* member : members) Add(member->name);
  }

  void OfferValuesOf(const Member& property) {
    switch (property.value.kind) {
      case automation::ValueKind::Boolean:
      case automation::ValueKind::Enum:
        for (const std::string& choice : Split(ChoicesText(property), "|")) Add(choice);
        break;
      default:
        if (PathKindOf(property.name) != PathKind::None) OfferFiles();
    }
  }

  void OfferBuilds() { Add(Names().Builds()); }
  void OfferSourceProjects() {
    if (const auto build = BuildId()) Add(Names().SourceProjects(*build));
  }
  void OfferTargets() {
    OfferProjects();
    OfferFiles();
  }
  void OfferProperties() { OfferNames(ShownProperties(Project::Describe())); }
  void OfferScriptEvents() { OfferNames(SettableProperties(Scripts::Describe())); }
  void OfferFolders() { m_answer.files = Completion::Files::Folders; }

  void OfferKeys() {
    if (!m_line.Has("host")) return OfferNames(SettableProperties(Settings::Describe()));
    for (const HostSettings::Key& key : HostSettings::Keys()) Add(key.name, key.meaning);
  }
  void OfferSettingValues() {
    if (m_line.Positionals().empty()) return;
    const Member* key = Among(SettableProperties(Settings::Describe()), m_line.Positionals().back());
    if (m_line.Has("host")) {
      OfferFiles();
    } else if (key != nullptr) {
      OfferValuesOf(*key);
    }
  }

  static const Member* Among(const std::vector<const Member*>& members, std::string_view name) {
    const auto found = std::find_if(members.begin(), members.end(), [&](const Member* member) {
      return automation::EqualsIgnoreCaseAscii(member->name, name);
    });
    return found == members.end() ? nullptr : *found;
  }

  const sqlite::NameReader& Names() {
    if (!m_names) {
      HostOptions options;
      options.dataFolder = WithHome(m_line.ValueOf("data"));
      m_names = std::make_unique<sqlite::NameReader>(DatabaseIn(HostSettings(options).DataFolder()));
    }
    return *m_names;
  }

  // Of the build that the line names first.
  std::optional<std::int32_t> BuildId() {
    if (m_line.Positionals().empty()) return std::nullopt;
    const std::string& typed = m_line.Positionals().front();
    std::optional<std::int32_t> byName;
    for (const auto& build : Names().Builds()) {
      if (automation::Decimal(build.id) == typed) return build.id;
      if (automation::EqualsIgnoreCase(build.name, automation::Trim(typed))) byName = build.id;
    }
    return byName;
  }

  bool IsProject(const std::string& name) {
    const auto build = BuildId();
    const auto projects = build ? Names().Projects(*build) : std::vector<sqlite::NameReader::Entry>{};
    return std::any_of(projects.begin(), projects.end(),
                       [&](const auto& project) { return automation::EqualsIgnoreCase(project.name, name); });
  }

  const TypedLine& m_line;
  std::string m_typed;
  Completion& m_answer;
  std::unique_ptr<sqlite::NameReader> m_names;
};

void OfferValueOf(const CLI::Option& option, std::size_t index, const Words& row, Values& values) {
  const Words listed = ListedValues(option);
  for (const std::string& value : listed) values.Add(value);
  if (!listed.empty()) return;
  const Words names = ValueNames(option);
  if (option.get_positional() && names.size() > 1 && names[0] == "[PROJECT]") return values.OfferOfSet(row);
  if (names.empty()) return;
  // Of a row of names the last one may be repeated.
  std::string name = names[std::min(index, names.size() - 1)];
  std::erase_if(name, [](char c) { return c == '[' || c == ']' || c == '.'; });
  // A version is in nobody's memory but the user's; a project may stand in its place.
  values.Offer(name == "XYZ" ? "PROJECT" : name);
}

// The positional argument that the cursor is at: words behind the command fill one after the other.
void OfferPositional(const TypedLine& line, Values& values) {
  const Words& typed = line.Positionals();
  std::size_t begin = 0;
  // A word may have a word before it whose arguments came first: packages BUILD assign.
  std::vector<const CLI::Option*> options;
  const CLI::App& word = line.Word();
  const auto isPositional = [](const CLI::Option* option) { return option->get_positional(); };
  const CLI::App* parent = word.get_parent();
  if (parent != nullptr && parent->get_parent() != nullptr) options = parent->get_options(isPositional);
  const auto own = word.get_options(isPositional);
  options.insert(options.end(), own.begin(), own.end());
  for (const CLI::Option* option : options) {
    const auto room = static_cast<std::size_t>(std::max(option->get_items_expected_max(), 1));
    if (typed.size() < begin + room) {
      const Words row(typed.begin() + static_cast<std::ptrdiff_t>(begin), typed.end());
      return OfferValueOf(*option, row.size(), row, values);
    }
    begin += room;
  }
  if (word.get_prefix_command()) values.OfferFiles();
}

void OfferOptions(const TypedLine& line, const std::string& typed, Completion& answer) {
  for (const CLI::Option* option : line.Options()) {
    const bool isRepeated = option->get_items_expected_max() > 1;
    if (line.Has(*option) && !isRepeated) continue;
    for (const std::string& name : option->get_lnames()) {
      const std::string text = "--" + name;
      if (BeginsWith(text, typed)) answer.values.push_back({text, FirstLine(option->get_description())});
    }
    for (const std::string& name : option->get_snames()) {
      if (typed == "-") answer.values.push_back({"-" + name, FirstLine(option->get_description())});
    }
  }
}

void OfferWords(const TypedLine& line, Values& values) {
  // packages BUILD is known by its words only when BUILD stands there.
  const bool isInner = line.Word().get_parent() != nullptr;
  if (isInner && line.Positionals().empty()) return;
  for (const CLI::App* word : line.Word().get_subcommands([](const CLI::App* w) { return !IsHidden(w); }))
    values.Add(word->get_name(), FirstLine(word->get_description()));
}

void OfferAt(const TypedLine& line, const std::string& typed, Completion& answer) {
  const std::size_t equals = typed.find('=');
  const bool isOption = !line.OnlyPositionals() && !line.IsPassedOn() && typed.starts_with('-');
  if (isOption && equals != std::string::npos) {
    const CLI::Option* option = line.FindOption(typed.substr(0, equals));
    if (option == nullptr) return;
    Values values(line, typed.substr(equals + 1), answer);
    OfferValueOf(*option, 0, {}, values);
    for (auto& value : answer.values) value.text.insert(0, typed, 0, equals + 1);
  } else if (isOption) {
    OfferOptions(line, typed, answer);
  } else {
    Values values(line, typed, answer);
    if (line.Pending() != nullptr) return OfferValueOf(*line.Pending(), line.PendingIndex(), {}, values);
    if (line.IsPassedOn()) return values.OfferFiles();
    OfferWords(line, values);
    OfferPositional(line, values);
  }
}

const char* WordOf(Completion::Files files) {
  switch (files) {
    case Completion::Files::Any: return "files";
    case Completion::Files::Folders: return "folders";
    default: return "values";
  }
}

// In a line for bash, what comes before the command itself.
Words BehindCommand(const Words& words) {
  std::size_t command = 0;
  const auto isAssignment = [](const std::string& word) { return word.find('=') != std::string::npos; };
  while (command + 1 < words.size() && isAssignment(words[command])) ++command;
  Words rest(words.begin() + static_cast<std::ptrdiff_t>(command) + 1, words.end());
  if (rest.empty()) rest.emplace_back();
  return rest;
}

std::string AnswerBash(const CLI::App& app, const std::string& text, const std::string& replaced) {
  const ShellWords line = SplitShellLine(text);
  const Completion completion = Complete(app, BehindCommand(line.words));
  // readline replaces what is behind the last of its break characters only, as in C:\src or --data=DIR.
  const bool isPart = line.quote == 0 && line.typed.ends_with(replaced);
  const std::size_t kept = isPart ? line.typed.size() - replaced.size() : 0;
  std::string answer = std::string(WordOf(completion.files)) + "\n";
  for (const Completion::Value& value : completion.values) {
    const std::string quoted = QuoteForShell(value.text, line.quote);
    answer += quoted.substr(std::min(kept, quoted.size())) + "\n";
  }
  return answer;
}

std::string AnswerWords(const CLI::App& app, const Words& words) {
  const Completion completion = Complete(app, words);
  std::string answer = std::string(WordOf(completion.files)) + "\n";
  for (const Completion::Value& value : completion.values)
    answer += value.text + (value.description.empty() ? "" : "\t" + value.description) + "\n";
  return answer;
}

}  // namespace

Completion Complete(const CLI::App& app, const std::vector<std::string>& words) {
  Completion answer;
  if (words.empty()) return answer;
  try {
    OfferAt(TypedLine(app, words), words.back(), answer);
  } catch (const std::exception&) {
    // There is no data folder, or none that can be read: the values that need none are there.
  }
  return answer;
}

std::string AnswerShell(const CLI::App& app, const std::vector<std::string>& arguments) {
  if (arguments.size() == 3 && arguments[0] == "bash") return AnswerBash(app, arguments[1], arguments[2]);
  if (arguments.size() < 2 || arguments[0] != "words") return {};
  return AnswerWords(app, {arguments.begin() + 1, arguments.end()});
}

}  // namespace hearthmake::host
