"""What the benchmarks share that run Tandril as a process: its home, and what a process costs."""

import dataclasses
import json
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
FIELD_MAPPER = ROOT / "samples/fieldmapper-en.xml"
PROGRAMS = ROOT / "build/release/bin"
MEGABYTE = 1_000_000


@dataclasses.dataclass
class Cost:
    """What a process took; of several, the least."""
    elapsed: float  # seconds
    processor: float  # seconds, the system's for it included
    peak: float  # megabytes of memory

    def least(self, other):
        return Cost(min(self.elapsed, other.elapsed), min(self.processor, other.processor),
                    min(self.peak, other.peak))

    def peak_text(self):
        # A process begins with the peak of the one that it was made from, which is this one.
        own = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024 / MEGABYTE
        return f"{self.peak:.0f} MB" if self.peak > own else f"below {own:.0f} MB"


def timed(command, given, out):
    """The cost of the command, its input and its output being files. Ends the program if it fails."""
    with open(given, "rb") as source, open(out, "wb") as sink:
        start = time.perf_counter()
        process = subprocess.Popen(command, stdin=source, stdout=sink)
        _, status, usage = os.wait4(process.pid, 0)
        elapsed = time.perf_counter() - start
    if status != 0:
        sys.exit(f"{command[0]} ended with status {status}")
    return Cost(elapsed, usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024 / MEGABYTE)


class Home:
    """A home of Tandril's, with the sample field mapper and without master data."""

    def __init__(self, tandril, folder):
        self.tandril = tandril
        self.folder = folder
        self.store = folder / "Vorn Tandril/Harbrook.xml"
        self.request = folder / "request"
        self.answer = folder / "answer"

    def reset(self, store):
        """Makes it new, with a copy of that store."""
        shutil.rmtree(self.folder, ignore_errors=True)
        self.store.parent.mkdir(parents=True)
        shutil.copy(FIELD_MAPPER, self.store.with_name("FieldMapper.xml"))
        shutil.copy(store, self.store)
        subprocess.run([self.tandril, "call", "--home", self.folder, "Initialize"], check=True,
                       stdout=subprocess.DEVNULL)

    def list(self, out):
        """The cost of a process that puts My activities into a file."""
        return timed([self.tandril, "call", "--home", self.folder, "MyActivities", ""], os.devnull,
                     out)

    def calls(self, calls):
        """The cost of a process that makes these calls, each a method and its arguments; what they
        answer is in the file `answer`."""
        with open(self.request, "w", encoding="utf-8") as file:
            for method, *arguments in calls:
                file.write(json.dumps({"method": method, "args": arguments}) + "\n")
        cost = timed([self.tandril, "batch", "--home", self.folder], self.request, self.answer)
        with open(self.answer, encoding="utf-8") as answers:
            for call, answer in zip(calls, answers):
                if not answer.startswith('{"result":'):
                    sys.exit(f"{call[0]}: unexpected answer {answer}")
        return cost


def make_documents(folder, size):
    """Makes store.xml, of about that many bytes, and download.xml in the folder."""
    subprocess.run([ROOT / "bench/peers/documents", folder, str(size)], check=True)


def row(*cells):
    return "| " + " | ".join(cells) + " |"
