#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/posix/StoreFile.hpp"
#include "platform/SharedFile.hpp"

namespace hearthmake::posix {

// A StoreFile as the port has it.
class PosixSharedFile final : public platform::SharedFile {
 public:
  // A POSIX path; a longer file than the limit (in bytes) is refused.
  PosixSharedFile(std::string path, std::int64_t limit) : m_file(std::move(path), limit) {}

  const std::string& Path() const override { return m_file.Path(); }
  std::string Read() override { return m_file.Read(); }
  void Replace(std::string_view bytes) override { m_file.Replace(bytes); }
  std::shared_ptr<void> Lock() override { return std::make_shared<FileDescriptor>(m_file.Lock()); }

 private:
  StoreFile m_file;
};

}  // namespace hearthmake::posix
