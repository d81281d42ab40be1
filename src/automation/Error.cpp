#include "automation/Error.hpp"

#include <utility>

namespace hearthmake::automation {

Error::Error(std::int32_t number, std::string source, std::string description)
    : m_number(number), m_source(std::move(source)), m_description(std::move(description)) {}

const char* RuntimeErrorText(RuntimeError error) {
  switch (error) {
    case RuntimeError::InvalidProcedureCall: return "Invalid procedure call or argument";
    case RuntimeError::Overflow: return "Overflow";
    case RuntimeError::OutOfMemory: return "Out of memory";
    case RuntimeError::SubscriptOutOfRange: return "Subscript out of range";
    case RuntimeError::TypeMismatch: return "Type mismatch";
    case RuntimeError::OutOfStackSpace: return "Out of stack space";
    case RuntimeError::BadFileName: return "Bad file name or number";
    case RuntimeError::FileNotFound: return "File not found";
    case RuntimeError::DeviceIoError: return "Device I/O error";
    case RuntimeError::FileAlreadyExists: return "File already exists";
    case RuntimeError::DiskFull: return "Disk full";
    case RuntimeError::PermissionDenied: return "Permission denied";
    case RuntimeError::PathFileAccess: return "Path/File access error";
    case RuntimeError::PathNotFound: return "Path not found";
    case RuntimeError::ObjectNotSet: return "Object variable or With block variable not set";
    case RuntimeError::InvalidUseOfNull: return "Invalid use of Null";
    case RuntimeError::CantCreateObject: return "ActiveX component can't create object";
    case RuntimeError::MemberNotFound: return "Object doesn't support this property or method";
    case RuntimeError::NamedArgumentNotFound: return "Named argument not found";
    case RuntimeError::ArgumentNotOptional: return "Argument not optional";
    case RuntimeError::WrongNumberOfArguments:
      return "Wrong number of arguments or invalid property assignment";
    case RuntimeError::KeyAlreadyExists:
      return "This key is already associated with an element of this collection";
  }
  return "Unknown runtime error";
}

void Raise(std::int32_t number, std::string source, std::string description) {
  throw Error(number, std::move(source), std::move(description));
}

void Raise(BuildErrors error, std::string source, std::string description) {
  throw Error(static_cast<std::int32_t>(error), std::move(source), std::move(description));
}

void Raise(RuntimeError error, std::string source, const std::string& detail) {
  std::string text = RuntimeErrorText(error);
  if (!detail.empty()) text += ": " + detail;
  throw Error(static_cast<std::int32_t>(error), std::move(source), std::move(text));
}

}  // namespace hearthmake::automation
