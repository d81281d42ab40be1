#include "vb6/InterfaceListing.hpp"

#include <gtest/gtest.h>

#include "vb6/Declarations.hpp"

namespace hearthmake::vb6 {
namespace {

// A library with one class, Order, that has a method and an event.
PublicInterface Library() {
  PublicInterface library;
  library.name = "Lib";
  PublicClass& c = library.classes.emplace_back();
  c.name = "Order";
  c.members = PublicMembers("Sub A(x As Long)");
  c.events = PublicMembers("Event E()");
  AssignIdentity(library, Compatibility::None, nullptr, GuidSource("x"));
  return library;
}

TEST(InterfaceListing, ComesBackFromTheEndOfAnImage) {
  const PublicInterface library = Library();
  const auto read = ReadListing(WithListing("image", library));
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->membersKnown);
  EXPECT_EQ(read->library.id, library.id);
  ASSERT_EQ(read->library.classes.size(), 1U);
  const PublicClass& c = read->library.classes[0];
  EXPECT_EQ(c.name, "Order");
  EXPECT_EQ(c.classId, library.classes[0].classId);
  ASSERT_EQ(c.members.size(), 1U);
  EXPECT_EQ(c.members[0].signature, "method a(byref long)");
  EXPECT_EQ(c.members[0].dispatchId, 0x60030000);
  ASSERT_EQ(c.events.size(), 1U);
  EXPECT_EQ(c.events[0].signature, "event e()");
}

TEST(InterfaceListing, IsNotThereInOtherFiles) {
  const std::string bytes = WithListing("", Library());
  EXPECT_FALSE(ReadListing(""));
  EXPECT_FALSE(ReadListing("MZ"));
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_FALSE(ReadListing(bytes.substr(0, length))) << length;
    if (length > 0) {
      EXPECT_FALSE(ReadListing(bytes.substr(length, bytes.size() - length))) << length;
    }
  }
}

}  // namespace
}  // namespace hearthmake::vb6
