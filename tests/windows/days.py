"""Recorded days on Windows programs: what goes into a home, and who answers the calls.

tests/days/cases/ has the days. Here their calls matter alone: what Windows answers is compared with
what the program of this system answers, byte for byte.
"""

import base64
import json
import pathlib
import re
import shutil
import sqlite3
import subprocess

PROJECT = pathlib.Path(__file__).resolve().parents[2]
CASES = PROJECT / "tests/days/cases"
WINE = PROJECT / "tests/windows/wine-run"
INSTALL = "Vorn Tandril"

# When something happened, which each machine writes in the format of its user.
STAMPS = (
    re.compile(r"(\|--------- Logged On:  )[^\r\n]*?(  For User Action: )"),
    re.compile(r"(<Entry ID=\"\d+\" Time=\")[^\"]*(\")"),
)


def load(name):
    return json.loads((CASES / f"{name}.json").read_text(encoding="utf-8"))


def bytes_of(file):
    return base64.b64decode(file["base64"]) if isinstance(file, dict) else file.encode("utf-8")


def write(path, content):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


def database(home, day):
    return home / INSTALL / "MasterData" / (day["masterdata"]["name"] + ".mdb")


def create_database(path, tables):
    path.parent.mkdir(parents=True, exist_ok=True)
    connection = sqlite3.connect(path)
    for name, table in tables.items():
        columns = (c if " " in c else c + " TEXT" for c in table["columns"])
        connection.execute(f"CREATE TABLE {name} ({', '.join(columns)})")
        places = ",".join("?" * len(table["columns"]))
        connection.executemany(f"INSERT INTO {name} VALUES ({places})", table["rows"])
    connection.commit()
    connection.close()


def prepare(home, day):
    """Makes the folder what it was when the day began."""
    shutil.rmtree(home, ignore_errors=True)
    home.mkdir(parents=True)
    for name, file in day["files"].items():
        write(home / name, bytes_of(file))
    if day["masterdata"]:
        create_database(database(home, day), day["masterdata"]["tables"])


def without_stamps(text):
    for stamp in STAMPS:
        text = stamp.sub(r"\1(now)\2", text)
    return text


def first_difference(expected, actual):
    if not (isinstance(expected, str) and isinstance(actual, str)):
        return f"expected {expected!r:.300} got {actual!r:.300}"
    pairs = zip(expected, actual)
    at = next((i for i, (e, a) in enumerate(pairs) if e != a), min(len(expected), len(actual)))
    start = max(0, at - 60)
    return f"at {at} expected ...{expected[start:at + 80]!r} got ...{actual[start:at + 80]!r}"


def files(home, kinds):
    """What the install folder holds of these kinds of files."""
    return {
        path.name: path.read_bytes()
        for kind in kinds for path in (home / INSTALL).glob(kind) if path.is_file()
    }


def file_difference(expected, actual, kinds=("*",)):
    """Between the files of two homes, apart from when something happened."""
    wanted, got = files(expected, kinds), files(actual, kinds)
    if wanted.keys() != got.keys():
        return f"expected the files {sorted(wanted)}, got {sorted(got)}"
    for name, content in wanted.items():
        texts = [without_stamps(c.decode("latin-1")) for c in (content, got[name])]
        if texts[0] != texts[1]:
            return f"{name} " + first_difference(*texts)
    return None


class Batch:
    """A running `tandril batch`."""

    def __init__(self, program, home):
        self.command = [*map(str, program), "batch", "--home", str(home)]
        self.home = home
        self.start()

    def start(self):
        self.process = subprocess.Popen(
            self.command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="utf-8")

    def stop(self):
        try:
            self.process.stdin.close()
        except BrokenPipeError:
            pass  # it ended before, as its answers tell
        self.process.wait()
        self.process.stdout.close()

    def answer(self, method, arguments):
        try:
            print(json.dumps({"method": method, "args": arguments}),
                  file=self.process.stdin, flush=True)
        except BrokenPipeError:
            pass
        line = self.process.stdout.readline()
        return json.loads(line) if line else {"fault": "the program ended"}

    def step(self, step):
        """The answer to a call; None for what only happens to the machine."""
        method, arguments = step["method"], step["args"]
        if not method.startswith("$"):
            return self.answer(method, arguments)
        path = self.home / arguments[0] if arguments else None
        if method == "$restart":
            self.stop()
            self.start()
        elif method == "$delete":
            if path.is_dir():
                shutil.rmtree(path)
            else:
                path.unlink(missing_ok=True)
        elif method == "$write":
            write(path, bytes_of(arguments[1]))
        elif method == "$mkdir":
            path.mkdir(parents=True, exist_ok=True)
        return None


def answers(program, home, day):
    """What that program answers on a home that begins as the day did."""
    prepare(home, day)
    batch = Batch(program, home)
    try:
        return [batch.step(step) for step in day["steps"]]
    finally:
        batch.stop()


class Cases:
    """Prints TAP lines; the exit status tells whether all passed."""

    def __init__(self):
        self.number = 0
        self.failures = 0

    def check(self, name, problem):
        """A case that passes when there is no problem to tell."""
        self.number += 1
        print(f"{'not ok' if problem else 'ok'} {self.number} - {name}", flush=True)
        if problem:
            self.failures += 1
            print("#   " + "\n#   ".join(str(problem).splitlines()), flush=True)

    def end(self):
        print(f"1..{self.number}")
        return 1 if self.failures else 0
