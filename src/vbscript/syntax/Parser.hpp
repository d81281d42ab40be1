#pragma once

#include <memory>
#include <string_view>

#include "vbscript/syntax/Ast.hpp"

namespace hearthmake::vbscript {

// Parses a source: statements, procedures, classes. Lines end with CR, LF or CR LF.
// Errors: CompileError with the number, text and place of the first fault. Nesting deeper than
// kDeepestNesting (of parentheses, operators to the right, blocks) is error 1001 "Out of memory"; so is a
// tree that is higher, chains of members included. Only the left side of Binary has no such limit.
std::unique_ptr<Script> ParseScript(std::u16string_view source, Symbols& symbols);

// Parses one expression, as Eval takes it; the result's body is a single CallStatement whose call is the
// expression. Anything behind it is error 1025 "Expected end of statement".
std::unique_ptr<Script> ParseExpression(std::u16string_view source, Symbols& symbols);

inline constexpr int kDeepestNesting = 500;

}  // namespace hearthmake::vbscript
