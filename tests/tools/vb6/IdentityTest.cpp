#include "vb6/Identity.hpp"

#include <gtest/gtest.h>

#include "vb6/Declarations.hpp"

namespace hearthmake::vb6 {
namespace {

PublicInterface Library(const std::vector<std::string>& declarations) {
  PublicInterface library;
  library.name = "Lib";
  PublicClass& c = library.classes.emplace_back();
  c.name = "Order";
  for (const std::string& declaration : declarations) {
    for (Member& member : PublicMembers(declaration)) {
      (member.kind == MemberKind::Event ? c.events : c.members).push_back(std::move(member));
    }
  }
  return library;
}

const GuidSource kGuids("seed");

EarlierLibrary Earlier(const std::vector<std::string>& declarations) {
  EarlierLibrary earlier{Library(declarations), true};
  AssignIdentity(earlier.library, Compatibility::None, nullptr, GuidSource("earlier"));
  return earlier;
}

std::string Version(const PublicInterface& library) {
  return std::to_string(library.majorVersion) + "." + std::to_string(library.minorVersion);
}

TEST(Identity, IsNewEachTimeWithoutCompatibility) {
  const EarlierLibrary earlier = Earlier({"Sub A()"});
  PublicInterface first = Library({"Sub A()"});
  PublicInterface second = first;
  EXPECT_EQ(AssignIdentity(first, Compatibility::None, &earlier, GuidSource()), "");
  AssignIdentity(second, Compatibility::None, &earlier, GuidSource());
  EXPECT_NE(first.id, earlier.library.id);
  EXPECT_NE(first.id, second.id);
  EXPECT_EQ(Version(first), "1.0");
}

TEST(Identity, IsTheSameForTheSameSeed) {
  PublicInterface first = Library({"Sub A()"});
  PublicInterface second = first;
  AssignIdentity(first, Compatibility::None, nullptr, kGuids);
  AssignIdentity(second, Compatibility::None, nullptr, kGuids);
  EXPECT_EQ(first.id, second.id);
  EXPECT_EQ(first.classes[0].classId, second.classes[0].classId);
  EXPECT_NE(first.classes[0].classId, first.classes[0].interfaceId);
}

TEST(Identity, StaysUnderBinaryCompatibilityWhileNothingChanges) {
  const EarlierLibrary earlier = Earlier({"Sub A()", "Public Property Get B() As Long"});
  PublicInterface library = Library({"Public Property Get B() As Long", "Sub A()"});  // order does not matter
  EXPECT_EQ(AssignIdentity(library, Compatibility::Binary, &earlier, kGuids), "");
  EXPECT_EQ(library.id, earlier.library.id);
  EXPECT_EQ(Version(library), "1.0");
  EXPECT_EQ(library.classes[0].interfaceId, earlier.library.classes[0].interfaceId);
  EXPECT_EQ(library.classes[0].members[0].name, "A");
}

TEST(Identity, RaisesTheMinorVersionForAdditionsAndKeepsDispatchIds) {
  const EarlierLibrary earlier = Earlier({"Sub A()"});
  PublicInterface library = Library({"Sub New1()", "Sub A()"});
  EXPECT_EQ(AssignIdentity(library, Compatibility::Binary, &earlier, kGuids), "");
  EXPECT_EQ(library.id, earlier.library.id);
  EXPECT_EQ(Version(library), "1.1");
  const PublicClass& c = library.classes[0];
  EXPECT_EQ(c.classId, earlier.library.classes[0].classId);
  EXPECT_NE(c.interfaceId, earlier.library.classes[0].interfaceId);
  ASSERT_EQ(c.members.size(), 2U);
  EXPECT_EQ(c.members[0].name, "A");
  EXPECT_EQ(c.members[0].dispatchId, earlier.library.classes[0].members[0].dispatchId);
  EXPECT_NE(c.members[1].dispatchId, c.members[0].dispatchId);
}

TEST(Identity, RaisesTheMinorVersionForANewClass) {
  const EarlierLibrary earlier = Earlier({"Sub A()"});
  PublicInterface library = Library({"Sub A()"});
  library.classes.emplace_back().name = "Line";
  EXPECT_EQ(AssignIdentity(library, Compatibility::Binary, &earlier, kGuids), "");
  EXPECT_EQ(Version(library), "1.1");
  EXPECT_EQ(library.classes[0].interfaceId, earlier.library.classes[0].interfaceId);
}

TEST(Identity, IsRefusedUnderBinaryCompatibilityWhenSomethingPublicChanged) {
  const EarlierLibrary earlier = Earlier({"Sub A()", "Event E(ByVal n As Long)"});
  PublicInterface removed = Library({"Event E(ByVal n As Long)"});
  EXPECT_EQ(AssignIdentity(removed, Compatibility::Binary, &earlier, kGuids),
            "'method a()' of class 'Order' was removed or changed");
  PublicInterface changed = Library({"Sub A()", "Event E(ByVal n As Integer)"});
  EXPECT_EQ(AssignIdentity(changed, Compatibility::Binary, &earlier, kGuids),
            "'event e(byval long)' of class 'Order' was removed or changed");
  PublicInterface gone;
  EXPECT_EQ(AssignIdentity(gone, Compatibility::Binary, &earlier, kGuids), "class 'Order' was removed");
}

TEST(Identity, KeepsTheLibraryAndRaisesTheVersionUnderProjectCompatibility) {
  const EarlierLibrary earlier = Earlier({"Sub A()"});
  PublicInterface same = Library({"Sub A()"});
  EXPECT_EQ(AssignIdentity(same, Compatibility::Project, &earlier, kGuids), "");
  EXPECT_EQ(same.id, earlier.library.id);
  EXPECT_EQ(Version(same), "1.1");
  EXPECT_EQ(same.classes[0].interfaceId, earlier.library.classes[0].interfaceId);
  PublicInterface changed = Library({"Sub B()"});
  EXPECT_EQ(AssignIdentity(changed, Compatibility::Project, &earlier, kGuids), "");
  EXPECT_EQ(Version(changed), "2.0");
  EXPECT_EQ(changed.classes[0].classId, earlier.library.classes[0].classId);
  EXPECT_NE(changed.classes[0].interfaceId, earlier.library.classes[0].interfaceId);
}

TEST(Identity, ComparesOnlyTheClassesOfAForeignLibrary) {
  EarlierLibrary earlier = Earlier({});
  earlier.membersKnown = false;
  PublicInterface library = Library({"Sub A()"});
  EXPECT_EQ(AssignIdentity(library, Compatibility::Binary, &earlier, kGuids), "");
  EXPECT_EQ(Version(library), "1.0");
}

TEST(Identity, NumbersTheHalvesOfAPropertyAlike) {
  PublicInterface library =
      Library({"Property Get P() As Long", "Property Let P(ByVal n As Long)", "Sub A()"});
  AssignIdentity(library, Compatibility::None, nullptr, kGuids);
  const auto& members = library.classes[0].members;
  EXPECT_EQ(members[0].dispatchId, 0x68030000);
  EXPECT_EQ(members[1].dispatchId, 0x68030000);
  EXPECT_EQ(members[2].dispatchId, 0x60030000);
}

}  // namespace
}  // namespace hearthmake::vb6
