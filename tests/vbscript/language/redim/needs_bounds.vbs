Dim a()
ReDim a  ' compile error: 1005
