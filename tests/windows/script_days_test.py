#!/usr/bin/env python3
"""Days as scripts would live them, with the registered Client20.dll: in JScript and in VBScript, each
result must be the one that `tandril batch` gives on this system, and so must the documents be in the
end. (The log and the page are in the code page of Windows.)

    script_days_test.py MACHINE CLIENT20.DLL PROGRAM SCRATCH

Each call is written as a page's author would write it; only texts that do not fit into a source line
are read from files. The scripts run under Wine's own engines, whose VBScript knows no Execute().
"""

import codecs
import os
import pathlib
import subprocess
import sys

import days
import sample_day

# What the component leaves on a machine outside of its folder.
SETTINGS = r"""Windows Registry Editor Version 5.00

[-HKEY_LOCAL_MACHINE\SOFTWARE\Vorn]
[-HKEY_LOCAL_MACHINE\SOFTWARE\ODBC\odbc.ini]
"""

SOURCE = """[Tandril Master Data]
Driver = SQLite3
Database = {database}
StepAPI = 1
"""

# Recorded days that need nothing but calls: work, master data, its faults, texts of all languages.
RECORDED = ("day-33", "day-37", "master-25", "sys-master-19", "text-24")


class JScript:
    name = "JScript"
    engine = "jscript"
    extension = "js"
    head = r"""
var files = new ActiveXObject("Scripting.FileSystemObject");
var answers = files.CreateTextFile(WScript.Arguments(1), true, true);

function text(number) {
    return files.OpenTextFile(WScript.Arguments(0) + number + ".txt", 1, false, -1).ReadAll();
}

function line(kind, value) {
    answers.WriteLine(kind + String(value).replace(/\\/g, "\\\\").replace(/\r/g, "\\r").replace(/\n/g, "\\n"));
}

function show(result) {
    line(result === undefined ? "undefined:" : typeof result + ":", result);
}

var client = new ActiveXObject("Tandril.Client20");
"""
    tail = "answers.Close();\n"

    def literal(self, value):
        if value is None:
            return "null"
        quoted = value.replace("\\", "\\\\").replace('"', '\\"') if isinstance(value, str) else None
        return str(value) if quoted is None else f'"{quoted}"'

    def call(self, method, arguments):
        call = f"client.{method}({', '.join(arguments)})"
        return f'try {{ show({call}); }} catch (error) {{ line("fault:", error.message); }}\n'


class VBScript:
    name = "VBScript"
    engine = "vbscript"
    extension = "vbs"
    head = r"""
Option Explicit
Dim files, answers, client, columns
Set files = CreateObject("Scripting.FileSystemObject")
Set answers = files.CreateTextFile(WScript.Arguments.Item(1), True, True)
Set client = CreateObject("Tandril.Client20")

Function Text(number)
    Text = files.OpenTextFile(WScript.Arguments.Item(0) & number & ".txt", 1, False, -1).ReadAll
End Function

Sub Line(kind, value)
    answers.WriteLine kind & Replace(Replace(Replace(value, "\", "\\"), vbCr, "\r"), vbLf, "\n")
End Sub

Sub Show(result)
    Select Case VarType(result)
        Case vbEmpty
            Line "undefined:", ""
        Case vbBoolean
            If result Then Line "boolean:", "true" Else Line "boolean:", "false"
        Case vbString
            Line "string:", result
        Case Else
            Line "kind " & VarType(result) & ":", ""
    End Select
End Sub

Sub NoteFault
    If Err.Number <> 0 Then Line "fault:", Err.Description
    Err.Clear
End Sub

On Error Resume Next
"""
    tail = "answers.Close\n"

    def literal(self, value):
        if value is None:
            return "Null"
        return '"' + value.replace('"', '""') + '"' if isinstance(value, str) else str(value)

    def call(self, method, arguments):
        if method != "getColumnHeadingsForHRA":
            return f"Show client.{method}({', '.join(arguments)})\nNoteFault\n"
        # The one result by reference that a call may change.
        return (f"columns = {arguments[0]}\nShow client.{method}(columns, {arguments[1]})\n"
                'NoteFault\nLine "iCols:", columns\n')


def fits(value):
    return not isinstance(value, str) or (len(value) < 80 and value.isascii() and value.isprintable())


def write_script(language, day, folder):
    """The day as a program; what does not fit into it goes into files beside it."""
    script = language.head
    texts = 0
    for step in day["steps"]:
        arguments = []
        for value in step["args"]:
            if fits(value):
                arguments.append(language.literal(value))
            else:
                texts += 1
                arguments.append(f"text({texts})")
                days.write(folder / f"{texts}.txt", codecs.BOM_UTF16_LE + value.encode("utf-16-le"))
        script += language.call(step["method"], arguments)
    path = folder / f"day.{language.extension}"
    days.write(path, (script + language.tail).replace("\n", "\r\n").encode("ascii"))
    return path


