#!/usr/bin/env python3
"""The scripts of docs/windows.md, run as they stand there, with the registered Client20.dll.

    snippets_test.py MACHINE CLIENT20.DLL TANDRIL.EXE SCRATCH
"""

import pathlib
import re
import shutil
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[2]
WINE = PROJECT / "tests/windows/wine-run"
INSTALL = "drive_c/Vorn Tandril"
MAPPER = '<m><I18N><T ID="SLBEU0267" DESCRIPTION="no XML"/></I18N></m>'
STORE = ('<harbrook><ccsocservcordr><record ServiceOrder="A1" State="O"><OrderStatus>15</OrderStatus>'
         "</record></ccsocservcordr></harbrook>")


class Machine:
    """What the component leaves behind on it goes again."""

    def __init__(self, folder, scratch):
        self.folder = pathlib.Path(folder)
        self.scratch = pathlib.Path(scratch)
        shutil.rmtree(self.folder / INSTALL, ignore_errors=True)
        shutil.rmtree(self.scratch, ignore_errors=True)
        self.scratch.mkdir(parents=True)

    def run(self, *command):
        done = subprocess.run([WINE, self.folder, *command], cwd=self.scratch, text=True,
                              capture_output=True, encoding="utf-8", timeout=600)
        return done.returncode, done.stdout.replace("\r\n", "\n")

    def script(self, name, text):
        (self.scratch / name).write_text(text, encoding="utf-8")
        return self.run("cscript", "//nologo", name)

    def put(self, name, text):
        path = self.folder / INSTALL / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")


def snippet(language):
    page = (PROJECT / "docs/windows.md").read_text(encoding="utf-8")
    return re.search(rf"^```{language}\n(.*?)^```", page, re.MULTILINE | re.DOTALL).group(1)


def cases(machine, program):
    machine.put("Harbrook.xml", STORE)
    machine.put("FieldMapper.xml", MAPPER)
    # Of the settings there is only what this makes: another test may have cleared the machine.
    status, _ = machine.run(program, "call", "Initialize")
    assert status == 0, "the machine cannot be set up"
    status, orders = machine.run(program, "call", "ListOrders")
    assert status == 0 and "<table" in orders, orders
    yield "JScriptListsOrders", machine.script("orders.js", snippet("js")), (0, orders)
    machine.put("MasterData/tandril.mdb", "")
    yield "VBScriptChoosesADatabase", machine.script("masterdata.vbs", snippet("vbs")), \
        (0, "tandril\n")


def main(machine, library, program, scratch):
    machine = Machine(machine, scratch)
    status, _ = machine.run("regsvr32", "/s", library)
    assert status == 0, "the DLL cannot be registered"
    failures = 0
    try:
        for name, actual, expected in cases(machine, program):
            is_well = actual == expected
            failures += not is_well
            print(f"{'OK  ' if is_well else 'FAIL'} {name}")
            if not is_well:
                print(f"  expected {expected!r}\n  got      {actual!r}")
    finally:
        machine.run("regsvr32", "/s", "/u", library)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
