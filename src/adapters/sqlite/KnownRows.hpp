#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adapters/sqlite/SelectPlan.hpp"

namespace hearthmake::sqlite {

// The rows of the lists that a connection has read last, packed as RowBuffer packs them. One that nobody has
// changed since needs not be read again when it is edited: to read a row of fifty texts costs more than to
// write it. Whether the rows still stand is told by the version of the file's data, SQLite's own measure for
// the pages that it keeps, and by whoever writes through the connection.
class KnownRows {
 public:
  struct Row {
    std::shared_ptr<SelectPlan> plan;  // null: the row is not known
    std::string_view packed;           // until the rows change
  };

  // Begins a list of whole rows of the plan's table, read under that version of the data. It takes the place
  // of the last one of the table.
  void Begin(std::shared_ptr<SelectPlan> plan, std::int64_t version);
  // Adds a row to the list begun last. What would take too much memory is left out.
  void Add(std::int64_t key, std::string_view packed);

  // The row whose key has that value; column is the key's name or any other, both as a statement spells them.
  Row Find(std::string_view table, std::string_view column, std::int64_t value);
  // Forgets all when the rows were read under another version. Whether they still stand.
  bool StandAt(std::int64_t version);

  // The row was changed; nothing else was.
  void Forget(std::string_view table, std::int64_t key);
  // Anything may have been changed.
  void Clear();

 private:
  struct Place {
    std::size_t begin;
    std::size_t size;
  };

  struct List {
    std::shared_ptr<SelectPlan> plan;
    std::string packed;
    std::unordered_map<std::int64_t, Place> byKey;
  };

  List* ListOf(std::string_view table);

  std::vector<List> m_lists;  // the one begun last behind
  std::int64_t m_version = 0;
};

}  // namespace hearthmake::sqlite
