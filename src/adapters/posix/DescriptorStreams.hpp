#pragma once

#include <string>

#include "adapters/posix/FileDescriptor.hpp"
#include "platform/ByteStreams.hpp"

namespace hearthmake::posix {

// The streams of platform/ByteStreams.hpp over file descriptors of any kind, which they own.

class DescriptorInput final : public platform::InputStream {
 public:
  explicit DescriptorInput(FileDescriptor file) : m_file(std::move(file)) {}

  std::optional<std::size_t> Read(void* buffer, std::size_t count,
                                  std::chrono::milliseconds timeout) override;

 private:
  FileDescriptor m_file;
};

class DescriptorOutput final : public platform::OutputStream {
 public:
  // The DOS path, or what else the stream is called in errors.
  DescriptorOutput(FileDescriptor file, std::string name);

  void Write(std::string_view bytes) override;
  std::size_t WriteSome(std::string_view bytes, std::chrono::milliseconds timeout) override;

 private:
  [[noreturn]] void Fail(int error) const;

  FileDescriptor m_file;
  std::string m_name;
  bool m_isRegular;  // takes everything at once
};

}  // namespace hearthmake::posix
