#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace hearthmake::vbscript {

// How a pattern is read and matched; Global is no matter of the pattern.
struct RegExpFlags {
  bool ignoreCase = false;
  bool multiline = false;

  friend bool operator==(const RegExpFlags&, const RegExpFlags&) = default;
};

// Translates a pattern of the language into the syntax of PCRE2, for code units without UTF. What both
// spell alike but read differently is spelled out; what the language lacks (look-behind, named groups,
// possessive quantifiers, inline options, \A, \Q, \p …) never reaches PCRE2: it is an error or a literal.
//
// With ignoreCase everything is translated to small letters; the subject must be folded with Lower
// (values/Text16.hpp), which keeps every position. So the case rules are those of the language throughout,
// in back-references too, and matching is as fast as with case.
class RegExpPattern {
 public:
  // Groups may stand this deep in one another; deeper is error 7 "Out of memory".
  static constexpr std::size_t kMaximumDepth = 500;
  // Units of a pattern; more are error 7 before any work.
  static constexpr std::size_t kMaximumLength = std::size_t{1} << 20;
  // The largest number in a quantifier. An upper bound beyond it is as good as none; a lower one is error 7.
  static constexpr std::uint32_t kMaximumRepeat = 65535;

  // Errors: 5017 "Syntax error in regular expression", 5018 "Unexpected quantifier", 5019 "Expected ']' in
  // regular expression", 5020 "Expected ')' in regular expression", 5021 "Invalid range in character set",
  // 7 for what is too deep or repeats too often.
  RegExpPattern(std::u16string_view pattern, RegExpFlags flags);

  const std::u16string& Translation() const { return m_translation; }
  // The capturing groups.
  std::uint32_t GroupCount() const { return m_groups; }
  // Whether something in it may repeat long: a match walks over a bounded part of the subject otherwise.
  bool HasLoops() const { return m_hasLoops; }

 private:
  struct Quantifier {
    std::uint64_t minimum;
    std::uint64_t maximum;  // kNoMaximum for none
    std::size_t length;     // units of the pattern
  };
  // What stands for one unit, or a set of them (\d …), in a pattern or in a class.
  struct Unit {
    char16_t unit = 0;
    char16_t set = 0;  // the letter of a set, 0 for a unit
  };

  void Translate();
  void TranslateGroupStart();
  void TranslateGroupEnd();
  void TranslateEscape();
  void TranslateClass();
  void TranslateQuantifier();

  bool AtEnd() const { return m_at == m_pattern.size(); }
  char16_t Peek(std::size_t ahead = 0) const;
  bool StartsWith(std::u16string_view text) const { return m_pattern.substr(m_at).starts_with(text); }
  // The quantifier in braces that stands here; of length 0 when these braces are literal.
  Quantifier ReadBraces() const;
  Unit ReadUnitEscape(bool isInClass);
  char16_t ReadOctal();
  void ReadHexadecimal(std::size_t digits, char16_t& unit);
  std::uint32_t ReadBackReference();

  Unit ReadClassUnit();
  void EmitClassUnit(Unit item);
  void EmitClassRange(char16_t first, char16_t last);
  void Emit(std::u16string_view text) { m_translation.append(text); }
  void EmitUnit(char16_t unit);
  void EmitNumber(std::uint64_t number);
  void EmitHexadecimal(char16_t unit);

  std::u16string_view m_pattern;  // valid while the constructor runs
  RegExpFlags m_flags;
  std::size_t m_at = 0;
  std::size_t m_depth = 0;
  std::uint32_t m_groups = 0;  // opened so far
  bool m_isQuantifiable = false;
  bool m_hasLoops = false;
  std::u16string m_translation;
};

}  // namespace hearthmake::vbscript
