#!/usr/bin/env python3
"""Days through tandril.exe: every answer, and every file in the end, must be the one that the program
of this system gives.

    program_days_test.py MACHINE PROGRAM.EXE PROGRAM SCRATCH
"""

import pathlib
import sys

import days
import sample_day


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


def main(machine, windows_program, program, scratch):
    cases = days.Cases()
    homes = [pathlib.Path(scratch) / name for name in ("linux", "windows")]
    recorded = sorted(path.stem for path in days.CASES.glob("*.json"))
    lived = {name: days.load(name) for name in recorded}
    lived["sample week"] = sample_day.load()
    for name, day in lived.items():
        expected = days.answers([program], homes[0], day)
        actual = days.answers([days.WINE, machine, windows_program], homes[1], day)
        cases.check(name, difference(day, expected, actual) or days.file_difference(*homes))
    return cases.end()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
