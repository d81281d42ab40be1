#include "vbscript/syntax/Parser.hpp"

#include <gtest/gtest.h>

#include "support/VbsParse.hpp"

namespace hearthmake::vbscript {
namespace {

using test::Parse;
using test::ParseOne;

// ---- Expressions

TEST(Parser, OrdersOperatorsByPrecedence) {
  EXPECT_EQ(
      ParseOne("a Imp b Eqv c Xor d Or e And Not f = g & h + i Mod j \\ k * -l ^ m"),
      "(imp a (eqv b (xor c (or d (and e (not (= f (& g (+ h (mod i (\\ j (* k (- (^ l m))))))))))))))");
  EXPECT_EQ(ParseOne("a ^ b * c \\ d Mod e + f & g = h And i Or j Xor k Eqv l Imp m"),
            "(imp (eqv (xor (or (and (= (& (+ (mod (\\ (* (^ a b) c) d) e) f) g) h) i) j) k) l) m)");
}

TEST(Parser, LeansOperatorsOfOnePrecedenceToTheLeft) {
  EXPECT_EQ(ParseOne("a - b - c + d"), "(+ (- (- a b) c) d)");
  EXPECT_EQ(ParseOne("a / b * c"), "(* (/ a b) c)");
  EXPECT_EQ(ParseOne("a ^ b ^ c"), "(^ (^ a b) c)");
  EXPECT_EQ(ParseOne("a = b = c <> d"), "(<> (= (= a b) c) d)");
}

TEST(Parser, PutsSignsBelowPowersAndAboveProducts) {
  EXPECT_EQ(ParseOne("-2^2"), "(- (^ 2 2))");
  EXPECT_EQ(ParseOne("2^-1"), "(^ 2 (- 1))");
  EXPECT_EQ(ParseOne("2^-1^3"), "(^ (^ 2 (- 1)) 3)");
  EXPECT_EQ(ParseOne("-a * b"), "(* (- a) b)");
  EXPECT_EQ(ParseOne("a - - + b"), "(- a (- (+ b)))");
  EXPECT_EQ(ParseOne("-32768"), "(- 32768&)");
}

TEST(Parser, PutsNotBelowComparisons) {
  EXPECT_EQ(ParseOne("Not a = b And Not Not c"), "(and (not (= a b)) (not (not c)))");
  EXPECT_EQ(ParseOne("a = Not b"), "(= a (not b))");
}

TEST(Parser, ReadsComparisonsInBothSpellings) {
  EXPECT_EQ(ParseOne("a <= b"), "(<= a b)");
  EXPECT_EQ(ParseOne("a =< b"), "(<= a b)");
  EXPECT_EQ(ParseOne("a >= b"), "(>= a b)");
  EXPECT_EQ(ParseOne("a => b"), "(>= a b)");
  EXPECT_EQ(ParseOne("a <> b"), "(<> a b)");
  EXPECT_EQ(ParseOne("a >< b"), "(<> a b)");
  EXPECT_EQ(ParseOne("a < b > c"), "(> (< a b) c)");
  EXPECT_EQ(ParseOne("a Is Nothing"), "(is a nothing)");
  EXPECT_EQ(ParseOne("a < = b"), "1002 (1, 5)");
}

TEST(Parser, ReadsLiteralWords) {
  EXPECT_EQ(ParseOne("f(True, FALSE, Empty, Null, Nothing)"), "f(true, false, empty, null, nothing)");
}

TEST(Parser, ReadsReferences) {
  EXPECT_EQ(ParseOne("a(1)(2).b(3).c"), "a(1)(2).b(3).c");
  EXPECT_EQ(ParseOne("a.b"), "a.b");
  EXPECT_EQ(ParseOne("a .b"), "a.b");
  EXPECT_EQ(ParseOne("a. b"), "a.b");
  EXPECT_EQ(ParseOne("f()"), "f()");
  EXPECT_EQ(ParseOne("Me.x + Me"), "(+ me.x me)");
  EXPECT_EQ(ParseOne("(New Thing).x(1)"), "[new Thing].x(1)");
  EXPECT_EQ(ParseOne("New Thing"), "new Thing");
}

TEST(Parser, LeavesArgumentsOut) {
  EXPECT_EQ(ParseOne("f(, a)"), "f(, a)");
  EXPECT_EQ(ParseOne("f(a,, b)"), "f(a, , b)");
  EXPECT_EQ(ParseOne("f(a,)"), "f(a, )");
  EXPECT_EQ(ParseOne("f(,)"), "f(, )");
}

TEST(Parser, KeepsParentheses) {
  EXPECT_EQ(ParseOne("f((a), ((b)))"), "f([a], [[b]])");
  EXPECT_EQ(ParseOne("(a + b) * c"), "(* [(+ a b)] c)");
}

TEST(Parser, ReportsExpressionsThatAreNotWhole) {
  EXPECT_EQ(ParseOne(""), "1023 (1, 1)");
  EXPECT_EQ(ParseOne(")"), "1023 (1, 1)");
  EXPECT_EQ(ParseOne("()"), "1023 (1, 2)");
  EXPECT_EQ(ParseOne("a +"), "1002 (1, 4)");
  EXPECT_EQ(ParseOne("a & & b"), "1002 (1, 5)");
  EXPECT_EQ(ParseOne("Not"), "1002 (1, 4)");
  EXPECT_EQ(ParseOne("(a"), "1006 (1, 3)");
  EXPECT_EQ(ParseOne("f(a b)"), "1006 (1, 5)");
  EXPECT_EQ(ParseOne("a."), "1010 (1, 3)");
  EXPECT_EQ(ParseOne("New"), "1010 (1, 4)");
  EXPECT_EQ(ParseOne("a b"), "1025 (1, 3)");
  EXPECT_EQ(ParseOne("a : b"), "1025 (1, 3)");
  EXPECT_EQ(ParseOne("a\r\n"), "a");
  EXPECT_EQ(ParseOne("a ' so it is"), "a");
}

// ---- Assignments and calls

TEST(Parser, ReadsAssignments) {
  EXPECT_EQ(Parse("x = 1"), "x := 1");
  EXPECT_EQ(Parse("a(1) = b"), "a(1) := b");
  EXPECT_EQ(Parse("a (1, 2) = b"), "a(1, 2) := b");
  EXPECT_EQ(Parse("a() = b"), "a() := b");
  EXPECT_EQ(Parse("o.p(1).q = x = y"), "o.p(1).q := (= x y)");
  EXPECT_EQ(Parse("Set x = New Thing"), "set x := new Thing");
  EXPECT_EQ(Parse("Set o.p(1) = Nothing"), "set o.p(1) := nothing");
  EXPECT_EQ(Parse("Me.x = 1"), "me.x := 1");
}

TEST(Parser, ReadsCallsWithoutParentheses) {
  EXPECT_EQ(Parse("f"), "call f");
  EXPECT_EQ(Parse("f x, y"), "call f(x, y)");
  EXPECT_EQ(Parse("f x,, y"), "call f(x, , y)");
  EXPECT_EQ(Parse("f , y"), "call f(, y)");
  EXPECT_EQ(Parse("f x,"), "call f(x, )");
  EXPECT_EQ(Parse("f -1"), "call f((- 1))");
  EXPECT_EQ(Parse("f - 1"), "call f((- 1))");
  EXPECT_EQ(Parse("o.m -1, +a"), "call o.m((- 1), (+ a))");
  EXPECT_EQ(Parse("f Not x"), "call f((not x))");
  EXPECT_EQ(Parse("f New Thing"), "call f(new Thing)");
  EXPECT_EQ(Parse("o.p.q"), "call o.p.q");
  EXPECT_EQ(Parse("f x = y"), "call f((= x y))");
  EXPECT_EQ(Parse("Me.f 1"), "call me.f(1)");
}

TEST(Parser, TellsWhatParenthesesOfACallMean) {
  EXPECT_EQ(Parse("f()"), "call f()");
  EXPECT_EQ(Parse("f (x)"), "call f([x])");
  EXPECT_EQ(Parse("f(x)"), "call f([x])");
  EXPECT_EQ(Parse("f (x), y"), "call f([x], y)");
  EXPECT_EQ(Parse("f (x),, y"), "call f([x], , y)");
  EXPECT_EQ(Parse("f (1)+2, 3"), "call f((+ [1] 2), 3)");
  EXPECT_EQ(Parse("f (1)*2+3^4"), "call f((+ (* [1] 2) (^ 3 4)))");
  EXPECT_EQ(Parse("f (a) & b = c And d"), "call f((and (= (& [a] b) c) d))");
  EXPECT_EQ(Parse("f(x).g y"), "call f(x).g(y)");
  EXPECT_EQ(Parse("f(x, y).g"), "call f(x, y).g");
  EXPECT_EQ(Parse("f(x).g(y)"), "call f(x).g([y])");
  EXPECT_EQ(Parse("a(1)(2)"), "call a(1)([2])");
}

TEST(Parser, RefusesSeveralArgumentsInParenthesesWithoutCall) {
  EXPECT_EQ(Parse("f(1, 2)"), "1044 (1, 8)");
  EXPECT_EQ(Parse("o.f(1, 2) : x"), "1044 (1, 11)");
  EXPECT_EQ(Parse("f(,)"), "1044 (1, 5)");
}

TEST(Parser, ReadsCallStatements) {
  EXPECT_EQ(Parse("Call f"), "call f");
  EXPECT_EQ(Parse("Call f()"), "call f()");
  EXPECT_EQ(Parse("Call f(x, (y))"), "call f(x, [y])");
  EXPECT_EQ(Parse("Call o.m(1).n"), "call o.m(1).n");
  EXPECT_EQ(Parse("Call f x"), "1025 (1, 8)");
  EXPECT_EQ(Parse("Call 1"), "1010 (1, 6)");
}

TEST(Parser, ReportsWhatIsNoStatement) {
  EXPECT_EQ(Parse("1 = x"), "1024 (1, 1)");
  EXPECT_EQ(Parse("= x"), "1024 (1, 1)");
  EXPECT_EQ(Parse("Let x = 1"), "1024 (1, 1)");
  EXPECT_EQ(Parse("GoTo x"), "1024 (1, 1)");
  EXPECT_EQ(Parse("x * 1"), "1025 (1, 3)");
  EXPECT_EQ(Parse("f x y"), "1025 (1, 5)");
  EXPECT_EQ(Parse("x ="), "1023 (1, 4)");
  EXPECT_EQ(Parse("Set x"), "1011 (1, 6)");
  EXPECT_EQ(Parse("Set 1 = x"), "1010 (1, 5)");
}

TEST(Parser, RefusesToAssignToMe) {
  EXPECT_EQ(Parse("Me = 1"), "1037 (1, 1)");
  EXPECT_EQ(Parse("Set Me = x"), "1037 (1, 5)");
  EXPECT_EQ(Parse("Me"), "1037 (1, 3)");
}

// ---- Lines

TEST(Parser, SeparatesStatementsByLinesAndColons) {
  EXPECT_EQ(Parse(":: x = 1 : y = 2 ::\r\n\r\n: z = 3"), "x := 1; y := 2; z := 3");
  EXPECT_EQ(Parse(""), "");
  EXPECT_EQ(Parse("\n' nothing\n"), "");
}

// ---- If

TEST(Parser, ReadsIfBlocks) {
  EXPECT_EQ(Parse("If a Then\nx = 1\nElseIf b Then\nx = 2\nElseIf c Then ' why\nElse\nx = 3\nEnd If"),
            "if a {x := 1} elseif b {x := 2} elseif c {} else {x := 3}");
  EXPECT_EQ(Parse("If a Then\nIf b Then\nx = 1\nEnd If\nElse x = 2 : y = 3\nEnd If"),
            "if a {if b {x := 1}} else {x := 2; y := 3}");
  EXPECT_EQ(Parse("If a Then\nElseIf b Then x = 1\nEnd If"), "if a {} elseif b {x := 1}");
  EXPECT_EQ(Parse("If a Then : \n x = 1 \n End If"), "if a {x := 1}");
}

TEST(Parser, TakesElseIfInTwoWordsForABlockOfItsOwn) {
  EXPECT_EQ(Parse("If a Then\nElse If b Then\nx = 1\nEnd If\nEnd If"), "if a {} else {if b {x := 1}}");
  EXPECT_EQ(Parse("If a Then\nElse If b Then x = 1 Else y = 2\nEnd If"),
            "if a {} else {if b {x := 1} else {y := 2}}");
  EXPECT_EQ(Parse("If a Then\nElse If b Then\nx = 1\nEnd If"), "1014 (4, 7)");
}

TEST(Parser, ReadsIfOnASingleLine) {
  EXPECT_EQ(Parse("If a Then x = 1\ny = 2"), "if a {x := 1}; y := 2");
  EXPECT_EQ(Parse("If a Then x = 1 : y = 2 Else z = 3 : w = 4\nv = 5"),
            "if a {x := 1; y := 2} else {z := 3; w := 4}; v := 5");
  EXPECT_EQ(Parse("If a Then x = 1 : Else : y = 2"), "if a {x := 1} else {y := 2}");
  EXPECT_EQ(Parse("If a Then f Else g"), "if a {call f} else {call g}");
  EXPECT_EQ(Parse("If a Then f x Else"), "if a {call f(x)}");
  EXPECT_EQ(Parse("If a Then x = 1 ElseIf b Then x = 2 Else x = 3"),
            "if a {x := 1} elseif b {x := 2} else {x := 3}");
  EXPECT_EQ(Parse("If a Then : x = 1 : y = 2\nz = 3"), "if a {x := 1; y := 2}; z := 3");
}

TEST(Parser, LetsEndIfCloseASingleLine) {
  EXPECT_EQ(Parse("If a Then x = 1 End If : y = 2"), "if a {x := 1}; y := 2");
  EXPECT_EQ(Parse("If a Then x = 1 : y = 2 : End If : z = 3"), "if a {x := 1; y := 2}; z := 3");
  EXPECT_EQ(Parse("If a Then : x = 1 : Else : y = 2 : End If"), "if a {x := 1} else {y := 2}");
  EXPECT_EQ(Parse("Sub s : If a Then x = 1 : End Sub"), "sub s() {if a {x := 1}}");
}

TEST(Parser, GivesElseToTheInnermostIfOfALine) {
  EXPECT_EQ(Parse("If a Then If b Then x = 1 Else x = 2"), "if a {if b {x := 1} else {x := 2}}");
  EXPECT_EQ(Parse("If a Then If b Then x = 1 Else x = 2 Else x = 3"),
            "if a {if b {x := 1} else {x := 2}} else {x := 3}");
}

TEST(Parser, ReadsLoopsOnTheLineOfAnIf) {
  EXPECT_EQ(Parse("If a Then For i = 1 To 2 : f i : Next Else g"),
            "if a {for i = 1 to 2 {call f(i)}} else {call g}");
  EXPECT_EQ(Parse("If a Then Do : f : Loop Else g"), "if a {do {call f}} else {call g}");
}

TEST(Parser, ReportsIfsThatAreNotWhole) {
  EXPECT_EQ(Parse("If a x = 1"), "1017 (1, 6)");
  EXPECT_EQ(Parse("If a\n"), "1017 (1, 5)");
  EXPECT_EQ(Parse("If Then"), "1023 (1, 4)");
  EXPECT_EQ(Parse("If a Then\nx = 1\n"), "1014 (3, 1)");
  EXPECT_EQ(Parse("If a Then\nEnd\n"), "1012 (2, 4)");
  EXPECT_EQ(Parse("Sub s\nIf a Then\nEnd Sub"), "1012 (3, 5)");
  EXPECT_EQ(Parse("If a Then\nElse\nElse\nEnd If"), "1014 (3, 1)");
  EXPECT_EQ(Parse("If a Then x = 1\nEnd If"), "1024 (2, 1)");
  EXPECT_EQ(Parse("Else"), "1024 (1, 1)");
}

// ---- Select Case

TEST(Parser, ReadsSelectCase) {
  EXPECT_EQ(Parse("Select Case a\nCase 1, b + 1\nx = 1\nCase \"c\": y = 2\nCase Else\nz = 3\nEnd Select"),
            "select a case 1, (+ b 1) {x := 1} case \"c\" {y := 2} else {z := 3}");
  EXPECT_EQ(Parse("Select Case a\nCase 1 f 2\nCase Else f 3\nEnd Select"),
            "select a case 1 {call f(2)} else {call f(3)}");
  EXPECT_EQ(Parse("Select Case a : Case Else : End Select"), "select a");
  EXPECT_EQ(Parse("Select Case a\nEnd Select"), "select a");
}

TEST(Parser, ReportsSelectsThatAreNotWhole) {
  EXPECT_EQ(Parse("Select a"), "1021 (1, 8)");
  EXPECT_EQ(Parse("Select Case a\nx = 1"), "1021 (2, 1)");
  EXPECT_EQ(Parse("Select Case a\nCase 1\n"), "1014 (3, 1)");
  EXPECT_EQ(Parse("Select Case a\nCase 1\nEnd If"), "1022 (3, 5)");
  EXPECT_EQ(Parse("Select Case a\nCase Else\nCase 1\nEnd Select"), "1014 (3, 1)");
  EXPECT_EQ(Parse("Select Case a\nCase\nEnd Select"), "1023 (2, 5)");
  EXPECT_EQ(Parse("Case 1"), "1024 (1, 1)");
}

// ---- Loops

TEST(Parser, ReadsForLoops) {
  EXPECT_EQ(Parse("For i = 1 To n\nx = i\nNext"), "for i = 1 to n {x := i}");
  EXPECT_EQ(Parse("For i = 10 To 1 Step -2 : f i : Next"), "for i = 10 to 1 step (- 2) {call f(i)}");
  EXPECT_EQ(Parse("For Step = 1 To Step Step Step : Next"), "for Step = 1 to Step step Step {}");
  EXPECT_EQ(Parse("For Each o In c.Items : f o : Next"), "each o in c.Items {call f(o)}");
}

TEST(Parser, ReportsForLoopsThatAreNotWhole) {
  EXPECT_EQ(Parse("For 1"), "1010 (1, 5)");
  EXPECT_EQ(Parse("For i To 3"), "1011 (1, 7)");
  EXPECT_EQ(Parse("For i = 1, 3"), "1013 (1, 10)");
  EXPECT_EQ(Parse("For i = 1 To 3 x"), "1025 (1, 16)");
  EXPECT_EQ(Parse("For Each o c"), "1046 (1, 12)");
  EXPECT_EQ(Parse("For i = 1 To 3\n"), "1020 (2, 1)");
  EXPECT_EQ(Parse("Sub s\nFor i = 1 To 3\nEnd Sub"), "1020 (3, 1)");
  EXPECT_EQ(Parse("For i = 1 To 3 : Next i"), "1025 (1, 23)");
}

TEST(Parser, RefusesLoopVariablesThatAreNone) {
  EXPECT_EQ(Parse("For a(1) = 1 To 2 : Next"), "1040 (1, 5)");
  EXPECT_EQ(Parse("For o.p = 1 To 2 : Next"), "1040 (1, 5)");
  EXPECT_EQ(Parse("For Each o.p In c : Next"), "1040 (1, 10)");
  EXPECT_EQ(Parse("For i = 1 To 2 : For I = 1 To 2 : Next : Next"), "1040 (1, 22)");
  EXPECT_EQ(Parse("For i = 1 To 2 : Next : For i = 1 To 2 : Next"), "for i = 1 to 2 {}; for i = 1 to 2 {}");
}

TEST(Parser, ReadsDoLoopsInAllForms) {
  EXPECT_EQ(Parse("Do\nf\nLoop"), "do {call f}");
  EXPECT_EQ(Parse("Do While a : f : Loop"), "do while a {call f}");
  EXPECT_EQ(Parse("Do Until a : f : Loop"), "do until a {call f}");
  EXPECT_EQ(Parse("Do : f : Loop While a"), "do {call f} while a");
  EXPECT_EQ(Parse("Do : f : Loop Until a"), "do {call f} until a");
  EXPECT_EQ(Parse("While a : f : Wend"), "wend while a {call f}");
}

TEST(Parser, ReportsLoopsThatAreNotWhole) {
  EXPECT_EQ(Parse("Do a"), "1028 (1, 4)");
  EXPECT_EQ(Parse("Do\nLoop a"), "1028 (2, 6)");
  EXPECT_EQ(Parse("Do While a\nLoop While b"), "1025 (2, 6)");
  EXPECT_EQ(Parse("Do\n"), "1019 (2, 1)");
  EXPECT_EQ(Parse("While a\n"), "1018 (2, 1)");
  EXPECT_EQ(Parse("While\n"), "1023 (1, 6)");
  EXPECT_EQ(Parse("While a\nEnd While"), "1018 (2, 1)");
  EXPECT_EQ(Parse("Wend"), "1024 (1, 1)");
}

TEST(Parser, ReportsTheEndsOfLoopsThatAreNotOpen) {
  EXPECT_EQ(Parse("Loop"), "1038 (1, 1)");
  EXPECT_EQ(Parse("Do\nIf a Then\nLoop"), "1038 (3, 1)");
  EXPECT_EQ(Parse("Next"), "1055 (1, 1)");
  EXPECT_EQ(Parse("For i = 1 To 2\nIf a Then\nNext"), "1055 (3, 1)");
}

// ---- With, Exit, On Error

TEST(Parser, ReadsWith) {
  EXPECT_EQ(Parse("With a.b\n.c = .d(1).e\n.f\n.g 1\nEnd With"),
            "with a.b {.c := .d(1).e; call .f; call .g(1)}");
  EXPECT_EQ(Parse("With a : f .b, .c : With .d : .e : End With : End With"),
            "with a {call f(.b, .c); with .d {call .e}}");
  EXPECT_EQ(Parse("With New Thing : End With"), "with new Thing {}");
  EXPECT_EQ(Parse("With a"), "1014 (1, 7)");
  EXPECT_EQ(Parse("With a : End If"), "1029 (1, 14)");
  EXPECT_EQ(Parse("f .b"), "call f.b");
}

TEST(Parser, RefusesMembersOfNothingOutsideWith) {
  EXPECT_EQ(Parse(".a = 1"), "505 (1, 1)");
  EXPECT_EQ(Parse("x = .a"), "505 (1, 5)");
  EXPECT_EQ(Parse("With a : End With : .b"), "505 (1, 21)");
}

TEST(Parser, ReadsExitInsideOfWhatItLeaves) {
  EXPECT_EQ(Parse("Do : Exit Do : Loop"), "do {exit do}");
  EXPECT_EQ(Parse("For i = 1 To 2 : Do : Exit For : Loop : Next"), "for i = 1 to 2 {do {exit for}}");
  EXPECT_EQ(Parse("For Each i In c : Exit For : Next"), "each i in c {exit for}");
  EXPECT_EQ(Parse("Sub s : Exit Sub : End Sub"), "sub s() {exit sub}");
  EXPECT_EQ(Parse("Function f : If a Then Exit Function\nEnd Function"),
            "function f() {if a {exit function}}");
  EXPECT_EQ(Parse("Class c : Property Get p : Exit Property : End Property : End Class"),
            "class c {get p() {exit property}}");
}

TEST(Parser, RefusesExitElsewhere) {
  EXPECT_EQ(Parse("Exit Do"), "1039 (1, 6)");
  EXPECT_EQ(Parse("While a : Exit Do : Wend"), "1039 (1, 16)");
  EXPECT_EQ(Parse("Do : Exit For : Loop"), "1039 (1, 11)");
  EXPECT_EQ(Parse("Do : Loop : Exit Do"), "1039 (1, 18)");
  EXPECT_EQ(Parse("Exit Sub"), "1039 (1, 6)");
  EXPECT_EQ(Parse("Function f : Exit Sub : End Function"), "1039 (1, 19)");
  EXPECT_EQ(Parse("Sub s : Exit Property : End Sub"), "1039 (1, 14)");
  EXPECT_EQ(Parse("Exit"), "1039 (1, 5)");
}

TEST(Parser, ReadsOnError) {
  EXPECT_EQ(Parse("On Error Resume Next : On Error GoTo 0"), "on error resume next; on error goto 0");
  EXPECT_EQ(Parse("On Error GoTo label"), "1002 (1, 15)");
  EXPECT_EQ(Parse("On Error GoTo 1"), "1002 (1, 15)");
  EXPECT_EQ(Parse("On Error Resume"), "1020 (1, 16)");
  EXPECT_EQ(Parse("On x"), "1002 (1, 4)");
  EXPECT_EQ(Parse("On Error"), "1002 (1, 9)");
}

TEST(Parser, ReadsStop) { EXPECT_EQ(Parse("Stop : x = 1"), "stop; x := 1"); }

// ---- Limits

std::string Repeat(std::string_view text, int times) {
  std::string repeated;
  for (int i = 0; i < times; ++i) repeated += text;
  return repeated;
}

// The number of the error alone, 0 for none; prints no trees, which can be too large for it.
int ErrorOf(std::string_view source) {
  Symbols symbols;
  try {
    ParseScript(automation::Utf8ToUtf16(source), symbols);
    return 0;
  } catch (const CompileError& error) {
    return error.Number();
  }
}

TEST(Parser, ReadsLongChainsOfOperators) {
  for (const char* op : {" + 1", " & 1", "^1", " And 1", " = 1", "*1-1"}) {
    EXPECT_EQ(ErrorOf("x = 1" + Repeat(op, 1'000'000)), 0) << op;
  }
}

TEST(Parser, EndsTooDeepNestingWithOutOfMemory) {
  constexpr int kDeep = 100'000;
  for (const char* operand : {"(", "Not ", "- ", "f(", "1 + (", "a(1).b("}) {
    EXPECT_EQ(ErrorOf("x = " + Repeat(operand, kDeep)), 1001) << operand;
  }
  for (const char* statement : {"f (", "If a Then ", "If a Then\n", "Do\n", "While a\n", "With a\n",
                                "If a Then\nElse If b Then\n", "Select Case a\nCase 1\n"}) {
    EXPECT_EQ(ErrorOf(Repeat(statement, kDeep)), 1001) << statement;
  }
  EXPECT_EQ(ErrorOf("Const a = " + Repeat("(", kDeep)), 1001);
  EXPECT_EQ(ErrorOf("Const a = " + Repeat("-", kDeep)), 1001);
  EXPECT_EQ(ErrorOf("x = " + Repeat("(", kDeep) + "1" + Repeat(")", kDeep)), 1001);
  EXPECT_EQ(ErrorOf("x = a" + Repeat(".b", kDeep)), 1001);
  EXPECT_EQ(ErrorOf("a" + Repeat("(1)", kDeep)), 1001);
}

TEST(Parser, ReadsNestingUpToItsLimit) {
  EXPECT_EQ(ErrorOf("x = " + Repeat("(", kDeepestNesting - 1) + "1" + Repeat(")", kDeepestNesting - 1)), 0);
  EXPECT_EQ(ErrorOf("x = " + Repeat("(", kDeepestNesting) + "1" + Repeat(")", kDeepestNesting)), 1001);
  EXPECT_EQ(ErrorOf(Repeat("If a Then\n", kDeepestNesting - 1) + Repeat("End If\n", kDeepestNesting - 1)), 0);
  EXPECT_EQ(ErrorOf(Repeat("Do\n", kDeepestNesting + 1)), 1001);
}

// Chains of members lean to the left too, but who reads them may use recursion.
TEST(Parser, KeepsTreesLowThroughArgumentsOfChains) {
  std::string source = "1";
  for (int i = 0; i < 30; ++i) source = "a(" + source + ")" + Repeat(".b", 30);
  EXPECT_EQ(ErrorOf("x = " + source), 1001);
}

TEST(Parser, ReadsLargeSources) {
  EXPECT_EQ(ErrorOf("x = \"" + std::string(10'000'000, 'a') + "\""), 0);
  EXPECT_EQ(ErrorOf("x = \"" + Repeat("\"\"", 5'000'000) + "\""), 0);
  EXPECT_EQ(ErrorOf(Repeat("x = 1 : ", 500'000)), 0);
  EXPECT_EQ(ErrorOf(Repeat("x = 1 _\n", 1) + Repeat(" _\n", 1'000'000)), 0);
  EXPECT_EQ(ErrorOf("x = " + std::string(1'000'000, '1')), 1031);
}

}  // namespace
}  // namespace hearthmake::vbscript
