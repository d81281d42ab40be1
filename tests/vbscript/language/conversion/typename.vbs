WScript.Echo TypeName(CByte(1)) & TypeName(1) & TypeName(100000) & TypeName(CSng(1)) & TypeName(1.5)  ' expect: ByteIntegerLongSingleDouble
WScript.Echo TypeName(CCur(1)) & TypeName(Date) & TypeName("") & TypeName(True)  ' expect: CurrencyDateStringBoolean
WScript.Echo TypeName(Empty) & TypeName(Null) & TypeName(Nothing) & TypeName(Array())  ' expect: EmptyNullNothingVariant()
