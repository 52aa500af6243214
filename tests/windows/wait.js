// A program that says when it runs, and then does nothing for longer than any run of the tests takes.
new ActiveXObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0)).Close();
WScript.Sleep(20 * 60 * 1000);
