#include "vb6/MsftWriter.hpp"

#include <gtest/gtest.h>

#include "support/Vb6Sandbox.hpp"
#include "vb6/Declarations.hpp"
#include "vb6/Identity.hpp"

namespace hearthmake::vb6 {
namespace {

PublicInterface Orders() {
  PublicInterface library;
  library.name = "Orders";
  library.help = "Café orders";
  PublicClass& order = library.classes.emplace_back();
  order.name = "Order";
  order.members = PublicMembers("Function Sum(ByVal a As Long, b() As String, ParamArray c()) As Currency");
  order.events = PublicMembers("Event Changed(ByVal strWhat As String)");
  PublicClass& line = library.classes.emplace_back();
  line.name = "OrderLine";
  line.creatable = false;
  AssignIdentity(library, Compatibility::None, nullptr, GuidSource("x"));
  library.majorVersion = 3;
  library.minorVersion = 11;
  return library;
}

TEST(MsftWriter, IsReadBackAsItWasGiven) {
  tests::Vb6Sandbox sandbox;
  const PublicInterface library = Orders();
  sandbox.Files().Replace("C:\\x.tlb", MsftWriter::Write(library));
  const platform::TypeLibInfo info = sandbox.Library("C:\\x.tlb");
  EXPECT_EQ(info.guid, library.id.Text());
  EXPECT_EQ(info.majorVersion, 3);
  EXPECT_EQ(info.minorVersion, 11);
  EXPECT_EQ(info.name, "Orders");
  EXPECT_EQ(info.helpString, "Café orders");

  const auto types = sandbox.Types("C:\\x.tlb");
  std::vector<std::string> names;
  for (const auto& type : types) names.push_back(type.name);
  ASSERT_EQ(names, (std::vector<std::string>{"_Order", "__Order", "Order", "_OrderLine", "OrderLine"}));
  EXPECT_EQ(types[0].kind, platform::TypeKind::Dispatch);
  EXPECT_EQ(types[0].guid, library.classes[0].interfaceId.Text());
  EXPECT_EQ(types[0].flags & 0x50, 0x50);  // hidden and dual
  EXPECT_EQ(types[1].guid, library.classes[0].eventsId.Text());
  EXPECT_EQ(types[2].kind, platform::TypeKind::CoClass);
  EXPECT_EQ(types[2].guid, library.classes[0].classId.Text());
  EXPECT_EQ(types[2].flags & 2, 2);  // can be created
  EXPECT_EQ(types[4].flags & 2, 0);
}

TEST(MsftWriter, MarksALibraryOfControls) {
  tests::Vb6Sandbox sandbox;
  PublicInterface library = Orders();
  library.controls = true;
  sandbox.Files().Replace("C:\\x.tlb", MsftWriter::Write(library));
  EXPECT_EQ(sandbox.Library("C:\\x.tlb").flags & 2, 2);
}

TEST(MsftWriter, HashesNamesAsWindowsDoes) {
  // Values of LHashValOfNameSys.
  EXPECT_EQ(MsftWriter::NameHash("OdCommon"), 0xE480);
  EXPECT_EQ(MsftWriter::NameHash("strText"), 0x13E8);
  EXPECT_EQ(MsftWriter::NameHash("_Money"), 0xEBB8);
  EXPECT_EQ(MsftWriter::NameHash("NewEnum"), 0x6ACC);
  EXPECT_EQ(MsftWriter::NameHash("ORDER"), MsftWriter::NameHash("order"));
  EXPECT_EQ(MsftWriter::NameHash("Stra\xDF\x45"), MsftWriter::NameHash("stra\xDF\x65"));
  EXPECT_EQ(MsftWriter::NameHash("\xE9\xF1\xFC"), MsftWriter::NameHash("ENU"));
}

}  // namespace
}  // namespace hearthmake::vb6
