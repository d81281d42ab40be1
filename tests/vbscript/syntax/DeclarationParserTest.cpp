// What DeclarationParser.cpp reads: variables, constants, procedures and classes.

#include <gtest/gtest.h>

#include "support/VbsParse.hpp"

namespace hearthmake::vbscript {
namespace {

using test::Parse;

TEST(DeclarationParser, ReadsOptionExplicitAsTheFirstStatement) {
  Symbols symbols;
  EXPECT_TRUE(ParseScript(u"' first\n\nOption Explicit\nx = 1", symbols)->hasOptionExplicit);
  EXPECT_FALSE(ParseScript(u"x = 1", symbols)->hasOptionExplicit);
  EXPECT_EQ(Parse("Option Explicit : x = 1"), "x := 1");
  EXPECT_EQ(Parse("x = 1\nOption Explicit"), "1024 (2, 1)");
  EXPECT_EQ(Parse("Option Explicit\nOption Explicit"), "1024 (2, 1)");
  EXPECT_EQ(Parse("Option Base 1"), "1002 (1, 8)");
}

// ---- Variables and constants

TEST(DeclarationParser, ReadsVariables) {
  EXPECT_EQ(Parse("Dim a, b(), c(3), d(1, 2, &H10)"), "dim a, b(), c(3), d(1, 2, 16)");
  EXPECT_EQ(Parse("Public a, b(1)"), "dim a, b(1)");
  EXPECT_EQ(Parse("Private a"), "private a");
  EXPECT_EQ(Parse("If a Then Dim b"), "if a {dim b}");
}

TEST(DeclarationParser, ReportsVariablesThatAreNone) {
  EXPECT_EQ(Parse("Dim"), "1010 (1, 4)");
  EXPECT_EQ(Parse("Dim 1"), "1010 (1, 5)");
  EXPECT_EQ(Parse("Dim a,"), "1010 (1, 7)");
  EXPECT_EQ(Parse("Dim a As Integer"), "1025 (1, 7)");
  EXPECT_EQ(Parse("Dim a(n)"), "1026 (1, 7)");
  EXPECT_EQ(Parse("Dim a(-1)"), "1026 (1, 7)");
  EXPECT_EQ(Parse("Dim a(1.5)"), "1026 (1, 7)");
  EXPECT_EQ(Parse("Dim a(1"), "1006 (1, 8)");
  EXPECT_EQ(Parse("Dim a(1 To 3)"), "1006 (1, 9)");
}

TEST(DeclarationParser, ReadsReDimAndErase) {
  EXPECT_EQ(Parse("ReDim a(n), b(1, n + 1)"), "redim a(n), b(1, (+ n 1))");
  EXPECT_EQ(Parse("ReDim Preserve o.a(n), Me.b(1)"), "redim preserve o.a(n), me.b(1)");
  EXPECT_EQ(Parse("With o : ReDim .a(1) : End With"), "with o {redim .a(1)}");
  EXPECT_EQ(Parse("ReDim a"), "1005 (1, 8)");
  EXPECT_EQ(Parse("ReDim a()"), "1023 (1, 10)");
  EXPECT_EQ(Parse("ReDim a(1)(2)"), "1025 (1, 14)");
  EXPECT_EQ(Parse("ReDim 1"), "1010 (1, 7)");
  EXPECT_EQ(Parse("Erase a, o.b"), "erase a, o.b");
  EXPECT_EQ(Parse("Erase"), "1010 (1, 6)");
}

TEST(DeclarationParser, ReadsConstants) {
  EXPECT_EQ(Parse("Const a = 1, b = \"x\", c = -2.5, d = (True), e = #1/1/2000#, f = Nothing"),
            "const a = 1, b = \"x\", c = (- 2.5#), d = [true], e = date(36526), f = nothing");
  EXPECT_EQ(Parse("Private Const a = -(+1)"), "private const a = (- [(+ 1)])");
  EXPECT_EQ(Parse("Public Const a = &HFF"), "const a = 255");
}

TEST(DeclarationParser, RefusesConstantsWithoutALiteral) {
  EXPECT_EQ(Parse("Const a = b"), "1045 (1, 11)");
  EXPECT_EQ(Parse("Const a = vbCrLf"), "1045 (1, 11)");
  EXPECT_EQ(Parse("Const a ="), "1045 (1, 10)");
  EXPECT_EQ(Parse("Const a = 1 + 2"), "1025 (1, 13)");
  EXPECT_EQ(Parse("Const a = (1"), "1006 (1, 13)");
  EXPECT_EQ(Parse("Const a 1"), "1011 (1, 9)");
  EXPECT_EQ(Parse("Const 1"), "1010 (1, 7)");
}

TEST(DeclarationParser, RefusesNamesThatAreDeclaredTwice) {
  EXPECT_EQ(Parse("Dim a : Dim A"), "1041 (1, 13)");
  EXPECT_EQ(Parse("Dim a, a"), "1041 (1, 8)");
  EXPECT_EQ(Parse("Dim a : Const a = 1"), "1041 (1, 15)");
  EXPECT_EQ(Parse("Private a : Public a"), "1041 (1, 20)");
  EXPECT_EQ(Parse("If a Then : Dim b : End If : Dim b"), "1041 (1, 34)");
  EXPECT_EQ(Parse("Sub s(a, A) : End Sub"), "1041 (1, 10)");
  EXPECT_EQ(Parse("Sub s(a) : Dim a : End Sub"), "1041 (1, 16)");
  EXPECT_EQ(Parse("Sub s : Dim a : Const a = 1 : End Sub"), "1041 (1, 23)");
  EXPECT_EQ(Parse("Function f : Dim f : End Function"), "1041 (1, 18)");
  EXPECT_EQ(Parse("Function f(f) : End Function"), "1041 (1, 12)");
  EXPECT_EQ(Parse("Class c : End Class : Class C : End Class"), "1041 (1, 29)");
  EXPECT_EQ(Parse("Dim f : Sub f : End Sub"), "1041 (1, 13)");
  EXPECT_EQ(Parse("Sub f : End Sub : Dim f"), "1041 (1, 23)");
}

TEST(DeclarationParser, LetsScopesAndProceduresReuseNames) {
  EXPECT_EQ(Parse("Dim a : Sub s : Dim a : End Sub : Sub t : Dim a : End Sub"),
            "dim a; sub s() {dim a}; sub t() {dim a}");
  EXPECT_EQ(Parse("Sub s : Dim s : End Sub"), "sub s() {dim s}");
  EXPECT_EQ(Parse("Sub s : End Sub : Function S : End Function"), "sub s() {}; function s() {}");
}

// ---- Procedures

TEST(DeclarationParser, ReadsProcedures) {
  EXPECT_EQ(Parse("Sub s\nx = 1\nEnd Sub"), "sub s() {x := 1}");
  EXPECT_EQ(Parse("Sub s()\nEnd Sub"), "sub s() {}");
  EXPECT_EQ(Parse("Function f(a, ByVal b, ByRef c, d())\nf = a\nEnd Function"),
            "function f(a, byval b, c, d()) {f := a}");
  EXPECT_EQ(Parse("Private Sub s : End Sub : Public Function f : End Function"),
            "private sub s() {}; function f() {}");
  EXPECT_EQ(Parse("Sub s(a) f a End Sub"), "sub s(a) {call f(a)}");
}

TEST(DeclarationParser, ListsProceduresAndClasses) {
  Symbols symbols;
  const auto script =
      ParseScript(u"x = 1\nSub s : End Sub\nClass c : End Class\nFunction f : End Function", symbols);
  ASSERT_EQ(script->procedures.size(), 2u);
  EXPECT_EQ(symbols.Utf8(script->procedures[1]->name), "f");
  ASSERT_EQ(script->classes.size(), 1u);
  EXPECT_EQ(script->body.size(), 4u);
}

TEST(DeclarationParser, ReportsProceduresThatAreNotWhole) {
  EXPECT_EQ(Parse("Sub"), "1010 (1, 4)");
  EXPECT_EQ(Parse("Sub s(1)"), "1010 (1, 7)");
  EXPECT_EQ(Parse("Sub s(a b)"), "1006 (1, 9)");
  EXPECT_EQ(Parse("Sub s(a(1))"), "1006 (1, 9)");
  EXPECT_EQ(Parse("Sub s(a"), "1006 (1, 8)");
  EXPECT_EQ(Parse("Sub s\n"), "1014 (2, 1)");
  EXPECT_EQ(Parse("Sub s\nEnd Function"), "1016 (2, 5)");
  EXPECT_EQ(Parse("Function f\nEnd Sub"), "1015 (2, 5)");
  EXPECT_EQ(Parse("Class c\nProperty Get p\nEnd Sub"), "1050 (3, 5)");
  EXPECT_EQ(Parse("End Sub"), "1024 (1, 1)");
}

TEST(DeclarationParser, RefusesProceduresAndClassesInsideOfOthers) {
  EXPECT_EQ(Parse("If a Then\nSub s\nEnd Sub\nEnd If"), "1002 (2, 1)");
  EXPECT_EQ(Parse("If a Then Sub s"), "1002 (1, 11)");
  EXPECT_EQ(Parse("Sub s\nFunction f\nEnd Function\nEnd Sub"), "1002 (2, 1)");
  EXPECT_EQ(Parse("Sub s\nClass c\nEnd Class\nEnd Sub"), "1002 (2, 1)");
  EXPECT_EQ(Parse("Sub s\nPrivate x\nEnd Sub"), "1002 (2, 1)");
  EXPECT_EQ(Parse("Class c\nClass d\nEnd Class\nEnd Class"), "1002 (2, 1)");
}

// ---- Classes

TEST(DeclarationParser, ReadsClasses) {
  EXPECT_EQ(
      Parse(
          "Class c\nDim a, b(2)\nPrivate d, e()\nPublic f\nConst g = 1\n"
          "Sub Class_Initialize : a = 1 : End Sub\nPrivate Function h(x) : h = x : End Function\nEnd Class"),
      "class c {public a; public b(2); private d; private e(); public f; const g = 1; "
      "sub Class_Initialize() {a := 1}; private function h(x) {h := x}}");
  EXPECT_EQ(Parse("Class c : End Class"), "class c {}");
}

TEST(DeclarationParser, ReadsProperties) {
  EXPECT_EQ(
      Parse("Class c\nPublic Default Property Get p(i)\nEnd Property\nProperty Let p(i, v)\nEnd Property\n"
            "Private Property Set P(i, ByVal v)\nEnd Property\nEnd Class"),
      "class c {default get p(i) {}; let p(i, v) {}; private set p(i, byval v) {}}");
  EXPECT_EQ(Parse("Class c : Public Default Function f : End Function : End Class"),
            "class c {default function f() {}}");
  EXPECT_EQ(Parse("Class c : Public Default, Property : End Class"),
            "class c {public Default; public Property}");
}

TEST(DeclarationParser, ReportsClassesThatAreNotWhole) {
  EXPECT_EQ(Parse("Class"), "1010 (1, 6)");
  EXPECT_EQ(Parse("Class c\n"), "1014 (2, 1)");
  EXPECT_EQ(Parse("Class c\nEnd Sub"), "1047 (2, 5)");
  EXPECT_EQ(Parse("Class c\nx = 1\nEnd Class"), "1002 (2, 1)");
  EXPECT_EQ(Parse("Class c\nProperty p\nEnd Class"), "1049 (2, 10)");
  EXPECT_EQ(Parse("Class c\nPublic 1\nEnd Class"), "1010 (2, 8)");
}

TEST(DeclarationParser, ReservesPropertiesForClasses) {
  EXPECT_EQ(Parse("Property Get p : End Property"), "1048 (1, 1)");
  EXPECT_EQ(Parse("Private Property Let p(v) : End Property"), "1048 (1, 9)");
  EXPECT_EQ(Parse("Public Default Sub s : End Sub"), "1048 (1, 8)");
}

TEST(DeclarationParser, RefusesMembersThatAreDeclaredTwice) {
  EXPECT_EQ(Parse("Class c\nDim a\nSub a : End Sub\nEnd Class"), "1041 (3, 5)");
  EXPECT_EQ(Parse("Class c\nSub a : End Sub\nFunction a : End Function\nEnd Class"), "1041 (3, 10)");
  EXPECT_EQ(Parse("Class c\nDim a, a\nEnd Class"), "1041 (2, 8)");
  EXPECT_EQ(Parse("Class c\nDim a\nProperty Get a : End Property\nEnd Class"), "1041 (3, 14)");
  EXPECT_EQ(Parse("Class c\nProperty Get a : End Property\nProperty Get a : End Property\nEnd Class"),
            "1041 (3, 14)");
}

TEST(DeclarationParser, WantsPropertiesWithConsistentArguments) {
  EXPECT_EQ(Parse("Class c\nProperty Get p : End Property\nProperty Let p(i, v) : End Property\nEnd Class"),
            "1051 (3, 14)");
  EXPECT_EQ(
      Parse("Class c\nProperty Let p(v) : End Property\nProperty Set p(i, v) : End Property\nEnd Class"),
      "1051 (3, 14)");
  EXPECT_EQ(Parse("Class c\nProperty Let p : End Property\nEnd Class"), "1054 (2, 14)");
  EXPECT_EQ(Parse("Class c\nProperty Set p() : End Property\nEnd Class"), "1054 (2, 14)");
}

TEST(DeclarationParser, WantsClassEventsWithoutArguments) {
  EXPECT_EQ(Parse("Class c\nSub Class_Initialize(a) : End Sub\nEnd Class"), "1053 (2, 5)");
  EXPECT_EQ(Parse("Class c\nSub class_terminate(a) : End Sub\nEnd Class"), "1053 (2, 5)");
}

TEST(DeclarationParser, ChecksWhatIsTheDefault) {
  const std::string first = "Class c\nPublic Default Sub a : End Sub\n";
  EXPECT_EQ(Parse(first + "Public Default Sub b : End Sub\nEnd Class"), "1052 (3, 8)");
  EXPECT_EQ(Parse("Class c\nPublic Default x\nEnd Class"), "1056 (2, 16)");
  EXPECT_EQ(Parse("Class c\nPrivate Default Sub a : End Sub\nEnd Class"), "1057 (2, 9)");
  EXPECT_EQ(Parse("Class c\nDefault Sub a : End Sub\nEnd Class"), "1057 (2, 1)");
  EXPECT_EQ(Parse("Class c\nPublic Default Property Let p(v) : End Property\nEnd Class"), "1058 (2, 29)");
}

}  // namespace
}  // namespace hearthmake::vbscript
