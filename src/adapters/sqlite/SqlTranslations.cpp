#include "adapters/sqlite/SqlTranslations.hpp"

#include <charconv>
#include <cstdint>
#include <utility>

namespace hearthmake::sqlite {

namespace {

// More than the library has; a host that makes up its own begins anew from time to time.
constexpr std::size_t kTranslations = 64;
// Any number of so many digits fits.
constexpr std::size_t kDigits = 18;

// Where the whole number begins that the text ends in; its end when there is none. The number is a word of
// its own by what stands before it, be it what it may: an unfinished text, date or name is an error, and
// errors are not kept.
std::size_t NumberAtEnd(std::string_view sql) {
  const std::size_t begin = sql.find_last_not_of("0123456789") + 1;
  const bool isWord = begin > 0 && begin < sql.size() && (sql[begin - 1] == ' ' || sql[begin - 1] == '=');
  return isWord && sql.size() - begin <= kDigits ? begin : sql.size();
}

}  // namespace

const JetSql& SqlTranslations::Of(std::string_view sql, const char* source) {
  const std::size_t begin = NumberAtEnd(sql);
  if (begin == sql.size()) return m_other.emplace(sql, source);
  if (const auto known = m_byBeginning.find(sql.substr(0, begin)); known != m_byBeginning.end()) {
    std::int64_t number = 0;
    std::from_chars(sql.data() + begin, sql.data() + sql.size(), number);
    known->second.SetEndNumber(number);
    return known->second;
  }
  JetSql translation(sql, source);
  if (!translation.EndsInNumber()) return m_other.emplace(std::move(translation));
  if (m_byBeginning.size() >= kTranslations) m_byBeginning.clear();
  return m_byBeginning.emplace(sql.substr(0, begin), std::move(translation)).first->second;
}

}  // namespace hearthmake::sqlite
