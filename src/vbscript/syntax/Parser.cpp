#include "vbscript/syntax/Parser.hpp"

#include <limits>

#include "vbscript/Errors.hpp"
#include "vbscript/syntax/StatementParser.hpp"

namespace hearthmake::vbscript {

namespace {

std::unique_ptr<Script> MakeScript(std::u16string_view source) {
  if (source.size() >= std::numeric_limits<Offset>::max()) {
    throw CompileError(CompileErrorNumber::OutOfMemory, 0);
  }
  return std::make_unique<Script>(source);
}

}  // namespace

std::unique_ptr<Script> ParseScript(std::u16string_view source, Symbols& symbols) {
  std::unique_ptr<Script> script = MakeScript(source);
  StatementParser(*script, symbols).ParseSource();
  return script;
}

std::unique_ptr<Script> ParseExpression(std::u16string_view source, Symbols& symbols) {
  std::unique_ptr<Script> script = MakeScript(source);
  StatementParser(*script, symbols).ParseSourceAsExpression();
  return script;
}

}  // namespace hearthmake::vbscript
