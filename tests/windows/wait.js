// A program that does nothing, for longer than any run of the tests takes.
WScript.Sleep(20 * 60 * 1000);
