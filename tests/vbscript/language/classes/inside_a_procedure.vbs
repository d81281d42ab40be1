Sub P
  Class C  ' compile error: 1002
  End Class
End Sub
