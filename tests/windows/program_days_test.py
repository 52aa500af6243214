#!/usr/bin/env python3
"""Recorded days through tandril.exe: every answer, and every file in the end, must be the one that
the program of this system gives.

    program_days_test.py MACHINE PROGRAM.EXE PROGRAM SCRATCH
"""

import pathlib
import sys

import days


def compared(step, answer):
    is_log = step["method"].lower() == "getmailcontent" and step["args"] == ["Log"]
    if is_log and isinstance(answer.get("result"), str):
        return {**answer, "result": days.without_stamps(answer["result"])}
    return answer


def difference(day, expected, actual):
    for number, (step, wanted, got) in enumerate(zip(day["steps"], expected, actual), 1):
        if wanted is None or compared(step, wanted) == compared(step, got):
            continue
        where = f"step {number}, {step['method']}: "
        return where + days.first_difference(wanted.get("result", str(wanted)),
                                             got.get("result", str(got)))
    return None


def files(home):
    return {
        path.relative_to(home): path.read_bytes()
        for path in (home / days.INSTALL).iterdir() if path.is_file()
    }


def file_difference(expected, actual):
    wanted, got = files(expected), files(actual)
    if wanted.keys() != got.keys():
        return f"expected the files {sorted(map(str, wanted))}, got {sorted(map(str, got))}"
    for path, content in wanted.items():
        texts = [days.without_stamps(c.decode("latin-1")) for c in (content, got[path])]
        if texts[0] != texts[1]:
            return f"{path} " + days.first_difference(*texts)
    return None


def main(machine, windows_program, program, scratch):
    cases = days.Cases()
    homes = [pathlib.Path(scratch) / name for name in ("linux", "windows")]
    for name in sorted(path.stem for path in days.CASES.glob("*.json")):
        day = days.load(name)
        expected = days.answers([program], homes[0], day)
        actual = days.answers([days.WINE, machine, windows_program], homes[1], day)
        cases.check(name, difference(day, expected, actual) or file_difference(*homes))
    return cases.end()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
