Set a = New Missing  ' error: 506 Class not defined: 'Missing'
