Const N = 5
N = 6  ' error: 501 Illegal assignment: 'N'
