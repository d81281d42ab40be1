#include "vb6/InterfaceListing.hpp"

#include <utility>

#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

// The file ends with the length of the listing as eight hexadecimal digits, and this.
constexpr std::string_view kMark = "\nhearthmake vb6 listing 1\n";
constexpr std::size_t kLengthDigits = 8;

std::string LengthText(std::size_t length) {
  const std::string digits = Hex(static_cast<unsigned>(length));
  return std::string(kLengthDigits - digits.size(), '0') + digits;
}

void AddMembers(std::string& text, const std::vector<Member>& members) {
  for (const Member& member : members) {
    text += "member " + Hex(static_cast<std::uint32_t>(member.dispatchId.value_or(0))) + " " +
            member.signature + "\n";
  }
}

std::string TextOf(const PublicInterface& library) {
  std::string text = "library " + library.id.Text() + " " + Hex(library.majorVersion) + " " +
                     Hex(library.minorVersion) + "\n";
  for (const PublicClass& c : library.classes) {
    text += "class " + c.classId.Text() + " " + c.interfaceId.Text() + " " + c.eventsId.Text() + " " +
            c.name + "\n";
    AddMembers(text, c.members);
    AddMembers(text, c.events);
  }
  return text;
}

// The words of a row; the last one takes the rest. Nothing when there are fewer.
std::optional<std::vector<std::string_view>> Fields(std::string_view row, std::size_t count) {
  std::vector<std::string_view> fields;
  while (fields.size() + 1 < count) {
    const std::size_t blank = row.find(' ');
    if (blank == std::string_view::npos) return std::nullopt;
    fields.push_back(row.substr(0, blank));
    row.remove_prefix(blank + 1);
  }
  fields.push_back(row);
  return fields;
}

bool ReadLibraryRow(std::string_view row, PublicInterface& library) {
  const auto fields = Fields(row, 4);
  if (!fields) return false;
  const auto id = Guid::Parse((*fields)[1]);
  const auto major = ParseNumber((*fields)[2], 16);
  const auto minor = ParseNumber((*fields)[3], 16);
  if (!id || !major || !minor || *major > UINT16_MAX || *minor > UINT16_MAX) return false;
  library.id = *id;
  library.majorVersion = static_cast<std::uint16_t>(*major);
  library.minorVersion = static_cast<std::uint16_t>(*minor);
  return true;
}

bool ReadClassRow(std::string_view row, PublicInterface& library) {
  const auto fields = Fields(row, 5);
  if (!fields) return false;
  const auto classId = Guid::Parse((*fields)[1]);
  const auto interfaceId = Guid::Parse((*fields)[2]);
  const auto eventsId = Guid::Parse((*fields)[3]);
  if (!classId || !interfaceId || !eventsId) return false;
  PublicClass& added = library.classes.emplace_back();
  added.name = (*fields)[4];
  added.classId = *classId;
  added.interfaceId = *interfaceId;
  added.eventsId = *eventsId;
  return true;
}

bool ReadMemberRow(std::string_view row, PublicInterface& library) {
  const auto fields = Fields(row, 3);
  if (!fields || library.classes.empty()) return false;
  const auto id = ParseNumber((*fields)[1], 16);
  if (!id) return false;
  Member member;
  member.signature = (*fields)[2];
  member.kind = member.signature.starts_with("event ") ? MemberKind::Event : MemberKind::Method;
  member.dispatchId = static_cast<std::int32_t>(*id);
  PublicClass& owner = library.classes.back();
  (member.kind == MemberKind::Event ? owner.events : owner.members).push_back(std::move(member));
  return true;
}

bool ReadRow(std::string_view row, PublicInterface& library) {
  if (row.empty()) return true;
  if (row.starts_with("library ")) return ReadLibraryRow(row, library);
  if (row.starts_with("class ")) return ReadClassRow(row, library);
  return row.starts_with("member ") && ReadMemberRow(row, library);
}

}  // namespace

std::string WithListing(std::string image, const PublicInterface& library) {
  const std::string text = TextOf(library);
  image += text;
  image += LengthText(text.size());
  image += kMark;
  return image;
}

std::optional<EarlierLibrary> ReadListing(std::string_view bytes) {
  if (!bytes.ends_with(kMark)) return std::nullopt;
  bytes.remove_suffix(kMark.size());
  if (bytes.size() < kLengthDigits) return std::nullopt;
  const auto length = ParseNumber(bytes.substr(bytes.size() - kLengthDigits), 16);
  bytes.remove_suffix(kLengthDigits);
  if (!length || *length > bytes.size()) return std::nullopt;
  EarlierLibrary earlier;
  for (const std::string_view row : Split(bytes.substr(bytes.size() - *length), '\n')) {
    if (!ReadRow(row, earlier.library)) return std::nullopt;
  }
  return earlier;
}

}  // namespace hearthmake::vb6
