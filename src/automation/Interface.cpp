#include "automation/Interface.hpp"

#include <algorithm>

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::automation {

namespace {

std::int64_t EntryKey(std::int32_t id, MemberKind kind) {
  return static_cast<std::int64_t>(id) * 4 + static_cast<std::int64_t>(kind);
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
  m_entries[EntryKey(member.id, member.kind)] = m_members.size();
  m_members.push_back(std::move(member));
}

std::optional<std::int32_t> Interface::Find(std::string_view name) const {
  const auto found = m_ids.find(Lower(name));
  if (found == m_ids.end()) return std::nullopt;
  return found->second;
}

const Member* Interface::Find(std::int32_t id, InvokeKind kind) const {
  const auto entry = [&](MemberKind memberKind) -> const Member* {
    const auto found = m_entries.find(EntryKey(id, memberKind));
    return found == m_entries.end() ? nullptr : &m_members[found->second];
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
