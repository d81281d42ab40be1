Class Lamp
  Private m_isOn, m_colors(2)
  Public Default Property Get Item(index) : Item = m_colors(index) : End Property
  Public Property Let Item(index, ByVal value)
    If IsNull(value) Then Exit Property
    m_colors(index) = value
  End Property
  Private Sub Class_Initialize() m_isOn = Not Me.Broken End Sub
  Function Toggle(byref x, y())
    Toggle = -2 ^ x * 3 / 4 \ 5 Mod 6 - 7 & 8 >< 9 And True Or False Xor Empty Eqv Null Imp Nothing
  End Function
End Class
