#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/sqlite/JetSql.hpp"

namespace hearthmake::sqlite {

// The translations of statements that end in a number, as nearly all do that are sent again and again: texts
// that differ in that number alone (the key of a row) are translated once.
class SqlTranslations {
 public:
  // The translation of sql, whose errors are JetSql's. Valid until the next call.
  const JetSql& Of(std::string_view sql, const char* source);

 private:
  std::map<std::string, JetSql, std::less<>> m_byBeginning;  // what stands before the number
  std::optional<JetSql> m_other;
};

}  // namespace hearthmake::sqlite
