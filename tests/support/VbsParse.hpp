#pragma once

#include <string>

#include "automation/Utf.hpp"
#include "support/VbsTreePrinter.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/syntax/Parser.hpp"

namespace hearthmake::vbscript::test {

// What a compile error says in short: "1002 (1, 5)", number, line and column.
inline std::string DescribeError(std::u16string_view source, const CompileError& error) {
  const LineAndColumn place = Locate(source, error.SourceOffset());
  return std::to_string(error.Number()) + " (" + std::to_string(place.line) + ", " +
         std::to_string(place.column) + ")";
}

// The printed tree of a source, or what is wrong with it.
inline std::string Parse(std::u16string_view source) {
  Symbols symbols;
  try {
    return TreePrinter(symbols).Print(ParseScript(source, symbols)->body);
  } catch (const CompileError& error) {
    return DescribeError(source, error);
  }
}

inline std::string Parse(std::string_view source) { return Parse(automation::Utf8ToUtf16(source)); }

// The same of one expression.
inline std::string ParseOne(std::string_view source) {
  Symbols symbols;
  const std::u16string units = automation::Utf8ToUtf16(source);
  try {
    const std::unique_ptr<Script> script = ParseExpression(units, symbols);
    return TreePrinter(symbols).Print(*static_cast<CallStatement*>(script->body.front())->call);
  } catch (const CompileError& error) {
    return DescribeError(units, error);
  }
}

}  // namespace hearthmake::vbscript::test
