#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::sqlite {

// Whether two names are one, without regard to the case of ASCII letters.
bool SameName(std::string_view a, std::string_view b);

// Finds columns by name. Callers ask for the columns of every row in one order, so what followed a
// column the last time is tried first: in the usual case a look-up is one comparison, whatever the
// order is.
class ColumnNames {
 public:
  static constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

  explicit ColumnNames(std::vector<std::string> names);

  std::size_t Count() const { return m_names.size(); }
  const std::string& Name(std::size_t index) const { return m_names[index]; }
  // The position of the column, or kNotFound. last is the position that the caller found last (at
  // first anything below Count()); it is set to the result.
  std::size_t Find(std::string_view name, std::size_t& last);

 private:
  std::vector<std::string> m_names;
  std::vector<std::size_t> m_successor;
};

}  // namespace hearthmake::sqlite
