#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/Error.hpp"

namespace hearthmake::vbscript {

// Numbers of compile-time errors, 1001 to 1058 and one other, as the language documents them.
enum class CompileErrorNumber : std::int32_t {
  InvalidOrUnqualifiedReference = 505,  // a run-time number, but found when compiling: .x outside With
  OutOfMemory = 1001,
  SyntaxError = 1002,
  ExpectedColon = 1003,
  ExpectedLeftParenthesis = 1005,
  ExpectedRightParenthesis = 1006,
  ExpectedRightBracket = 1007,
  ExpectedIdentifier = 1010,
  ExpectedEqual = 1011,
  ExpectedIf = 1012,
  ExpectedTo = 1013,
  ExpectedEnd = 1014,
  ExpectedFunction = 1015,
  ExpectedSub = 1016,
  ExpectedThen = 1017,
  ExpectedWend = 1018,
  ExpectedLoop = 1019,
  ExpectedNext = 1020,
  ExpectedCase = 1021,
  ExpectedSelect = 1022,
  ExpectedExpression = 1023,
  ExpectedStatement = 1024,
  ExpectedEndOfStatement = 1025,
  ExpectedIntegerConstant = 1026,
  ExpectedWhileOrUntil = 1027,
  ExpectedWhileUntilOrEndOfStatement = 1028,
  ExpectedWith = 1029,
  IdentifierTooLong = 1030,
  InvalidNumber = 1031,
  InvalidCharacter = 1032,
  UnterminatedStringConstant = 1033,
  UnterminatedComment = 1034,
  InvalidUseOfMe = 1037,
  LoopWithoutDo = 1038,
  InvalidExit = 1039,
  InvalidForLoopControlVariable = 1040,
  NameRedefined = 1041,
  MustBeFirstStatement = 1042,
  CannotAssignToNonByValArgument = 1043,
  CannotUseParenthesesWhenCallingSub = 1044,
  ExpectedLiteralConstant = 1045,
  ExpectedIn = 1046,
  ExpectedClass = 1047,
  MustBeDefinedInsideClass = 1048,
  ExpectedLetOrSetOrGet = 1049,
  ExpectedProperty = 1050,
  ArgumentCountMustBeConsistent = 1051,
  CannotHaveMultipleDefaults = 1052,
  ClassInitializeHasArguments = 1053,
  PropertySetNeedsArgument = 1054,
  UnexpectedNext = 1055,
  DefaultMustBeOnPropertyFunctionOrSub = 1056,
  DefaultMustBePublic = 1057,
  DefaultOnlyOnPropertyGet = 1058,
};

inline constexpr const char* kRuntimeErrorSource = "Microsoft VBScript runtime error";
inline constexpr const char* kCompileErrorSource = "Microsoft VBScript compilation error";

// A source that can't be compiled; Number() is the compile-time number.
class CompileError : public automation::Error {
 public:
  CompileError(CompileErrorNumber number, std::uint32_t offset);
  // Where in the source, in UTF-16 units.
  std::uint32_t SourceOffset() const { return m_offset; }

 private:
  std::uint32_t m_offset;
};

// The English text of a compile-time or run-time error without a final stop; "Unknown runtime error" for a
// number that has none.
const char* ErrorText(std::int32_t number);

// The error number that scripts see for an automation result code (0x80070057 is 5, 0x80040154 is 429 …);
// the code itself when it has none. 0x800A0000 and a number below is that number.
std::int32_t NumberOfResultCode(std::int32_t code);

// Raises a run-time error as the engine words it: the text, and behind it the name of what it is about
// ("Type mismatch: 'x'").
[[noreturn]] void RaiseRuntime(std::int32_t number, std::string_view about = {});

// Run-time numbers that this engine raises by name, beside those of automation::RuntimeError.
namespace number {
inline constexpr std::int32_t kInvalidProcedureCall = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kOutOfMemory = 7;
inline constexpr std::int32_t kSubscriptOutOfRange = 9;
inline constexpr std::int32_t kArrayLocked = 10;
inline constexpr std::int32_t kDivisionByZero = 11;
inline constexpr std::int32_t kTypeMismatch = 13;
inline constexpr std::int32_t kOutOfStringSpace = 14;
inline constexpr std::int32_t kOutOfStackSpace = 28;
inline constexpr std::int32_t kProcedureNotDefined = 35;
inline constexpr std::int32_t kInternalError = 51;
inline constexpr std::int32_t kBadFileName = 52;
inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kBadFileMode = 54;
inline constexpr std::int32_t kFileAlreadyExists = 58;
inline constexpr std::int32_t kInputPastEnd = 62;
inline constexpr std::int32_t kDeviceUnavailable = 68;
inline constexpr std::int32_t kPermissionDenied = 70;
inline constexpr std::int32_t kPathNotFound = 76;
inline constexpr std::int32_t kObjectNotSet = 91;
inline constexpr std::int32_t kForLoopNotInitialized = 92;
inline constexpr std::int32_t kInvalidUseOfNull = 94;
inline constexpr std::int32_t kObjectRequired = 424;
inline constexpr std::int32_t kCantCreateObject = 429;
inline constexpr std::int32_t kNoSuchAutomationClass = 432;
inline constexpr std::int32_t kMemberNotFound = 438;
inline constexpr std::int32_t kActionNotSupported = 445;
inline constexpr std::int32_t kNamedArgumentNotFound = 448;
inline constexpr std::int32_t kArgumentNotOptional = 449;
inline constexpr std::int32_t kWrongNumberOfArguments = 450;
inline constexpr std::int32_t kNotACollection = 451;
inline constexpr std::int32_t kKeyAlreadyExists = 457;
inline constexpr std::int32_t kUnsupportedVariableType = 458;
inline constexpr std::int32_t kVariableUndefined = 500;
inline constexpr std::int32_t kIllegalAssignment = 501;
inline constexpr std::int32_t kObjectNotSafe = 502;
inline constexpr std::int32_t kClassNotDefined = 506;
inline constexpr std::int32_t kExceptionOccurred = 507;
inline constexpr std::int32_t kExpectedRegExp = 5016;  // "Regular Expression object expected"
inline constexpr std::int32_t kRegExpSyntax = 5017;
inline constexpr std::int32_t kUnexpectedQuantifier = 5018;
inline constexpr std::int32_t kExpectedRightBracket = 5019;
inline constexpr std::int32_t kExpectedRightParenthesisInRegExp = 5020;
inline constexpr std::int32_t kInvalidRange = 5021;
}  // namespace number

}  // namespace hearthmake::vbscript
