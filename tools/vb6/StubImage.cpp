#include "vb6/StubImage.hpp"

#include <algorithm>

#include "automation/Error.hpp"
#include "vb6/ByteWriter.hpp"

namespace hearthmake::vb6 {
namespace {

constexpr std::size_t kFileHeaderSize = 24;  // with the signature before it
constexpr std::size_t kSectionHeaderSize = 40;
constexpr std::uint32_t kWideImage = 0x20B;  // of 64 bits

std::uint32_t RoundUp(std::uint32_t value, std::uint32_t step) { return (value + step - 1) / step * step; }

[[noreturn]] void Refuse(const char* why) {
  automation::Raise(automation::RuntimeError::DeviceIoError, "StubImage",
                    std::string("The stub can't be used: ") + why);
}

// The headers of an image, by the places of their fields.
class Headers {
 public:
  explicit Headers(std::string& image) : m_image(image) {
    if (!m_image.starts_with("MZ")) Refuse("it is no image.");
    m_start = Number(0x3C, 4);
    if (Number(m_start, 4) != 0x4550) Refuse("it is no image.");
    m_optional = m_start + kFileHeaderSize;
    m_sections = m_optional + Number(m_start + 20, 2);
    m_directories = m_optional + (Number(m_optional, 2) == kWideImage ? 112 : 96);
    if (SectionAlignment() == 0 || FileAlignment() == 0) Refuse("it is no image.");
  }

  std::uint32_t SectionAlignment() const { return Number(m_optional + 32, 4); }
  std::uint32_t FileAlignment() const { return Number(m_optional + 36, 4); }
  std::uint32_t ImageSize() const { return Number(m_optional + 56, 4); }
  bool HasResources() const { return Number(ResourceDirectory(), 4) != 0; }

  void AddSection(std::uint32_t address, std::uint32_t size, std::uint32_t place, std::uint32_t placeSize) {
    constexpr std::uint32_t kReadableData = 0x40000040;
    const std::uint32_t count = Number(m_start + 6, 2);
    const std::size_t header = m_sections + count * kSectionHeaderSize;
    if (header + kSectionHeaderSize > HeadersSize()) Refuse("its headers leave no room for a section.");
    ByteWriter out;
    out.Raw(".rsrc");
    out.Align(8);
    for (const std::uint32_t field : {size, address, placeSize, place, 0U, 0U, 0U, kReadableData})
      out.U32(field);
    m_image.replace(header, kSectionHeaderSize, out.Bytes());
    Set(m_start + 6, count + 1, 2);
    Set(ResourceDirectory(), address, 4);
    Set(ResourceDirectory() + 4, size, 4);
    Set(m_optional + 56, address + RoundUp(size, SectionAlignment()), 4);
    Set(m_optional + 64, 0, 4);  // the checksum, which only drivers need
  }

 private:
  std::size_t ResourceDirectory() const { return m_directories + 2 * 8; }
  // Of those that the file has.
  std::size_t HeadersSize() const {
    return std::min<std::size_t>(Number(m_optional + 60, 4), m_image.size());
  }

  std::uint32_t Number(std::size_t offset, std::size_t count) const {
    if (offset > m_image.size() || m_image.size() - offset < count) Refuse("it is cut off.");
    std::uint32_t value = 0;
    for (std::size_t i = count; i-- > 0;)
      value = value << 8 | static_cast<unsigned char>(m_image[offset + i]);
    return value;
  }
  void Set(std::size_t offset, std::uint32_t value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
      m_image.at(offset + i) = static_cast<char>(value >> (8 * i) & 0xFF);
  }

  std::string& m_image;
  std::size_t m_start = 0;
  std::size_t m_optional = 0;
  std::size_t m_directories = 0;
  std::size_t m_sections = 0;
};

}  // namespace

std::string WithResources(const std::string& image, const std::vector<PeResource>& resources) {
  std::string made = image;
  Headers headers(made);
  if (headers.HasResources()) Refuse("it has resources already.");
  const std::uint32_t address = RoundUp(headers.ImageSize(), headers.SectionAlignment());
  std::string section = ResourceSection(resources, address);
  const auto size = static_cast<std::uint32_t>(section.size());
  const std::uint32_t alignment = headers.FileAlignment();
  section.resize(RoundUp(size, alignment));
  const std::uint32_t place = RoundUp(static_cast<std::uint32_t>(made.size()), alignment);
  headers.AddSection(address, size, place, static_cast<std::uint32_t>(section.size()));
  made.resize(place);
  return made + section;
}

}  // namespace hearthmake::vb6
