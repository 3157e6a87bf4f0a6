' What the scripts have in common; the runner puts this in front of each. An error that nobody expects ends
' a script at once, which shows by its missing last line.
Option Explicit

Dim connection, login, password, page, failures
connection = WScript.Arguments(0)
login = WScript.Arguments(1)
password = WScript.Arguments(2)
failures = 0
Set page = CreateObject("MTxAS.AppServer.1").GetObjectContext()

Sub SetApplication(name, value)
  Dim application
  Set application = page.Item("Application")
  application.Value(name) = value
End Sub

Sub SetSession(name, value)
  Dim session
  Set session = page.Item("Session")
  session.Value(name) = value
End Sub

' What was written to the page since last asked.
Function Written()
  Dim response
  Set response = page.Item("Response")
  Written = response.Text
  response.Clear
End Function

Sub Begin(subject)
  WScript.Echo subject
End Sub

Function Shown(value)
  If IsObject(value) Or IsNull(value) Or IsEmpty(value) Then
    Shown = TypeName(value)
  ElseIf VarType(value) = vbInteger Then
    Shown = "Long " & value  ' as a number in a script's text is, which has the smallest type that holds it
  Else
    Shown = TypeName(value) & " " & CStr(value)
  End If
End Function

' Expects a value of exactly this type; the width of whole numbers does not matter.
Sub Expect(what, found, wanted)
  If Shown(found) <> Shown(wanted) Then
    failures = failures + 1
    WScript.Echo "  " & what & ": " & Shown(found) & " instead of " & Shown(wanted)
  End If
End Sub

' Expects that the last statement raised this error; "*" stands for any description.
Sub ExpectError(what, number, source, description)
  Dim found
  found = Err.Number & " | " & Err.Source & " | "
  If description = "*" Then
    found = found & "*"
    If Err.Description = "" Then found = found & " without description"
  Else
    found = found & Err.Description
  End If
  Err.Clear
  Expect what, found, number & " | " & source & " | " & description
End Sub

Sub Finish()
  If failures = 0 Then
    WScript.Echo "all expectations were met"
  Else
    WScript.Echo failures & " expectations were not met"
  End If
End Sub

SetApplication "dataconn_ConnectionTimeout", "15"
SetApplication "dataconn_CommandTimeout", "30"
SetApplication "dataconn_ConnectionString", connection
SetApplication "Link_local", "/crm"
