#pragma once

#include <functional>
#include <memory>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"
#include "vbscript/objects/MatchTable.hpp"
#include "vbscript/objects/Matches.hpp"
#include "vbscript/objects/RegExpProgram.hpp"

namespace hearthmake::vbscript {

// "VBScript.RegExp". A pattern is compiled when it is used for the first time, once for each set of flags
// in a row; its errors (see RegExpPattern) are raised then.
class RegExp final : public automation::Object {
 public:
  // The context outlives the object.
  explicit RegExp(Context& context);

  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  automation::Variant Pattern() const { return m_pattern; }
  void SetPattern(const automation::Variant& pattern);
  bool IgnoreCase() const { return m_flags.ignoreCase; }
  void SetIgnoreCase(bool ignoreCase);
  // Whether Execute and Replace find every match or the first.
  bool Global() const { return m_isGlobal; }
  void SetGlobal(bool isGlobal) { m_isGlobal = isGlobal; }
  bool Multiline() const { return m_flags.multiline; }
  void SetMultiline(bool multiline);

  automation::Ref<Matches> Execute(const automation::Variant& sourceString);
  bool Test(const automation::Variant& sourceString);
  // The text with each match replaced: by a text (see RegExpReplacement), or by what the default member of
  // an object (a procedure from GetRef) returns when it is called with the match, its groups, the place of
  // the match and the whole text. Error 7 when the text gets too long.
  automation::Variant Replace(const automation::Variant& sourceString,
                              const automation::Variant& replacement);

 private:
  using Replacer = std::function<void(std::u16string& result, std::size_t match)>;

  // Kept by its user while it works: a replacement function may change the pattern.
  std::shared_ptr<RegExpProgram> Program();
  std::shared_ptr<MatchTable> Search(const automation::Variant& sourceString);
  automation::Variant ReplaceMatches(const MatchTable& matches, std::size_t expectedLength,
                                     const Replacer& replacer);
  automation::Variant CallReplacement(automation::Object& function, const MatchTable& matches,
                                      std::size_t match);

  Context& m_context;
  automation::Variant m_pattern;
  RegExpFlags m_flags;
  bool m_isGlobal = false;
  std::shared_ptr<RegExpProgram> m_program;  // null when the pattern or a flag has changed
};

}  // namespace hearthmake::vbscript
