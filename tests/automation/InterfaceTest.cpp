#include "automation/Interface.hpp"

#include <gtest/gtest.h>

#include "support/ErrorExpect.hpp"

namespace hearthmake::automation {
namespace {

using support::ErrorOf;
using support::ExpectError;

class Bare final : public Object {
 public:
  const Interface& Declaration() const override {
    static const Interface kInterface("Bare", "_Bare", "", "");
    return kInterface;
  }
};

Member MakeMember(const std::string& name, MemberKind kind, std::size_t parameters = 0) {
  Member member;
  member.name = name;
  member.kind = kind;
  member.id = 1;  // no reserved one: Add gives the next
  member.parameters.resize(parameters);
  member.invoke = [](Object&, std::span<Variant> arguments) {
    std::string text;
    for (const Variant& argument : arguments) text += (argument.IsMissing() ? "-" : ToText(argument)) + ";";
    return Variant::FromText(text);
  };
  return member;
}

struct Fixture {
  Interface interface { "Bare", "_Bare", "{IID}", "{CLSID}" };
  Ref<Bare> object = Make<Bare>();

  std::string Invoke(const char* name, InvokeKind kind, std::vector<Variant> arguments = {}) {
    return ToText(interface.Invoke(*object, interface.Find(name).value(), kind, arguments));
  }
};

TEST(Interface, KnowsItsNames) {
  const Fixture f;
  EXPECT_EQ(f.interface.Name(), "Bare");
  EXPECT_EQ(f.interface.InterfaceName(), "_Bare");
  EXPECT_EQ(f.interface.InterfaceId(), "{IID}");
  EXPECT_EQ(f.interface.ClassId(), "{CLSID}");
}

TEST(Interface, NumbersItsMembersInOrder) {
  Fixture f;
  f.interface.Add(MakeMember("A", MemberKind::Method));
  f.interface.Add(MakeMember("B", MemberKind::Get));
  EXPECT_EQ(f.interface.Find("A"), 1);
  EXPECT_EQ(f.interface.Find("b"), 2);
  EXPECT_EQ(f.interface.Members().size(), 2U);
}

TEST(Interface, ReadAndWriteOfAPropertyShareOneId) {
  Fixture f;
  f.interface.Add(MakeMember("Name", MemberKind::Let));
  f.interface.Add(MakeMember("name", MemberKind::Get));
  f.interface.Add(MakeMember("Other", MemberKind::Get));
  EXPECT_EQ(f.interface.Members()[0].id, f.interface.Members()[1].id);
  EXPECT_EQ(f.interface.Find("Other"), 2);
}

TEST(Interface, ReservedIdsTakeNoNumber) {
  Fixture f;
  Member item = MakeMember("item", MemberKind::Get, 1);
  item.id = kDefaultMember;
  f.interface.Add(std::move(item));
  Member newEnum = MakeMember("NewEnum", MemberKind::Get);
  newEnum.id = kNewEnumMember;
  f.interface.Add(std::move(newEnum));
  f.interface.Add(MakeMember("Count", MemberKind::Get));
  EXPECT_EQ(f.interface.Find("ITEM"), kDefaultMember);
  EXPECT_EQ(f.interface.Find("NewEnum"), kNewEnumMember);
  EXPECT_EQ(f.interface.Find("Count"), 1);
}

TEST(Interface, AnUnknownNameHasNoId) { EXPECT_FALSE(Fixture().interface.Find("Nothing")); }

TEST(Interface, FindsTheEntryOfEachKind) {
  Fixture f;
  f.interface.Add(MakeMember("P", MemberKind::Get));
  f.interface.Add(MakeMember("P", MemberKind::Let));
  f.interface.Add(MakeMember("M", MemberKind::Method));
  EXPECT_EQ(f.interface.Find(1, InvokeKind::Get)->kind, MemberKind::Get);
  EXPECT_EQ(f.interface.Find(1, InvokeKind::Call)->kind, MemberKind::Get);
  EXPECT_EQ(f.interface.Find(1, InvokeKind::Let)->kind, MemberKind::Let);
  EXPECT_EQ(f.interface.Find(2, InvokeKind::Get)->kind, MemberKind::Method);
  EXPECT_EQ(f.interface.Find(2, InvokeKind::Let), nullptr);
  EXPECT_EQ(f.interface.Find(99, InvokeKind::Get), nullptr);
}

TEST(Interface, ASetFallsBackToTheLet) {
  Fixture f;
  f.interface.Add(MakeMember("P", MemberKind::Let));
  f.interface.Add(MakeMember("Q", MemberKind::Let));
  f.interface.Add(MakeMember("Q", MemberKind::Set));
  EXPECT_EQ(f.interface.Find(1, InvokeKind::Set)->kind, MemberKind::Let);
  EXPECT_EQ(f.interface.Find(2, InvokeKind::Set)->kind, MemberKind::Set);
  EXPECT_EQ(f.interface.Find(2, InvokeKind::Let)->kind, MemberKind::Let);
}

TEST(Interface, CountsTheArgumentsOfItsMembers) {
  Member let = MakeMember("P", MemberKind::Let, 1);
  EXPECT_EQ(let.ArgumentCount(), 2U) << "the value is one";
  Member method = MakeMember("M", MemberKind::Method, 2);
  method.parameters[1].isOptional = true;
  EXPECT_EQ(method.ArgumentCount(), 2U);
  EXPECT_EQ(method.RequiredArguments(), 1U);
}

TEST(Interface, PassesTheArgumentsOn) {
  Fixture f;
  f.interface.Add(MakeMember("M", MemberKind::Method, 2));
  EXPECT_EQ(f.Invoke("M", InvokeKind::Call, {Variant::FromLong(1), Variant::FromText("b")}), "1;b;");
}

TEST(Interface, AnArgumentLeftOutOfTheEndIsMissing) {
  Fixture f;
  Member member = MakeMember("M", MemberKind::Method, 2);
  member.parameters[1].isOptional = true;
  f.interface.Add(std::move(member));
  EXPECT_EQ(f.Invoke("M", InvokeKind::Call, {Variant::FromLong(1)}), "1;-;");
}

TEST(Interface, TooFewArgumentsNameTheMember) {
  Fixture f;
  f.interface.Add(MakeMember("Load", MemberKind::Method, 1));
  f.interface.Add(MakeMember("P", MemberKind::Let));
  ExpectError([&] { f.Invoke("Load", InvokeKind::Call); }, 449, "Bare", "Argument not optional: Load");
  EXPECT_EQ(ErrorOf([&] { f.Invoke("P", InvokeKind::Let); }).Number(), 449);
}

TEST(Interface, TooManyArgumentsNameTheMember) {
  Fixture f;
  f.interface.Add(MakeMember("Load", MemberKind::Method, 0));
  ExpectError([&] { f.Invoke("Load", InvokeKind::Call, {Variant::FromLong(1)}); }, 450, "Bare",
              "Wrong number of arguments or invalid property assignment: Load");
}

TEST(Interface, AnIdThatNobodyHasIsRefused) {
  const Fixture f;
  EXPECT_EQ(ErrorOf([&] { f.interface.Invoke(*f.object, 17, InvokeKind::Call, {}); }).Number(), 438);
}

}  // namespace
}  // namespace hearthmake::automation
