#include "adapters/sqlite/KnownRows.hpp"

#include <utility>

#include "adapters/sqlite/ColumnNames.hpp"

namespace hearthmake::sqlite {

namespace {

// Bytes of one list: some ten thousand projects.
constexpr std::size_t kLargestList = 8'000'000;

}  // namespace

void KnownRows::Begin(std::shared_ptr<SelectPlan> plan, std::int64_t version) {
  StandAt(version);
  std::erase_if(m_lists, [&](const List& list) { return SameName(list.plan->Table(), plan->Table()); });
  m_version = version;
  m_lists.push_back({std::move(plan), {}, {}});
}

void KnownRows::Add(std::int64_t key, std::string_view packed) {
  List& list = m_lists.back();
  if (list.packed.size() + packed.size() > kLargestList) return;
  list.byKey.insert_or_assign(key, Place{list.packed.size(), packed.size()});
  list.packed += packed;
}

KnownRows::Row KnownRows::Find(std::string_view table, std::string_view column, std::int64_t value) {
  List* list = ListOf(table);
  if (list == nullptr || !SameName(column, list->plan->KeyName())) return {};
  const auto found = list->byKey.find(value);
  if (found == list->byKey.end()) return {};
  return {list->plan, std::string_view(list->packed).substr(found->second.begin, found->second.size)};
}

bool KnownRows::StandAt(std::int64_t version) {
  if (m_version != version) Clear();
  return !m_lists.empty();
}

void KnownRows::Forget(std::string_view table, std::int64_t key) {
  if (List* list = ListOf(table); list != nullptr) list->byKey.erase(key);
}

void KnownRows::Clear() { m_lists.clear(); }

KnownRows::List* KnownRows::ListOf(std::string_view table) {
  for (List& list : m_lists) {
    if (SameName(list.plan->Table(), table)) return &list;
  }
  return nullptr;
}

}  // namespace hearthmake::sqlite
