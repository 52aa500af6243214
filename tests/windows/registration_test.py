#!/usr/bin/env python3
"""What regsvr32 writes and takes back: the settings of all programs, of the machine and of the user,
are compared before and after.

    registration_test.py MACHINE CLIENT20.DLL SAVE_REGISTRY.EXE SCRATCH

Wine has no 32-bit half here, so the rows of the other bitness are only those that the 64-bit DLL
writes for it: how the interface crosses apartments and processes.
"""

import pathlib
import re
import subprocess
import sys
import time

import days

sys.path.append(str(days.PROJECT / "packaging/windows"))
from registry_rows import registry_rows

CLASSES = r"Machine\Software\Classes"
OTHER_CLASSES = CLASSES + r"\Wow6432Node"  # those that the other bitness sees
CLASS = "{607D3E22-789F-47EE-A97F-FB2318BDD1C6}"
LIBRARY = "{09B08D0D-8D4A-4E43-8969-5491B163513B}"
INTERFACE = "{8FF55D9B-7301-41A5-85EA-6E3463EB1EDD}"
AUTOMATION_PROXY = "{00020424-0000-0000-C000-000000000046}"


def interface_rows(classes):
    key = rf"{classes}\Interface\{INTERFACE}"
    return {
        (key, "", "_Client20"),
        (rf"{key}\ProxyStubClsid32", "", AUTOMATION_PROXY),
        (rf"{key}\TypeLib", "", LIBRARY),
        (rf"{key}\TypeLib", "Version", "1.0"),
    }


def expected_rows(dll):
    """(key, name, text) of each value; the unnamed value of a key has the name ""."""
    key = rf"{CLASSES}\CLSID\{CLASS}"
    library = rf"{CLASSES}\TypeLib\{LIBRARY}"
    names = (rf"{CLASSES}\Tandril.Client20", rf"{CLASSES}\Tandril.Client20.1")
    rows = {
        (names[0], "", "Tandril Client20"),
        (rf"{names[0]}\CLSID", "", CLASS),
        (rf"{names[0]}\CurVer", "", "Tandril.Client20.1"),
        (names[1], "", "Tandril Client20"),
        (rf"{names[1]}\CLSID", "", CLASS),
        (key, "", "Tandril Client20"),
        (rf"{key}\InprocServer32", "", dll),
        (rf"{key}\InprocServer32", "ThreadingModel", "Apartment"),
        (rf"{key}\ProgID", "", "Tandril.Client20.1"),
        (rf"{key}\Programmable", "", ""),
        (rf"{key}\TypeLib", "", LIBRARY),
        (rf"{key}\Version", "", "1.0"),
        (rf"{key}\VersionIndependentProgID", "", "Tandril.Client20"),
        (rf"{library}\1.0", "", "Tandril"),
        (rf"{library}\1.0\0\win64", "", dll),
        (rf"{library}\1.0\FLAGS", "", "0"),
        (rf"{library}\1.0\HELPDIR", "", dll.rpartition("\\")[0]),
    }
    return rows | interface_rows(CLASSES) | interface_rows(OTHER_CLASSES)


def installed_rows(dll):
    """What the installer writes for the DLL of 64 bits, and for the other one alike."""
    places = {"[#x64]": dll, "[INSTALLDIR]x64": dll.rpartition("\\")[0]}
    rows = set()
    for component, key, name, value in registry_rows():
        key = "Machine\\" + key.replace("SOFTWARE", "Software", 1)
        if component == "x86":
            key = key.replace(CLASSES + r"\Interface", OTHER_CLASSES + r"\Interface")
        if key.startswith((CLASSES, OTHER_CLASSES)) and (component == "x64" or OTHER_CLASSES in key):
            rows.add((key, name, places.get(value, value)))
    return rows


def escaped(text):
    return text.replace("\\", "\\\\").replace('"', '\\"')


def with_keys(lines):
    """(key, line) of each value, and (key, "") of each key on the way to one."""
    keys = set()
    for key, _ in lines:
        while key and key not in keys:
            keys.add(key)
            key = key.rpartition("\\")[0]
    return lines | {(key, "") for key in keys}


def lines_of(rows):
    """The rows as a saved registry tells them."""
    return with_keys({(key.lower(), (f'"{name}"' if name else "@") + f'="{escaped(text)}"')
                      for key, name, text in rows})


def read_saved(path, root):
    """When a key was changed is no part of it."""
    lines, key = set(), ""
    for line in re.sub(r"\\\n *", "", path.read_text(encoding="latin-1")).split("\n"):
        head = re.fullmatch(r"\[(.*)\] \d+", line)
        if head:
            key = (root + "\\" + head[1].replace("\\\\", "\\")).lower()
            lines.add((key, ""))
        elif key and line and not line.startswith("#time="):
            lines.add((key, line))
    return with_keys(lines)


class Machine:
    def __init__(self, prefix, saver, scratch):
        self.prefix = prefix
        self.saver = saver
        self.scratch = pathlib.Path(scratch)
        self.scratch.mkdir(parents=True, exist_ok=True)

    def run(self, *command):
        return subprocess.run([days.WINE, self.prefix, *command], check=False, capture_output=True,
                              timeout=600).returncode

    def settled_registry(self):
        """What nobody changes any more: Wine's own services go on writing when they have started."""
        last = None
        for _ in range(100):
            registry = self.registry("before")
            if registry == last:
                break
            last = registry
            time.sleep(0.5)
        return registry

    def registry(self, name):
        paths = [self.scratch / f"{name}-{half}.reg" for half in ("machine", "user")]
        for path in paths:
            path.unlink(missing_ok=True)
        self.run(self.saver, *map(windows_path, paths))
        return read_saved(paths[0], r"Machine\Software") | read_saved(paths[1], r"User\Software")


def windows_path(path):
    return "Z:" + str(pathlib.Path(path).resolve()).replace("/", "\\")


def shown(title, rows):
    return "".join(f"\n{title} [{key}] {line}" for key, line in sorted(rows)[:20])


def difference(expected, actual):
    return (shown("missing", expected - actual) + shown("unexpected", actual - expected)).strip()


def main(prefix, dll, saver, scratch):
    cases = days.Cases()
    machine = Machine(prefix, saver, scratch)
    path = windows_path(dll)
    rows = lines_of(expected_rows(path))
    before = machine.settled_registry()
    cases.check("the installer registers the same",
                difference(rows, lines_of(installed_rows(path))))
    cases.check("the settings of all programs are seen",
                None if len(before) > 10000 else f"{len(before)} rows")
    values = {(key, line) for key, line in rows if line}
    cases.check("nothing is registered before", shown("there is", values & before))
    cases.check("regsvr32 succeeds", machine.run("regsvr32", "/s", path))
    cases.check("regsvr32 adds the rows of the class and changes no other",
                difference(before | rows, machine.registry("registered")))
    cases.check("regsvr32 /u succeeds", machine.run("regsvr32", "/s", "/u", path))
    cases.check("regsvr32 /u leaves everything as it was before",
                difference(before, machine.registry("after")))
    return cases.end()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
