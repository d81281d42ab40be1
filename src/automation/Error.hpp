#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace hearthmake::automation {

// The failure of a call on a public object: what a host sees as number, source and description.
// It is the only exception that crosses a public member.
class Error : public std::exception {
 public:
  Error(std::int32_t number, std::string source, std::string description);

  std::int32_t Number() const { return m_number; }
  const std::string& Source() const { return m_source; }
  const std::string& Description() const { return m_description; }
  const char* what() const noexcept override { return m_description.c_str(); }

 private:
  std::int32_t m_number;
  std::string m_source;
  std::string m_description;
};

// Numbers of the library's own failures. beScriptIsExecuting shares its value with
// beScriptSyntaxError; hosts have compared against it for years, so it stays.
enum class BuildErrors : std::int32_t {
  be_FailToCompile = static_cast<std::int32_t>(0x80040001),
  beInvalidReference = static_cast<std::int32_t>(0x80040002),
  beCyclicReferences = static_cast<std::int32_t>(0x80040003),
  beCanNotDelete = static_cast<std::int32_t>(0x80040004),
  beProjectIsReferenced = static_cast<std::int32_t>(0x80040005),
  beProjectAlreadyInBuild = static_cast<std::int32_t>(0x80040006),
  beCommandLineToLong = static_cast<std::int32_t>(0x80040007),
  beBuildCanNotDelete = static_cast<std::int32_t>(0x80040008),
  beFailedToStartProcess = static_cast<std::int32_t>(0x80040009),
  beNoProcessStarted = static_cast<std::int32_t>(0x8004000A),
  beGUIDmissing = static_cast<std::int32_t>(0x8004000B),
  beInvalidBaseAddress = static_cast<std::int32_t>(0x8004000C),
  beEvaluateInternalsFaild = static_cast<std::int32_t>(0x8004000D),
  beScriptSyntaxError = static_cast<std::int32_t>(0x8004000E),
  bePrepareScriptControl = static_cast<std::int32_t>(0x8004000F),
  be_BuildNotFound = static_cast<std::int32_t>(0x80040010),
  be_InvalidReferenceString = static_cast<std::int32_t>(0x80040011),
  beNoDatabase = static_cast<std::int32_t>(0x80040012),
  beOpenIncludeFile = static_cast<std::int32_t>(0x80040013),
  beScriptIsExecuting = static_cast<std::int32_t>(0x8004000E),
  beScriptRunning = static_cast<std::int32_t>(0x80004005),
};

// Visual Basic's own run-time errors, with its English texts.
enum class RuntimeError : std::int32_t {
  InvalidProcedureCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  TypeMismatch = 13,
  OutOfStackSpace = 28,
  BadFileName = 52,
  FileNotFound = 53,
  DeviceIoError = 57,
  FileAlreadyExists = 58,
  DiskFull = 61,
  PermissionDenied = 70,
  PathFileAccess = 75,
  PathNotFound = 76,
  ObjectNotSet = 91,
  InvalidUseOfNull = 94,
  CantCreateObject = 429,
  MemberNotFound = 438,
  NamedArgumentNotFound = 448,
  ArgumentNotOptional = 449,
  WrongNumberOfArguments = 450,
  KeyAlreadyExists = 457,
};

// Numbers without a name of their own: a refused value, and a misused edit cycle.
inline constexpr std::int32_t kInvalidValue = 45;
inline constexpr std::int32_t kEditCycle = 1004;

// The English text of a run-time error, without a final stop ("File not found").
const char* RuntimeErrorText(RuntimeError error);

[[noreturn]] void Raise(std::int32_t number, std::string source, std::string description);
[[noreturn]] void Raise(BuildErrors error, std::string source, std::string description);

// Raises a run-time error with its English text. A detail (a path, a member's name) is put behind
// the text as ": detail".
[[noreturn]] void Raise(RuntimeError error, std::string source, const std::string& detail = {});

}  // namespace hearthmake::automation
