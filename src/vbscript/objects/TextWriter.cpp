#include "vbscript/objects/TextWriter.hpp"

#include <algorithm>

#include "automation/Error.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/Waiting.hpp"

namespace hearthmake::vbscript {

namespace {

constexpr std::size_t kFlushAt = 64U << 10U;
constexpr std::int64_t kUnitsPerStep = 16;

std::u16string WithLineFeeds(std::u16string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isLineEnd = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
    if (!isLineEnd) result += text[i];
  }
  return result;
}

}  // namespace

TextWriter::TextWriter(std::shared_ptr<platform::OutputStream> stream, TextEncoding encoding, Kind kind,
                       Budget& budget)
    : m_stream(std::move(stream)), m_encoding(encoding), m_kind(kind), m_budget(budget) {}

TextWriter::~TextWriter() {
  try {
    Flush();
  } catch (const automation::Error&) {
    // See the declaration.
  } catch (const Interrupted&) {
    // Nor may it wait longer than the script.
  }
}

void TextWriter::Write(std::u16string_view text) {
  if (m_kind == Kind::Console && text.find(u'\r') != std::u16string_view::npos) {
    Append(WithLineFeeds(text));
  } else {
    Append(text);
  }
}

void TextWriter::EndLine() { Append(m_kind == Kind::Console ? u"\n" : u"\r\n"); }

void TextWriter::WriteMark() {
  if (m_encoding == TextEncoding::Utf16) m_bytes += kUtf16Mark;
}

void TextWriter::Flush() {
  // Taken out first: bytes that can't be written are not tried again and again.
  std::string bytes;
  bytes.swap(m_bytes);
  for (std::string_view rest = bytes; !rest.empty();) {
    const std::size_t written = m_stream->WriteSome(rest, kWaitSlice);
    rest.remove_prefix(written);
    if (written == 0) LookAtTime(m_budget);
  }
  bytes.clear();
  m_bytes.swap(bytes);
}

void TextWriter::Append(std::u16string_view text) {
  if (!EncodeText(m_encoding, text, m_bytes)) RaiseRuntime(number::kInvalidProcedureCall);
  CountLines(text);
  m_budget.Charge(1 + static_cast<std::int64_t>(text.size()) / kUnitsPerStep);
  if (m_kind != Kind::File || m_bytes.size() >= kFlushAt) Flush();
}

void TextWriter::CountLines(std::u16string_view text) {
  const std::size_t lastLineFeed = text.rfind(u'\n');
  if (lastLineFeed == std::u16string_view::npos) {
    m_column += static_cast<std::int32_t>(text.size());
    return;
  }
  m_line += static_cast<std::int32_t>(std::count(text.begin(), text.end(), u'\n'));
  m_column = static_cast<std::int32_t>(text.size() - lastLineFeed);
}

}  // namespace hearthmake::vbscript
