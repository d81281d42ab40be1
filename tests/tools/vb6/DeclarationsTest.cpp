#include "vb6/Declarations.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vb6 {
namespace {

std::vector<std::string> Signatures(std::string_view statement) {
  std::vector<std::string> signatures;
  for (const Member& member : PublicMembers(statement)) signatures.push_back(member.signature);
  return signatures;
}

using List = std::vector<std::string>;

TEST(Declarations, TellProcedureHeadsFromOtherStatements) {
  EXPECT_EQ(OpenedProcedure("Private Static Function A%(x)"), ProcedureKind::Function);
  EXPECT_EQ(OpenedProcedure("property set B(o)"), ProcedureKind::Property);
  EXPECT_EQ(OpenedProcedure("Friend Sub C()"), ProcedureKind::Sub);
  EXPECT_FALSE(OpenedProcedure("Exit Sub"));
  EXPECT_FALSE(OpenedProcedure("Public Declare Function D Lib \"x\" ()"));
  EXPECT_FALSE(OpenedProcedure("Property As String"));
  EXPECT_EQ(ClosedProcedure("End  Property"), ProcedureKind::Property);
  EXPECT_FALSE(ClosedProcedure("End If"));
  EXPECT_FALSE(ClosedProcedure("End"));
}

TEST(Declarations, SpellParametersInOneWay) {
  EXPECT_EQ(Signatures(
                "Public Sub A(ByRef x() As Long, y&, Optional ByVal z As String = \"a,b)\", ParamArray r())"),
            (List{"method a(byref long(), byref long, optional byval string, paramarray byref variant())"}));
  EXPECT_EQ(Signatures("Function B(o As Lib.Order) As String()"),
            (List{"method b(byref lib.order) as string()"}));
  EXPECT_EQ(Signatures("Function C$(Optional n = (1 + 2))"),
            (List{"method c(optional byref variant) as string"}));
  EXPECT_EQ(Signatures("Property Let D(ByVal i As Long, ByVal v)"),
            (List{"let d(byval long, byval variant)"}));
}

TEST(Declarations, MakeTwoHalvesOfAPublicVariable) {
  EXPECT_EQ(Signatures("Public a As Long, WithEvents b As Object"),
            (List{"get a() as long", "let a(byval long)", "get b() as object", "set b(byval object)"}));
}

TEST(Declarations, PassOverWhatIsNotPublicOrNoMember) {
  for (const char* statement : {"Private Sub A()", "Friend Function B()", "Dim x As Long", "Public Enum E",
                                "Public Type T", "Public Const C = 1", "Public Declare Sub S Lib \"x\" ()",
                                "Implements IStore", "Option Explicit", "Public", "Public ("}) {
    EXPECT_TRUE(Signatures(statement).empty()) << statement;
  }
}

}  // namespace
}  // namespace hearthmake::vb6
