#include "vbscript/objects/FileVersion.hpp"

#include <algorithm>
#include <string_view>

namespace hearthmake::vbscript {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kChunk = 256U << 10U;
// The name of the version resource's root in UTF-16, its final zero and what aligns the numbers behind it.
constexpr std::string_view kKey = "V\0S\0_\0V\0E\0R\0S\0I\0O\0N\0_\0I\0N\0F\0O\0\0\0\0\0"sv;
// What the numbers begin with: their signature and the version of their layout.
constexpr std::string_view kSignature = "\xBD\x04\xEF\xFE\x00\x00\x01\x00"sv;
constexpr std::size_t kNumbersSize = 16;
constexpr std::size_t kWhole = kKey.size() + kNumbersSize;
constexpr std::int64_t kBytesPerStep = 64;

std::string Number(std::string_view bytes, std::size_t at) {
  return std::to_string(static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1])
                                                                    << 8);
}

std::string VersionOf(std::string_view numbers) {
  return Number(numbers, 10) + "." + Number(numbers, 8) + "." + Number(numbers, 14) + "." +
         Number(numbers, 12);
}

// What a piece of the file says; "" where the resource is not in it.
std::string FindVersion(std::string_view bytes) {
  for (std::size_t at = bytes.find(kKey); at != std::string_view::npos; at = bytes.find(kKey, at + 1)) {
    const std::string_view numbers = bytes.substr(at + kKey.size());
    if (numbers.size() >= kNumbersSize && numbers.starts_with(kSignature)) return VersionOf(numbers);
  }
  return "";
}

}  // namespace

std::string ReadFileVersion(platform::RandomAccessFile& file, Budget& budget) {
  std::string bytes(kChunk, '\0');
  for (std::uint64_t offset = 0; offset < file.Size(); offset += kChunk - kWhole) {
    budget.Charge(static_cast<std::int64_t>(kChunk) / kBytesPerStep);
    const std::size_t got = file.Read(offset, bytes.data(), bytes.size());
    const std::string_view piece = std::string_view(bytes).substr(0, got);
    if (offset == 0 && !piece.starts_with("MZ")) return "";
    if (std::string version = FindVersion(piece); !version.empty()) return version;
    if (got < kChunk) break;
  }
  return "";
}

}  // namespace hearthmake::vbscript
