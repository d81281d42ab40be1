#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace hearthmake::platform {

// A file in which several processes keep something together: read as a whole, and replaced whole or not at
// all. Failures are those of the FileSystem port, with the path.
class SharedFile {
 public:
  SharedFile() = default;
  SharedFile(const SharedFile&) = delete;
  SharedFile& operator=(const SharedFile&) = delete;
  virtual ~SharedFile() = default;

  // As the system names it; for messages.
  virtual const std::string& Path() const = 0;
  // Nothing when there is no such file.
  virtual std::string Read() = 0;
  // Makes the file, and the folders above it, where they are missing.
  virtual void Replace(std::string_view bytes) = 0;
  // Whoever replaces the file holds this from before the Read on which the new contents are based, until the
  // result goes. Waits for other holders, of this process too.
  [[nodiscard]] virtual std::shared_ptr<void> Lock() = 0;
};

}  // namespace hearthmake::platform
