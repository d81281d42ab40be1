#include "vbscript/objects/RegExp.hpp"

#include <optional>
#include <vector>

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/RegExpReplacement.hpp"
#include "vbscript/objects/StandardObjects.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {

using automation::InvokeKind;
using automation::Ref;
using automation::Variant;

namespace {

constexpr std::size_t kLongestText = std::size_t{1} << 30;
constexpr std::size_t kUnitsPerStep = 16;

// What a program matches: the subject, folded where case does not count.
class Folded {
 public:
  Folded(const RegExpProgram& program, std::u16string_view subject, Budget& budget) : m_view(subject) {
    if (!program.WantsFoldedSubject()) return;
    budget.Charge(static_cast<std::int64_t>(subject.size() / kUnitsPerStep));
    m_folded = Lower(subject);
    m_view = m_folded;
  }
  std::u16string_view View() const { return m_view; }

 private:
  std::u16string m_folded;
  std::u16string_view m_view;
};

// Known before anything is written: what would get too long takes neither time nor memory.
std::size_t LengthOfReplaced(const MatchTable& matches, const RegExpReplacement& replacement) {
  std::size_t length = matches.Subject().size();
  for (std::size_t match = 0; match < matches.Count(); ++match) {
    length += replacement.LengthFor(matches, match) - matches.Text(match).size();
    if (length > 2 * kLongestText) break;
  }
  if (length > kLongestText) RaiseRuntime(number::kOutOfMemory);
  return length;
}

}  // namespace

const automation::Interface& RegExp::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("IRegExp2", "IRegExp2", "")
          .get<&RegExp::Pattern>("Pattern")
          .let<&RegExp::SetPattern>("Pattern", {"value"})
          .get<&RegExp::IgnoreCase>("IgnoreCase")
          .let<&RegExp::SetIgnoreCase>("IgnoreCase", {"value"})
          .get<&RegExp::Global>("Global")
          .let<&RegExp::SetGlobal>("Global", {"value"})
          .get<&RegExp::Multiline>("Multiline")
          .let<&RegExp::SetMultiline>("Multiline", {"value"})
          .method<&RegExp::Execute>("Execute", {"sourceString"})
          .method<&RegExp::Test>("Test", {"sourceString"})
          .method<&RegExp::Replace>("Replace", {"sourceString", "replaceVar"})
          .build();
  return kInterface;
}

RegExp::RegExp(Context& context) : m_context(context), m_pattern(Variant::FromUtf16({})) {}

void RegExp::SetPattern(const Variant& pattern) {
  Variant text = ToTextVariant(pattern);
  if (text.AsUtf16() == m_pattern.AsUtf16()) return;
  m_pattern = std::move(text);
  m_program.reset();
}

void RegExp::SetIgnoreCase(bool ignoreCase) {
  if (m_flags.ignoreCase != ignoreCase) m_program.reset();
  m_flags.ignoreCase = ignoreCase;
}

void RegExp::SetMultiline(bool multiline) {
  if (m_flags.multiline != multiline) m_program.reset();
  m_flags.multiline = multiline;
}

std::shared_ptr<RegExpProgram> RegExp::Program() {
  if (!m_program) {
    // Compiling to machine code takes microseconds for each unit.
    m_context.budget.Charge(static_cast<std::int64_t>(m_pattern.AsUtf16().size() + 1) * 100);
    m_program = std::make_shared<RegExpProgram>(m_pattern.AsUtf16(), m_flags);
  }
  return m_program;
}

bool RegExp::Test(const Variant& sourceString) {
  const Variant subject = ToTextVariant(sourceString);
  const auto program = Program();
  const Folded folded(*program, subject.AsUtf16(), m_context.budget);
  return program->Match(folded.View(), 0, m_context.budget);
}

std::shared_ptr<MatchTable> RegExp::Search(const Variant& sourceString) {
  Variant subject = ToTextVariant(sourceString);
  const auto program = Program();
  const Folded folded(*program, subject.AsUtf16(), m_context.budget);
  auto matches = std::make_shared<MatchTable>(std::move(subject), program->GroupCount());
  std::size_t start = 0;
  while (program->Match(folded.View(), start, m_context.budget)) {
    const auto places = program->Places();
    matches->Add(places);
    if (!m_isGlobal) break;
    // After an empty match the search goes on one unit further, lest it find the same again.
    start = places[1] + (places[0] == places[1] ? 1 : 0);
  }
  return matches;
}

Ref<Matches> RegExp::Execute(const Variant& sourceString) {
  return automation::Make<Matches>(Search(sourceString));
}

Variant RegExp::Replace(const Variant& sourceString, const Variant& replacement) {
  const Variant& replacer = replacement.Target();
  if (replacer.IsObject() && replacer.AsObject() != nullptr) {
    const Ref<automation::Object> function(replacer.AsObject());
    // All matches are found first: the function may use this very object.
    const auto matches = Search(sourceString);
    return ReplaceMatches(*matches, matches->Subject().size(),
                          [&](std::u16string& result, std::size_t match) {
                            const Variant text = CallReplacement(*function, *matches, match);
                            result.append(text.AsUtf16());
                          });
  }
  const Variant text = ToTextVariant(replacement);
  const auto matches = Search(sourceString);
  const RegExpReplacement parts(text.AsUtf16(), matches->GroupCount());
  return ReplaceMatches(
      *matches, LengthOfReplaced(*matches, parts),
      [&](std::u16string& result, std::size_t match) { parts.AppendTo(result, *matches, match); });
}

Variant RegExp::ReplaceMatches(const MatchTable& matches, std::size_t expectedLength,
                               const Replacer& replacer) {
  if (matches.Count() == 0) return matches.SubjectVariant();
  const std::u16string_view subject = matches.Subject();
  std::u16string result;
  result.reserve(expectedLength);
  std::size_t copied = 0;
  const auto copyTo = [&](std::size_t end) {
    result.append(subject.substr(copied, end - copied));
    if (result.size() > kLongestText) RaiseRuntime(number::kOutOfMemory);
  };
  for (std::size_t match = 0; match < matches.Count(); ++match) {
    const std::size_t before = result.size();
    copyTo(matches.Begin(match));
    replacer(result, match);
    copied = matches.End(match);
    m_context.budget.Charge(static_cast<std::int64_t>((result.size() - before) / kUnitsPerStep + 1));
  }
  copyTo(subject.size());
  return Variant::FromUtf16(result);
}

Variant RegExp::CallReplacement(automation::Object& function, const MatchTable& matches, std::size_t match) {
  std::vector<Variant> arguments;
  arguments.reserve(matches.GroupCount() + 3);
  arguments.push_back(Variant::FromUtf16(matches.Text(match)));
  for (std::uint32_t group = 0; group < matches.GroupCount(); ++group)
    arguments.push_back(matches.GroupValue(match, group));
  arguments.push_back(Variant::FromLong(static_cast<std::int32_t>(matches.Begin(match))));
  arguments.push_back(matches.SubjectVariant());
  return ToTextVariant(function.Invoke(automation::kDefaultMember, InvokeKind::Call, arguments));
}

bool BringsRegExp() { return true; }

Ref<automation::Object> CreateRegExp(Context& context) { return automation::Make<RegExp>(context); }

}  // namespace hearthmake::vbscript
