#include "automation/Interface.hpp"

#include <algorithm>

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::automation {

namespace {

// Ids are small: the reserved ones from kNewEnumMember, then those that were given out one by one.
std::size_t EntryPlace(std::int32_t id, MemberKind kind) {
  return static_cast<std::size_t>(id - kNewEnumMember) * 4 + static_cast<std::size_t>(kind);
}

bool TakesValue(MemberKind kind) { return kind == MemberKind::Let || kind == MemberKind::Set; }

}  // namespace

std::size_t Member::ArgumentCount() const { return parameters.size() + (TakesValue(kind) ? 1 : 0); }

std::size_t Member::RequiredArguments() const {
  if (TakesValue(kind)) return ArgumentCount();
  return static_cast<std::size_t>(
      std::count_if(parameters.begin(), parameters.end(), [](const Parameter& p) { return !p.isOptional; }));
}

Interface::Interface(std::string name, std::string interfaceName, std::string iid, std::string clsid)
    : m_name(std::move(name)),
      m_interfaceName(std::move(interfaceName)),
      m_iid(std::move(iid)),
      m_clsid(std::move(clsid)) {}

void Interface::Add(Member member) {
  const std::string key = Lower(member.name);
  const auto known = m_ids.find(key);
  if (known != m_ids.end()) {
    member.id = known->second;
  } else if (member.id != kDefaultMember && member.id != kNewEnumMember) {
    member.id = m_nextId++;
  }
  m_ids[key] = member.id;
  const std::size_t place = EntryPlace(member.id, member.kind);
  if (place >= m_entries.size()) m_entries.resize(place + 1);
  m_entries[place] = static_cast<std::uint32_t>(m_members.size() + 1);
  m_members.push_back(std::move(member));
}

std::optional<std::int32_t> Interface::Find(std::string_view name) const {
  const auto found = m_ids.find(Lower(name));
  if (found == m_ids.end()) return std::nullopt;
  return found->second;
}

const Member* Interface::Find(std::int32_t id, InvokeKind kind) const {
  const auto entry = [&](MemberKind memberKind) -> const Member* {
    if (id < kNewEnumMember) return nullptr;
    const std::size_t place = EntryPlace(id, memberKind);
    if (place >= m_entries.size() || m_entries[place] == 0) return nullptr;
    return &m_members[m_entries[place] - 1];
  };
  switch (kind) {
    case InvokeKind::Let: return entry(MemberKind::Let);
    case InvokeKind::Set: {
      const Member* set = entry(MemberKind::Set);
      return set != nullptr ? set : entry(MemberKind::Let);
    }
    default: {
      const Member* get = entry(MemberKind::Get);
      return get != nullptr ? get : entry(MemberKind::Method);
    }
  }
}

Variant Interface::Invoke(Object& self, std::int32_t id, InvokeKind kind,
                          std::span<Variant> arguments) const {
  const Member* member = Find(id, kind);
  if (member == nullptr) Raise(RuntimeError::MemberNotFound, m_name);
  if (arguments.size() < member->RequiredArguments())
    Raise(RuntimeError::ArgumentNotOptional, m_name, member->name);
  if (arguments.size() > member->ArgumentCount()) return InvokeWithSurplus(self, *member, arguments);
  if (arguments.size() == member->ArgumentCount()) return member->invoke(self, arguments);
  std::vector<Variant> all(arguments.begin(), arguments.end());
  all.resize(member->ArgumentCount(), Variant::Missing());
  return member->invoke(self, all);
}

Variant Interface::InvokeWithSurplus(Object& self, const Member& member, std::span<Variant> arguments) const {
  const std::size_t own = member.ArgumentCount();
  if (member.value.kind != ValueKind::Object || TakesValue(member.kind)) {
    Raise(RuntimeError::WrongNumberOfArguments, m_name, member.name);
  }
  const Variant result = member.invoke(self, arguments.first(own));
  if (!result.IsObject() || result.AsObject() == nullptr)
    Raise(RuntimeError::ObjectNotSet, m_name, member.name);
  return result.AsObject()->Invoke(kDefaultMember, InvokeKind::Get, arguments.subspan(own));
}

}  // namespace hearthmake::automation
