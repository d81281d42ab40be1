#include "host/commandline/ManPage.hpp"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <array>
#include <utility>
#include <vector>

#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "host/HostError.hpp"

namespace hearthmake::host {

namespace {

constexpr std::string_view kIndent = "  ";

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines(1);
  for (const char c : text) {
    if (c == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += c;
    }
  }
  return lines;
}

// Help texts are broken for a terminal; a line that is indented stands as it is.
std::string Paragraph(const std::string& text) {
  std::string roff;
  for (const std::string& line : LinesOf(text)) {
    const bool isLiteral = line.starts_with(kIndent);
    if (isLiteral) roff += ".br\n";
    roff += RoffText(automation::Trim(line)) + "\n";
  }
  return roff;
}

std::string Bold(std::string_view text) { return "\\fB" + RoffText(text) + "\\fR"; }
std::string Italic(std::string_view text) { return "\\fI" + RoffText(text) + "\\fR"; }

// PART:{major,minor} is declared by a check; people read the choices alone.
std::string ValueName(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  const std::size_t open = type.find('{');
  if (open == std::string::npos) return type;
  return automation::ReplaceAll(type.substr(open + 1, type.find('}') - open - 1), ",", "|");
}

std::string Names(const CLI::Option& option) {
  std::string names;
  for (const std::string& name : option.get_snames()) names += (names.empty() ? "" : ", ") + Bold("-" + name);
  for (const std::string& name : option.get_lnames())
    names += (names.empty() ? "" : ", ") + Bold("--" + name);
  const bool takesValue = option.get_items_expected_max() > 0;
  return takesValue ? names + " " + Italic(ValueName(option)) : names;
}

std::string Item(const std::string& tag, const std::string& description) {
  return ".TP\n" + tag + "\n" + (description.empty() ? ".\n" : Paragraph(description));
}

std::vector<const CLI::Option*> Listed(const CLI::App& word, bool positional) {
  return word.get_options([&](const CLI::Option* option) {
    return !option->get_group().empty() && option->get_positional() == positional;
  });
}

std::string OptionItems(const CLI::App& word, bool withHelp) {
  std::string roff;
  for (const CLI::Option* option : Listed(word, false)) {
    if (!withHelp && option == word.get_help_ptr()) continue;
    roff += Item(Names(*option), option->get_description());
  }
  return roff;
}

std::string Arguments(const CLI::App& word) {
  std::string roff;
  for (const CLI::Option* option : Listed(word, true)) {
    const std::string name = option->get_name(true);
    const bool saysItself = name.find(' ') != std::string::npos;
    const bool isRepeated = option->get_items_expected_max() > 1 && !saysItself;
    const std::string text = Italic(name) + (isRepeated ? "..." : "");
    roff += " " + (option->get_required() || saysItself ? text : "[" + text + "]");
  }
  return roff;
}

std::vector<const CLI::App*> WordsOf(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App* word) { return !word->get_group().empty(); });
}

std::string PathOf(const CLI::App& word) {
  const CLI::App* parent = word.get_parent();
  if (parent->get_parent() == nullptr) return Bold(word.get_name());
  return PathOf(*parent) + Arguments(*parent) + " " + Bold(word.get_name());
}

void AddWord(const CLI::App& word, std::string& roff) {
  const auto inner = WordsOf(word);
  roff += ".SS " + automation::ReplaceAll(PathOf(word) + Arguments(word), "\"", "\\(dq") + "\n";
  if (!inner.empty()) {
    std::string names;
    for (const CLI::App* action : inner) names += (names.empty() ? "" : ", ") + Bold(action->get_name());
    roff += "Actions: " + names + ".\n.br\n";
  }
  roff += Paragraph(word.get_description());
  for (const CLI::Option* option : Listed(word, true)) {
    const std::string choices =
        option->get_type_name().find('{') == std::string::npos ? "" : ValueName(*option);
    roff += Item(Italic(option->get_name(true)),
                 option->get_description() + (choices.empty() ? "" : " (" + choices + ")"));
  }
  roff += OptionItems(word, false);
  // An inner word has the one of its parent.
  const bool hasOwnFooter = word.get_footer() != word.get_parent()->get_footer();
  if (hasOwnFooter && !word.get_footer().empty()) roff += ".PP\n" + Paragraph(word.get_footer());
  for (const CLI::App* action : inner) AddWord(*action, roff);
}

std::string Commands(const CLI::App& app) {
  std::string roff;
  for (const CLI::App* word : WordsOf(app)) AddWord(*word, roff);
  return roff;
}

}  // namespace

std::string RoffText(std::string_view text) {
  std::string roff;
  if (text.starts_with('.') || text.starts_with('\'')) roff = "\\&";
  for (const char16_t unit : automation::Utf8ToUtf16(text)) {
    switch (unit) {
      case '\\': roff += "\\e"; break;
      case '-': roff += "\\-"; break;
      case '\'': roff += "\\(aq"; break;
      case '`': roff += "\\(ga"; break;
      case '^': roff += "\\(ha"; break;
      case '~': roff += "\\(ti"; break;
      default:
        if (unit < 0x80) {
          roff += static_cast<char>(unit);
        } else {
          roff += fmt::format("\\[u{:04X}]", static_cast<unsigned>(unit));
        }
    }
  }
  return roff;
}

std::string ManPage(const CLI::App& app, std::string_view pageTemplate, std::string_view version,
                    std::string_view date) {
  const std::array<std::pair<std::string_view, std::string>, 4> kParts = {{
      {"@VERSION@", RoffText(version)},
      {"@DATE@", std::string(date)},
      {"@OPTIONS@\n", OptionItems(app, true)},
      {"@COMMANDS@\n", Commands(app)},
  }};
  std::string page(pageTemplate);
  for (const auto& [mark, text] : kParts) {
    if (page.find(mark) == std::string::npos)
      throw HostError(fmt::format("The template of the manual page has no {}.", automation::Trim(mark)));
    page = automation::ReplaceAll(page, mark, text);
  }
  return page;
}

}  // namespace hearthmake::host
