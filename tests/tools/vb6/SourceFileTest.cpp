#include "vb6/SourceFile.hpp"

#include <gtest/gtest.h>

#include "support/Vb6Sandbox.hpp"
#include "vb6/CompileError.hpp"

namespace hearthmake::vb6 {
namespace {

std::string Class(const std::string& body, const std::string& exposed = "True") {
  return tests::CrLf(
      "VERSION 1.0 CLASS\nBEGIN\n  MultiUse = -1  'True\nEND\nAttribute VB_Name = \"Order\"\n"
      "Attribute VB_Creatable = True\nAttribute VB_Exposed = " +
      exposed + "\nOption Explicit\n" + body);
}

// "line: text" of what is wrong.
std::string ProblemOf(const std::string& bytes, ComponentKind kind = ComponentKind::Class,
                      const std::string& name = "Order") {
  try {
    ReadSource(bytes, kind, name);
  } catch (const CompileError& error) {
    return std::to_string(error.Line()) + ": " + error.Text();
  }
  return "";
}

TEST(SourceFile, FindsThePublicMembersOfAnExposedClass) {
  const auto facts = ReadSource(Class("Public Customer As String\n"
                                      "Private m_x As Long\n"
                                      "Public Event Changed(ByVal n As Long)\n"
                                      "Public Function Sum(ByVal a As Long, b$, Optional c) As Currency\n"
                                      "Attribute Sum.VB_Description = \"Adds: all\"\n"
                                      "End Function\n"
                                      "Property Get Lines() As Collection\nEnd Property\n"
                                      "Friend Sub Hide()\nEnd Sub\n"
                                      "Private Sub Class_Initialize()\nEnd Sub\n"),
                                ComponentKind::Class, "Order");
  ASSERT_TRUE(facts.exported);
  EXPECT_EQ(facts.exported->name, "Order");
  std::vector<std::string> signatures;
  for (const Member& member : facts.exported->members) signatures.push_back(member.signature);
  EXPECT_EQ(signatures, (std::vector<std::string>{
                            "get customer() as string", "let customer(byval string)",
                            "method sum(byval long, byref string, optional byref variant) as currency",
                            "get lines() as collection"}));
  EXPECT_EQ(facts.exported->members[2].help, "Adds: all");
  ASSERT_EQ(facts.exported->events.size(), 1U);
  EXPECT_EQ(facts.exported->events[0].signature, "event changed(byval long)");
}

TEST(SourceFile, TakesDispatchIdsAndFlagsFromAttributes) {
  const auto facts = ReadSource(Class("Public Property Get NewEnum() As IUnknown\n"
                                      "Attribute NewEnum.VB_UserMemId = -4\n"
                                      "Attribute NewEnum.VB_MemberFlags = \"40\"\n"
                                      "End Property\n"),
                                ComponentKind::Class, "");
  ASSERT_EQ(facts.exported->members.size(), 1U);
  EXPECT_EQ(facts.exported->members[0].dispatchId, -4);
  EXPECT_TRUE(facts.exported->members[0].hidden);
}

TEST(SourceFile, KeepsAPrivateClassToItself) {
  EXPECT_FALSE(ReadSource(Class("", "False"), ComponentKind::Class, "Order").exported);
}

TEST(SourceFile, AcceptsWhatOnlyLooksLikeProcedures) {
  EXPECT_EQ(ProblemOf(Class("Private Declare Sub Sleep Lib \"kernel32\" (ByVal n As Long)\n"
                            "' Sub Commented()\n"
                            "Rem Sub Remarked()\n"
                            "Public Sub Go(): Exit Sub: End Sub\n"
                            "Sub Long_( _\n  ByVal a As Long, _\n  ByVal b As Long)\n"
                            "  x = \"End Sub ' \"\"quoted\"\"\"\n"
                            "End Sub ' done\n"
                            "#If Debugging Then\nSub Two(a)\n#Else\nSub Two()\n#End If\nEnd Sub\n")),
            "");
}

TEST(SourceFile, NamesTheLineOfWhatIsWrong) {
  EXPECT_EQ(ProblemOf("Option Explicit\r\n"), "1: Expected: VERSION 1.0 CLASS");
  EXPECT_EQ(ProblemOf("VERSION 1.0 CLASS\r\nBEGIN\r\n"), "2: Begin without End");
  EXPECT_EQ(ProblemOf(Class("Sub A()\n  x = \"open\nEnd Sub\n")),
            "10: Syntax error: the text has no closing quote");
  EXPECT_EQ(ProblemOf(Class("Sub A()\nSub B()\nEnd Sub\n")), "10: Expected End Sub");
  EXPECT_EQ(ProblemOf(Class("Function A()\nEnd Sub\n")), "10: Expected End Function");
  EXPECT_EQ(ProblemOf(Class("Property Get A()\n")), "9: Expected End Property");
  EXPECT_EQ(ProblemOf(Class("End Sub\n")), "9: End Sub without Sub");
  EXPECT_EQ(ProblemOf(Class(""), ComponentKind::Class, "Other"),
            "5: Name conflict: the file holds 'Order', the project names it 'Other'");
}

TEST(SourceFile, BalancesTheDescriptionOfAForm) {
  const std::string form =
      "VERSION 5.00\r\nObject = \"{1}#1.0#0\"; \"A.ocx\"\r\nBegin VB.Form F \r\n   BeginProperty Font \r\n"
      "   EndProperty\r\n   Begin VB.Menu M \r\n   End\r\n";
  EXPECT_EQ(ProblemOf(form + "End\r\nAttribute VB_Name = \"F\"\r\n", ComponentKind::Form, ""), "");
  EXPECT_EQ(ProblemOf(form, ComponentKind::Form, ""), "3: Begin without End");
  EXPECT_EQ(ProblemOf("VERSION 5.00\r\nEnd\r\n", ComponentKind::Form, ""), "2: End without Begin");
}

TEST(SourceFile, DoesNotJudgeStatements) {
  EXPECT_EQ(ProblemOf(Class("Sub A()\n  this is no Basic at all (\nEnd Sub\n")), "");
}

TEST(SourceFile, SurvivesAnyBytes) {
  for (int seed = 0; seed < 2000; ++seed) {
    std::string bytes =
        Class("Public Function Sum(ByVal a As Long, b$, Optional c = \"x\") As Currency\nEnd Function\n");
    unsigned state = static_cast<unsigned>(seed) * 2654435761U + 1;
    for (int change = 0; change < 6; ++change) {
      state = state * 1664525U + 1013904223U;
      bytes[(state >> 8) % bytes.size()] = static_cast<char>(state >> 24);
    }
    try {
      ReadSource(bytes, ComponentKind::Class, "Order");
    } catch (const CompileError& error) {
      EXPECT_FALSE(error.Text().empty());
    }
  }
}

}  // namespace
}  // namespace hearthmake::vb6