def unescaped(text):
    parts = text.split("\\\\")
    return "\\".join(part.replace("\\r", "\r").replace("\\n", "\n") for part in parts)


def parsed(line):
    kind, _, value = line.partition(":")
    value = unescaped(value)
    if kind == "undefined":
        return {"result": None}
    if kind == "boolean":
        return {"result": value == "true"}
    return {{"string": "result", "fault": "fault"}.get(kind, kind): value}


def read_answers(path):
    """One for each call; what a call returned by reference belongs to the one before it."""
    answers = []
    for line in path.read_text(encoding="utf-16").split("\n")[:-1]:
        answer = parsed(line.rstrip("\r"))
        if "iCols" in answer and answers:
            answers[-1]["out"] = {"iCols": int(answer["iCols"])}
        else:
            answers.append(answer)
    return answers


class Machine:
    """The Windows machine, whose drive C: and registry the days use."""

    def __init__(self, prefix, scratch):
        self.prefix = pathlib.Path(prefix)
        self.scratch = scratch
        self.drive = self.prefix / "drive_c"

    def run(self, *command, **settings):
        return subprocess.run([days.WINE, self.prefix, *command], check=False, capture_output=True,
                              timeout=600, env={**os.environ, **settings})

    def prepare(self, day):
        folder = self.drive / days.INSTALL
        beside = self.scratch / "home"
        days.prepare(beside, day)
        subprocess.run(["rm", "-rf", folder], check=True)
        if (beside / days.INSTALL).exists():
            (beside / days.INSTALL).rename(folder)
        settings = self.scratch / "settings.reg"
        settings.write_text(SETTINGS, encoding="ascii")
        self.run("regedit", "/S", windows_path(settings))

    def live(self, language, day):
        """What the script of that day answers."""
        self.prepare(day)
        folder = self.scratch / language.engine
        subprocess.run(["rm", "-rf", folder], check=True)
        script = write_script(language, day, folder)
        sources = self.scratch / "odbc.ini"
        database = days.database(self.drive, day) if day["masterdata"] else "none"
        sources.write_text(SOURCE.format(database=database), encoding="utf-8")
        result = folder / "answers.txt"
        self.run("cscript", "//nologo", windows_path(script), windows_path(folder) + "\\",
                 windows_path(result), ODBCINI=str(sources))
        return read_answers(result) if result.exists() else []


def windows_path(path):
    return "Z:" + str(path.resolve()).replace("/", "\\")


def compared(language, step, answer):
    """The parts of an answer that a script of that language gets to see."""
    answer = dict(answer)
    if isinstance(answer.get("result"), str):
        answer["result"] = days.without_stamps(answer["result"])
    if language is VBScript and step["method"] == "getColumnHeadingsForHRA":
        return answer
    answer.pop("out", None)
    return answer


def difference(language, day, expected, actual):
    for number, (step, wanted, got) in enumerate(zip(day["steps"], expected, actual), 1):
        wanted, got = (compared(language, step, answer) for answer in (wanted, got))
        if wanted != got:
            return f"step {number}, {step['method']}: " + days.first_difference(
                wanted.get("result", str(wanted)), got.get("result", str(got)))
    return None if len(actual) == len(expected) else f"{len(actual)} answers of {len(expected)}"


def uncalled(day):
    table = (days.PROJECT / "tests/surface/methods.txt").read_text(encoding="ascii")
    methods = {line.split()[1].split("(")[0] for line in table.splitlines()}
    return ", ".join(methods - {step["method"] for step in day["steps"]})


def main(prefix, dll, program, scratch):
    cases = days.Cases()
    scratch = pathlib.Path(scratch)
    machine = Machine(prefix, scratch)
    library = windows_path(pathlib.Path(dll))
    cases.check("regsvr32", machine.run("regsvr32", "/s", library).returncode)
    lived = {"the sample week": sample_day.load(), **{name: days.load(name) for name in RECORDED}}
    cases.check("a day calls every method", uncalled(lived["the sample week"]))
    for name, day in lived.items():
        home = scratch / "linux"
        expected = days.answers([program], home, day)
        for language in (JScript, VBScript):
            actual = machine.live(language(), day)
            cases.check(f"{name} in {language.name}",
                        difference(language, day, expected, actual) or
                        days.file_difference(home, machine.drive, ["*.xml"]))
    cases.check("regsvr32 /u", machine.run("regsvr32", "/s", "/u", library).returncode)
    return cases.end()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
