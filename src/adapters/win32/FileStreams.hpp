#pragma once

#include <string>

#include "adapters/win32/Handle.hpp"
#include "platform/ByteStreams.hpp"
#include "platform/FileSystem.hpp"

namespace hearthmake::win32 {

// All of the bytes, or the system's error code.
DWORD WriteAll(HANDLE file, std::string_view bytes);
// Up to count bytes, fewer only at the end; or the error code.
DWORD ReadFully(HANDLE file, void* buffer, std::size_t count, std::size_t& done);

// A file on a disk that is written piece by piece.
class FileOutput final : public platform::OutputStream {
 public:
  FileOutput(Handle file, std::string dosPath) : m_file(std::move(file)), m_dosPath(std::move(dosPath)) {}

  void Write(std::string_view bytes) override;
  std::size_t WriteSome(std::string_view bytes, std::chrono::milliseconds timeout) override;

 private:
  Handle m_file;
  std::string m_dosPath;
};

// A file on a disk that is read at any place.
class OpenFile final : public platform::RandomAccessFile {
 public:
  OpenFile(Handle file, std::uint64_t size, std::string dosPath)
      : m_file(std::move(file)), m_size(size), m_dosPath(std::move(dosPath)) {}

  std::uint64_t Size() const override { return m_size; }
  std::size_t Read(std::uint64_t offset, void* buffer, std::size_t count) override;

 private:
  Handle m_file;
  std::uint64_t m_size;
  std::string m_dosPath;
};

}  // namespace hearthmake::win32
