WScript.Echo ScriptEngine  ' expect: VBScript
WScript.Echo ScriptEngineMajorVersion & "." & ScriptEngineMinorVersion  ' expect: 5.8
