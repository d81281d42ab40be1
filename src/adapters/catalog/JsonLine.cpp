#include "adapters/catalog/JsonLine.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>
#include <vector>

namespace hearthmake::catalog {

namespace {

using nlohmann::json;

// Shows how far the parser has read.
class WatchedIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  WatchedIterator(const char* at, const char** furthest) : m_at(at), m_furthest(furthest) {}
  reference operator*() const { return *m_at; }
  WatchedIterator& operator++() {
    *m_furthest = ++m_at;
    return *this;
  }
  WatchedIterator operator++(int) {
    const WatchedIterator before = *this;
    ++*this;
    return before;
  }
  friend bool operator==(const WatchedIterator& a, const WatchedIterator& b) { return a.m_at == b.m_at; }
  friend bool operator!=(const WatchedIterator& a, const WatchedIterator& b) { return a.m_at != b.m_at; }

 private:
  const char* m_at;
  const char** m_furthest;
};

// Follows the parser to a place and stops it there.
class PlaceFinder final : public json::json_sax_t {
 public:
  explicit PlaceFinder(std::string_view place)
      : m_place(place), m_depth(static_cast<std::size_t>(std::count(place.begin(), place.end(), '/'))) {}

  bool IsFound() const { return m_isFound; }
  // Counted from 1; 0 while the text is sound.
  std::size_t FailedByte() const { return m_failedByte; }

  bool null() override { return Scalar(); }
  bool boolean(bool /*value*/) override { return Scalar(); }
  bool number_integer(number_integer_t /*value*/) override { return Scalar(); }
  bool number_unsigned(number_unsigned_t /*value*/) override { return Scalar(); }
  bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return Scalar(); }
  bool string(string_t& /*value*/) override { return Scalar(); }
  bool binary(binary_t& /*value*/) override { return Scalar(); }
  bool start_object(std::size_t /*count*/) override { return Open(false); }
  bool start_array(std::size_t /*count*/) override { return Open(true); }
  bool end_object() override { return Close(); }
  bool end_array() override { return Close(); }
  bool key(string_t& name) override {
    m_open.back().name = name;
    return true;
  }
  bool parse_error(std::size_t byte, const std::string& /*token*/,
                   const nlohmann::detail::exception& /*error*/) override {
    m_failedByte = byte;
    return false;
  }

 private:
  struct Level {
    bool isArray = false;
    std::size_t next = 0;
    std::string name;
  };

  bool IsHere() const {
    if (m_open.size() > m_depth) return false;  // a text may nest deeper than is good to look at
    std::string place;
    for (const Level& level : m_open)
      place += "/" + (level.isArray ? std::to_string(level.next) : level.name);
    return place == m_place;
  }
  bool Scalar() {
    m_isFound = IsHere();
    MoveOn();
    return !m_isFound;
  }
  bool Open(bool isArray) {
    m_isFound = IsHere();
    m_open.push_back({isArray, 0, {}});
    return !m_isFound;
  }
  bool Close() {
    m_open.pop_back();
    MoveOn();
    return true;
  }
  void MoveOn() {
    if (!m_open.empty()) ++m_open.back().next;
  }

  std::string_view m_place;
  std::size_t m_depth;
  std::vector<Level> m_open;
  bool m_isFound = false;
  std::size_t m_failedByte = 0;
};

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

std::size_t LineAt(std::string_view text, std::size_t byte) {
  const std::size_t before = std::min(byte > 0 ? byte - 1 : 0, text.size());
  return 1 + static_cast<std::size_t>(
                 std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(before), '\n'));
}

std::size_t LineOfDamage(std::string_view text) {
  PlaceFinder finder("-");  // no place: nothing is to be found
  json::sax_parse(text, &finder);
  return LineAt(text, finder.FailedByte());
}

std::size_t LineOfPlace(std::string_view text, std::string_view place) {
  const char* furthest = text.data();
  const char* const end = text.data() + text.size();
  PlaceFinder finder(place);
  json::sax_parse(WatchedIterator(text.data(), &furthest), WatchedIterator(end, &furthest), &finder);
  if (!finder.IsFound()) return 1;
  // Behind a number the parser has read one character more, which may be the line's end.
  while (furthest > text.data() && IsBlank(furthest[-1])) --furthest;
  return 1 + static_cast<std::size_t>(std::count(text.data(), furthest, '\n'));
}

std::size_t ByteTooDeep(std::string_view text, std::size_t limit) {
  std::size_t depth = 0;
  bool isText = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') isText = !isText;
    if (isText && c == '\\') ++i;
    if (isText) continue;
    if ((c == '[' || c == '{') && ++depth > limit) return i + 1;
    if ((c == ']' || c == '}') && depth > 0) --depth;
  }
  return 0;
}

}  // namespace hearthmake::catalog
