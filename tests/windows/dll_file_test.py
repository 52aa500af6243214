#!/usr/bin/env python3
"""What the file Client20.dll says of itself; all that can be seen of a bitness that cannot run here.

    dll_file_test.py CLIENT20.DLL BITS TANDRIL.TLB VERSION OBJDUMP
"""

import pathlib
import re
import subprocess
import sys

import days

EXPORTS = ["DllCanUnloadNow", "DllGetClassObject", "DllRegisterServer", "DllUnregisterServer"]

# Those of every Windows since 7.
SYSTEM_DLLS = {
    "advapi32.dll", "kernel32.dll", "msvcrt.dll", "odbc32.dll", "ole32.dll", "oleaut32.dll",
    "shell32.dll", "shlwapi.dll", "user32.dll", "ws2_32.dll",
}
FORMATS = {"32": "pei-i386", "64": "pei-x86-64"}


def listed(pattern, text):
    return re.findall(pattern, text, re.MULTILINE)


def differs(expected, actual):
    return None if expected == actual else f"expected {expected}, got {actual}"


def version_problem(content, version):
    """The fixed numbers stand behind a signature, and the same as a text behind its name."""
    numbers = [int(part) for part in version.split(".")]
    at = content.find(b"\xbd\x04\xef\xfe")
    if at < 0:
        return "there is no version resource"
    high, low = (int.from_bytes(content[at + i:at + i + 4], "little") for i in (8, 12))
    fixed = [high >> 16, high & 0xFFFF, low >> 16]
    text = ("FileVersion\0\0" + version).encode("utf-16-le")
    return differs(numbers, fixed) or (None if text in content else "its text is another")


def main(dll, bits, type_library, version, objdump):
    cases = days.Cases()
    told = subprocess.run([objdump, "-p", dll], check=True, capture_output=True, text=True).stdout
    content = pathlib.Path(dll).read_bytes()
    cases.check("is built for its bitness",
                differs([FORMATS[bits]], listed(r"file format (\S+)", told)))
    names = told.partition("[Ordinal/Name Pointer] Table")[2].partition("\n\n")[0]
    cases.check("exports four undecorated functions",
                differs(EXPORTS, sorted(listed(r"^\s+\[ *\d+\].* (\S+)$", names))))
    imports = {name.lower() for name in listed(r"DLL Name: (\S+)", told)}
    cases.check("imports from COM", None if "ole32.dll" in imports else f"only {sorted(imports)}")
    cases.check("imports from DLLs of Windows alone", ", ".join(sorted(imports - SYSTEM_DLLS)))
    cases.check("may be loaded anywhere, with data that is no code",
                None if all(word in told for word in ("DYNAMIC_BASE", "NX_COMPAT")) else
                listed(r"^DllCharacteristics.*", told))
    cases.check("has the version in its resources", version_problem(content, version))
    library = pathlib.Path(type_library).read_bytes()
    cases.check("holds the type library", None if library.startswith(b"MSFT") and library in content
                else "its bytes are not in the file")
    return cases.end()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
