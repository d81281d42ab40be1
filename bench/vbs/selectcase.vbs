' An interpreter's loop: instructions by number, dispatched with Select Case.
Option Explicit
Dim rounds, program
rounds = 50
If WScript.Arguments.Count > 0 Then rounds = CLng(WScript.Arguments(0))

Const PushOne = 0
Const Add = 1
Const Double = 2
Const Wrap = 3
Const Swap = 4
Const CountDown = 5
Const JumpUnlessZero = 6
Const Halt = 7

Function Execute_(program, count)
  Dim pc, a, b, t, left
  pc = 0
  a = 1
  b = 2
  left = count
  Do
    Select Case program(pc)
      Case PushOne
        b = 1
      Case Add
        a = a + b
      Case Double
        a = a * 2
      Case Wrap
        a = a Mod 65521
      Case Swap
        t = a
        a = b
        b = t
      Case CountDown
        left = left - 1
      Case JumpUnlessZero
        If left <> 0 Then pc = -1
      Case Halt
        Execute_ = a * 10 + b Mod 10
        Exit Do
    End Select
    pc = pc + 1
  Loop
End Function

program = Array(Add, Wrap, Swap, Double, Wrap, Add, Wrap, CountDown, JumpUnlessZero, Halt)
WScript.Echo Execute_(program, 50000 * rounds)
