#include "adapters/posix/FileFailure.hpp"

#include <sys/stat.h>

#include <cerrno>

namespace hearthmake::posix {

namespace {

using automation::RuntimeError;

bool FolderOfIsThere(const std::string& posixPath) {
  const std::string folder = posixPath.substr(0, posixPath.rfind('/') + 1);
  struct stat status {};
  return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

RuntimeError FromErrno(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR: return RuntimeError::PathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
    case EAGAIN: return RuntimeError::PermissionDenied;  // the last: somebody holds a lease on the file
    case EISDIR:
    case ENOTEMPTY:
    case ENXIO:
    case ENODEV:
    case ELOOP:
    case EXDEV:
    case EINVAL: return RuntimeError::PathFileAccess;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return RuntimeError::DiskFull;
    case EEXIST: return RuntimeError::FileAlreadyExists;
    case ENAMETOOLONG: return RuntimeError::BadFileName;
    case ENOMEM: return RuntimeError::OutOfMemory;
    default: return RuntimeError::DeviceIoError;
  }
}

}  // namespace

void RaiseFileFailure(RuntimeError error, std::string_view dosPath) {
  automation::Raise(error, "FileSystem", std::string(dosPath));
}

void RaiseErrno(int error, std::string_view dosPath) { RaiseFileFailure(FromErrno(error), dosPath); }

void RaiseFileErrno(int error, std::string_view dosPath, const std::string& posixPath) {
  if (error == ENOENT && FolderOfIsThere(posixPath)) RaiseFileFailure(RuntimeError::FileNotFound, dosPath);
  RaiseErrno(error, dosPath);
}

}  // namespace hearthmake::posix
