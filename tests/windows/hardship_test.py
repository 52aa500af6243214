#!/usr/bin/env python3
"""A day through tandril.exe that is killed at any moment, or finds the disk full: its files are always
those of some moment between two calls, or of one while a call was saving.

    hardship_test.py MACHINE PROGRAM.EXE SCRATCH

TANDRIL_KILLS sets how often the day is killed, TANDRIL_SEED at which moments. The disk is full for
the program alone: Wine has no quotas, so the system below lets none of its files grow past a limit.
"""

import json
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
import xml.etree.ElementTree

import days
import sample_day

KILLS = int(os.environ.get("TANDRIL_KILLS", "12"))
SEED = int(os.environ.get("TANDRIL_SEED", "1"))
LIMITS = (0, 1500, 20000, 60000)  # bytes: the settings, the report, the log and the store pass them

STORE, REPORT, UPLOAD, COPIES, SETTINGS = FILES = (
    "Vorn Tandril/Harbrook.xml", "Vorn Tandril/UploadReport.xml", "Vorn Tandril/Upload.xml",
    "Vorn Tandril/Removed.xml", "registry.reg")
CHANGING = {"updatexml", "AddXml", "SaveHra", "deleteNode", "CompleteOrder", "CreateForm",
            "CreateXMLStringForUpdate", "DownloadErrors"}
NOTHING = {"method": "Get_Error", "args": []}
# It completes orders before it makes the text, and that stays when the rest goes wrong.
KEEPS_PART = {"CreateXMLStringForUpdate"}


def moment(home):
    """What the files hold, apart from when something happened and from the last error."""
    texts = {}
    for name in FILES:
        path = home / name
        text = path.read_text(encoding="utf-8-sig") if path.exists() else None
        texts[name] = text and re.sub(r'(?m)^"Error"=.*$', "", days.without_stamps(text))
    return texts


def is_store(text):
    return xml.etree.ElementTree.fromstring(text).tag == "harbrook"


def is_during(found, before, after, method):
    """Copies and the upload text are saved first, then the store, and behind it the report."""
    if method in KEEPS_PART and is_store(found[STORE]):
        before = {**before, STORE: found[STORE]}
    is_whole = all(found[name] in (before[name], after[name]) for name in FILES)
    is_report_old = found[REPORT] == before[REPORT]
    is_store_old = found[STORE] == before[STORE]
    is_safe = all(found[name] == after[name] for name in (UPLOAD, COPIES))
    return is_whole and (is_report_old or found[STORE] == after[STORE]) and (is_store_old or is_safe)


def leftovers(home):
    return sorted(path.name for path in home.rglob(".tandril*"))


def requests(calls):
    return "".join(json.dumps({"method": c["method"], "args": c["args"]}) + "\n" for c in calls)


def limit_files(size):
    """For the process that is to be started: a write beyond fails in place of killing it."""
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))


class Day:
    """The calls that change something, each with the home as it is before and after it."""

    def __init__(self, machine, program, scratch):
        self.command = [days.WINE, machine, program, "batch", "--home"]
        self.scratch = scratch
        shutil.rmtree(scratch, ignore_errors=True)
        steps = sample_day.load()["steps"]
        downloaded = max(i for i, step in enumerate(steps) if step["method"] == "DownloadXml")
        self.calls = [step for step in steps[downloaded:] if step["method"] in CHANGING]
        begin = self.home(0)
        begin.mkdir(parents=True)
        wanted = {"Initialize", "getFMapper", "DownloadXml"}
        self.answers(begin, [s for s in steps[:downloaded + 1] if s["method"] in wanted])
        self.moments = [moment(begin)]
        for number, call in enumerate(self.calls, 1):
            shutil.copytree(self.home(number - 1), self.home(number))
            self.answers(self.home(number), [call])
            self.moments.append(moment(self.home(number)))

    def home(self, number):
        return self.scratch / f"moment-{number}"

    def copy(self, number):
        copy = self.scratch / "home"
        shutil.rmtree(copy, ignore_errors=True)
        return shutil.copytree(self.home(number), copy)

    def start(self, home, limit=None):
        return subprocess.Popen(
            [*self.command, home], stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="utf-8",
            preexec_fn=None if limit is None else lambda: limit_files(limit),
            restore_signals=limit is None)

    def answers(self, home, calls, limit=None):
        output, _ = self.start(home, limit).communicate(requests(calls), timeout=600)
        return [json.loads(line) for line in output.splitlines()]

    def flaw(self, home, number):
        """What is wrong with a home that was left during the call of that number."""
        found = moment(home)
        method = self.calls[number]["method"]
        if is_during(found, self.moments[number], self.moments[number + 1], method):
            return None
        changed = [name for name in FILES if found[name] != self.moments[number][name]]
        return f"{method} left {changed} as they never are"


def killed_day(day, answered, pause):
    """Kills the day a moment after so many answers, and returns the home it leaves."""
    home = day.copy(0)
    process = day.start(home)
    process.stdin.write(requests([NOTHING, *day.calls]))
    process.stdin.flush()
    for _ in range(1 + answered):
        process.stdout.readline()
    time.sleep(pause)
    process.kill()
    process.communicate()
    return home


def killed_days(day):
    """The first problem of a killed day; None when all were as they have to be."""
    chance = random.Random(SEED)
    begin = time.monotonic()
    day.answers(day.copy(0), [NOTHING, *day.calls])
    pause = (time.monotonic() - begin) / len(day.calls)
    for _ in range(KILLS):
        answered = chance.randrange(len(day.calls))
        home = killed_day(day, answered, chance.uniform(0, pause))
        # What was answered is on the disk, whatever came after it.
        if all(day.flaw(home, number) for number in range(answered, len(day.calls))):
            return f"after {answered} answers these files were never together: {moment(home)}"
        # What was left behind goes when the files are saved again.
        day.answers(home, day.calls)
        if leftovers(home):
            return f"there is still {leftovers(home)}"
    return None


def full_disk(day, number):
    """The first problem of that call when there is room for so many bytes in each file only."""
    call, failures = day.calls[number], 0
    for limit in LIMITS:
        home = day.copy(number)
        answer, = day.answers(home, [call], limit)
        failures += "fault" in answer
        problem = day.flaw(home, number) or leftovers(home)
        if problem:
            return f"with {limit} bytes: {problem}"
        if "fault" not in answer and moment(home) != day.moments[number + 1]:
            return f"with {limit} bytes the call claims to have gone well"
    day.answers(home := day.copy(number), [call])
    if moment(home) != day.moments[number + 1]:
        return "with room enough the call does not go well"
    return None if failures else "the disk was never full"


def main(machine, program, scratch):
    cases = days.Cases()
    day = Day(machine, program, pathlib.Path(scratch).resolve())
    cases.check(f"{KILLS} killed days leave the files of a moment", killed_days(day))
    for method in sorted(CHANGING):
        number = next(n for n, call in enumerate(day.calls) if call["method"] == method)
        cases.check(f"a full disk during {method}", full_disk(day, number))
    return cases.end()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
