#include "adapters/win32/FileFailure.hpp"

#include <string>

namespace hearthmake::win32 {

using automation::RuntimeError;

void RaiseFileFailure(RuntimeError error, std::string_view dosPath) {
  automation::Raise(error, "FileSystem", std::string(dosPath));
}

RuntimeError FromSystemError(DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND: return RuntimeError::FileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_NOT_READY:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY: return RuntimeError::PathNotFound;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_WRITE_PROTECT: return RuntimeError::PermissionDenied;
    case ERROR_DIR_NOT_EMPTY:
    case ERROR_NOT_SAME_DEVICE:
    case ERROR_CURRENT_DIRECTORY: return RuntimeError::PathFileAccess;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_FILE_TOO_LARGE: return RuntimeError::DiskFull;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: return RuntimeError::FileAlreadyExists;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE: return RuntimeError::BadFileName;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY: return RuntimeError::OutOfMemory;
    default: return RuntimeError::DeviceIoError;
  }
}

void RaiseSystemError(DWORD error, std::string_view dosPath) {
  RaiseFileFailure(FromSystemError(error), dosPath);
}

}  // namespace hearthmake::win32
