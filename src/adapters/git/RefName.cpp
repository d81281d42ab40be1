#include "adapters/git/RefName.hpp"

#include <array>

#include "adapters/git/LibGit2.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::git {

namespace {

constexpr std::size_t kLongest = 180;  // of a component; a file name has 255 bytes and ".lock" is added

void AppendEscape(std::string& name, char c) {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  name += {'%', kHexDigits[byte >> 4U], kHexDigits[byte & 15U]};
}

std::string HashOf(std::string_view text) {
  git_oid id{};
  git_odb_hash(&id, text.data(), text.size(), GIT_OBJECT_BLOB);
  std::array<char, GIT_OID_HEXSZ + 1> hex{};
  return git_oid_tostr(hex.data(), hex.size(), &id);
}

std::string Shortened(std::string name, std::string_view whole) {
  if (name.size() <= kLongest) return name;
  std::size_t length = 0;  // ends between two characters
  for (std::string_view rest = name; length < kLongest - 50;)
    length += automation::Utf8SequenceLength(rest.substr(length));
  return name.substr(0, length) + "%-" + HashOf(whole);
}

// One component of a ref's name.
std::string Component(std::string_view text) {
  std::string name;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const auto byte = static_cast<unsigned char>(c);
    const bool isAtEnd = i == 0 || i + 1 == text.size();
    const bool isDotRefused = c == '.' && (isAtEnd || text[i + 1] == '.');
    const bool isDashRefused = c == '-' && i == 0;
    const bool isRefused = std::string_view(" ~^:?*[\\/%@{").find(c) != std::string_view::npos;
    if (byte <= ' ' || byte == 0x7F || isRefused || isDotRefused || isDashRefused) {
      AppendEscape(name, c);
    } else {
      name += c;
    }
  }
  if (name.ends_with(".lock")) name.replace(name.size() - 5, 1, "%2E");
  return Shortened(std::move(name), text);
}

std::string Dashed(std::string_view text) {
  std::string dashed(text);
  for (char& c : dashed) {
    if (c == ' ' || c == '/') c = '-';
  }
  return dashed;
}

}  // namespace

std::string CheckoutRef(const ItemPath& path) {
  std::string name = kCheckoutRefs;
  for (const std::string& folder : path.Names()) name += Component(folder) + "/";
  name.pop_back();
  return name + "%";
}

std::string TagName(std::string_view label, const ItemPath& path, int attempt) {
  std::string blankless(label);
  for (char& c : blankless) {
    if (c == ' ') c = '-';
  }
  const std::string name = Component(blankless);
  if (attempt == 0) return name;
  const std::string item = path.IsRoot() ? "root" : Component(Dashed(path.TreePath()));
  if (attempt == 1) return Shortened(name + "@" + item, name + "@" + item);
  return Shortened(name + "@" + item, name + "@" + item) + "%" + std::to_string(attempt);
}

}  // namespace hearthmake::git
