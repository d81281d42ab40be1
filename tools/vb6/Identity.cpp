#include "vb6/Identity.hpp"

#include <algorithm>
#include <utility>

#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

// The numbers that Visual Basic starts at.
constexpr std::int32_t kFirstMethodId = 0x60030000;
constexpr std::int32_t kFirstPropertyId = 0x68030000;
constexpr std::int32_t kFirstEventId = 1;

const PublicClass* FindClass(const std::vector<PublicClass>& classes, std::string_view name) {
  const auto found = std::find_if(classes.begin(), classes.end(),
                                  [&](const PublicClass& c) { return EqualNoCase(c.name, name); });
  return found == classes.end() ? nullptr : &*found;
}

const Member* FindMember(const std::vector<Member>& members, std::string_view signature) {
  const auto found =
      std::find_if(members.begin(), members.end(), [&](const Member& m) { return m.signature == signature; });
  return found == members.end() ? nullptr : &*found;
}

struct Comparison {
  std::string broken;     // what is gone or changed, empty when nothing is
  bool extended = false;  // something was added
};

void CompareMembers(const std::string& className, const std::vector<Member>& earlier,
                    const std::vector<Member>& current, Comparison& comparison) {
  for (const Member& member : earlier) {
    if (comparison.broken.empty() && FindMember(current, member.signature) == nullptr) {
      comparison.broken = "'" + member.signature + "' of class '" + className + "' was removed or changed";
    }
  }
  for (const Member& member : current) {
    if (FindMember(earlier, member.signature) == nullptr) comparison.extended = true;
  }
}

Comparison Compare(const PublicClass& earlier, const PublicClass& current) {
  Comparison comparison;
  CompareMembers(current.name, earlier.members, current.members, comparison);
  CompareMembers(current.name, earlier.events, current.events, comparison);
  return comparison;
}

Comparison Compare(const EarlierLibrary& earlier, const PublicInterface& current) {
  Comparison comparison;
  for (const PublicClass& before : earlier.library.classes) {
    const PublicClass* now = FindClass(current.classes, before.name);
    if (now == nullptr) {
      comparison.broken = "class '" + before.name + "' was removed";
      return comparison;
    }
    if (!earlier.membersKnown) continue;
    const Comparison members = Compare(before, *now);
    comparison.extended |= members.extended;
    if (comparison.broken.empty()) comparison.broken = members.broken;
  }
  for (const PublicClass& now : current.classes) {
    if (FindClass(earlier.library.classes, now.name) == nullptr) comparison.extended = true;
  }
  return comparison;
}

// Members that were there before come first, in their old order and with their old ids.
void KeepPlaces(const std::vector<Member>& earlier, std::vector<Member>& current) {
  std::vector<Member> ordered;
  for (const Member& before : earlier) {
    const auto now = std::find_if(current.begin(), current.end(),
                                  [&](const Member& m) { return m.signature == before.signature; });
    if (now == current.end()) continue;
    if (!now->dispatchId) now->dispatchId = before.dispatchId;
    ordered.push_back(std::move(*now));
    current.erase(now);
  }
  std::move(current.begin(), current.end(), std::back_inserter(ordered));
  current = std::move(ordered);
}

std::int32_t FirstFree(const std::vector<Member>& members, std::int32_t id) {
  while (std::any_of(members.begin(), members.end(), [&](const Member& m) { return m.dispatchId == id; }))
    ++id;
  return id;
}

void NumberMembers(std::vector<Member>& members) {
  for (Member& member : members) {
    if (member.dispatchId) continue;
    const auto half = std::find_if(members.begin(), members.end(), [&](const Member& m) {
      return m.dispatchId && EqualNoCase(m.name, member.name);
    });
    if (half != members.end()) {
      member.dispatchId = half->dispatchId;
    } else if (member.kind == MemberKind::Event) {
      member.dispatchId = FirstFree(members, kFirstEventId);
    } else {
      const bool isMethod = member.kind == MemberKind::Method;
      member.dispatchId = FirstFree(members, isMethod ? kFirstMethodId : kFirstPropertyId);
    }
  }
}

class Assignment {
 public:
  Assignment(PublicInterface& library, const EarlierLibrary* earlier, const GuidSource& guids)
      : m_library(library), m_earlier(earlier), m_guids(guids) {}

  void Run() {
    m_library.id = m_earlier != nullptr ? m_earlier->library.id : m_guids.Make(m_library.name);
    for (PublicClass& now : m_library.classes) {
      const PublicClass* before =
          m_earlier != nullptr ? FindClass(m_earlier->library.classes, now.name) : nullptr;
      if (before != nullptr) {
        Keep(*before, now);
      } else {
        now.classId = NewGuid(now, "class");
        now.interfaceId = NewGuid(now, "interface");
        now.eventsId = NewGuid(now, "events");
      }
      NumberMembers(now.members);
      NumberMembers(now.events);
    }
  }

 private:
  void Keep(const PublicClass& before, PublicClass& now) {
    const Comparison comparison = m_earlier->membersKnown ? Compare(before, now) : Comparison{};
    const bool same = comparison.broken.empty() && !comparison.extended;
    now.classId = before.classId;
    now.interfaceId = same ? before.interfaceId : NewGuid(now, "interface " + VersionText());
    now.eventsId = same ? before.eventsId : NewGuid(now, "events " + VersionText());
    KeepPlaces(before.members, now.members);
    KeepPlaces(before.events, now.events);
  }

  std::string VersionText() const {
    return std::to_string(m_library.majorVersion) + "." + std::to_string(m_library.minorVersion);
  }
  Guid NewGuid(const PublicClass& owner, const std::string& purpose) const {
    return m_guids.Make(m_library.name + "/" + owner.name + "/" + purpose);
  }

  PublicInterface& m_library;
  const EarlierLibrary* m_earlier;
  const GuidSource& m_guids;
};

void RaiseVersion(PublicInterface& library, bool major) {
  if (major || library.minorVersion == UINT16_MAX) {
    ++library.majorVersion;
    library.minorVersion = 0;
  } else {
    ++library.minorVersion;
  }
}

}  // namespace

std::string AssignIdentity(PublicInterface& library, Compatibility mode, const EarlierLibrary* earlier,
                           const GuidSource& guids) {
  if (mode == Compatibility::None) earlier = nullptr;
  library.majorVersion = 1;
  library.minorVersion = 0;
  if (earlier != nullptr) {
    const Comparison comparison = Compare(*earlier, library);
    const bool broken = !comparison.broken.empty();
    if (broken && mode == Compatibility::Binary) return comparison.broken;
    library.majorVersion = earlier->library.majorVersion;
    library.minorVersion = earlier->library.minorVersion;
    if (mode == Compatibility::Project || comparison.extended) RaiseVersion(library, broken);
  }
  Assignment(library, earlier, guids).Run();
  return {};
}

}  // namespace hearthmake::vb6
