#include "vbscript/objects/TextReader.hpp"

#include <algorithm>

#include "vbscript/Errors.hpp"
#include "vbscript/objects/Waiting.hpp"

namespace hearthmake::vbscript {

namespace {

constexpr std::size_t kChunk = 64U << 10U;
// The most that one text of a script can hold.
constexpr std::size_t kLongestText = 1U << 30U;
constexpr std::int64_t kUnitsPerStep = 16;

}  // namespace

TextReader::TextReader(std::shared_ptr<platform::InputStream> stream, TextEncoding encoding, Budget& budget)
    : m_stream(std::move(stream)), m_encoding(encoding), m_budget(budget) {}

bool TextReader::IsAtEnd() {
  Require(1);
  return Rest().empty();
}

bool TextReader::IsAtEndOfLine() {
  Require(1);
  if (Rest().starts_with(u'\r')) Require(2);
  const std::u16string_view rest = Rest();
  return rest.empty() || rest.starts_with(u'\n') || rest.starts_with(u"\r\n");
}

std::u16string_view TextReader::Read(std::size_t count) {
  Require(count);
  return Take(std::min(count, Rest().size()));
}

std::u16string_view TextReader::ReadAll() {
  Require(kLongestText);
  return Take(Rest().size());
}

std::u16string_view TextReader::ReadLine() {
  const std::size_t end = FindLineFeed();
  if (end == std::u16string_view::npos) return Take(Rest().size());
  std::u16string_view line = Take(end + 1);
  line.remove_suffix(1);
  if (line.ends_with(u'\r')) line.remove_suffix(1);
  return line;
}

bool TextReader::Skip(std::size_t count) {
  while (count > 0) {
    const std::size_t passed = Read(std::min(count, kChunk)).size();
    if (passed == 0) return false;
    count -= passed;
  }
  return true;
}

bool TextReader::SkipLine() {
  if (IsAtEnd()) return false;
  ReadLine();
  return true;
}

bool TextReader::Fill() {
  if (m_isEnded) return false;
  m_text.erase(0, m_next);
  m_next = 0;
  if (m_text.size() >= kLongestText) RaiseRuntime(number::kOutOfMemory);
  const std::size_t kept = m_bytes.size();
  m_bytes.resize(kept + kChunk);
  std::size_t count = 0;
  while (true) {
    const auto got = m_stream->Read(m_bytes.data() + kept, kChunk, kWaitSlice);
    if (got) {
      count = *got;
      break;
    }
    try {
      LookAtTime(m_budget);
    } catch (...) {
      m_bytes.resize(kept);
      throw;
    }
  }
  m_bytes.resize(kept + count);
  m_isEnded = count == 0;
  const std::size_t used = DecodeText(m_encoding, m_bytes, m_isEnded, m_text);
  m_bytes.erase(0, used);
  m_budget.Charge(static_cast<std::int64_t>(count) / kUnitsPerStep);
  return !m_isEnded || !Rest().empty();
}

void TextReader::Require(std::size_t count) {
  while (Rest().size() < count && Fill()) {
  }
}

std::u16string_view TextReader::Take(std::size_t count) {
  const std::u16string_view taken = Rest().substr(0, count);
  m_next += count;
  const std::size_t lastLineFeed = taken.rfind(u'\n');
  if (lastLineFeed == std::u16string_view::npos) {
    m_column += static_cast<std::int32_t>(count);
  } else {
    m_line += static_cast<std::int32_t>(std::count(taken.begin(), taken.end(), u'\n'));
    m_column = static_cast<std::int32_t>(count - lastLineFeed);
  }
  return taken;
}

std::size_t TextReader::FindLineFeed() {
  // A line of many pieces is looked through once.
  std::size_t looked = 0;
  while (true) {
    const std::u16string_view rest = Rest();
    const std::size_t found = rest.find(u'\n', looked);
    if (found != std::u16string_view::npos) return found;
    looked = rest.size();
    if (!Fill()) return std::u16string_view::npos;
  }
}

}  // namespace hearthmake::vbscript
