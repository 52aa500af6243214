#!/usr/bin/env python3
"""The web host of tandril.exe: what it answers must be what the one of this system answers.

    serve_test.py MACHINE PROGRAM.EXE PROGRAM SCRATCH

Beside PROGRAM lies tandril-enterprise, the enterprise server that both hosts ask.
"""

import atexit
import http.client
import json
import pathlib
import re
import shutil
import signal
import subprocess
import sys

import days
import sample_day

PAGE = days.PROJECT / "page"
PATIENCE = 600  # seconds
STAMP = re.compile(r"^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d ", re.MULTILINE)


class Running:
    """A program that prints the URL that it serves."""

    def __init__(self, *command):
        self.process = subprocess.Popen([str(word) for word in command], encoding="utf-8",
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        # Whatever goes wrong, nothing runs on after the test.
        atexit.register(self.process.kill)
        self.url = self.process.stdout.readline().strip()
        if not self.url.startswith("http://127.0.0.1:"):
            sys.exit(f"{command[-1]} printed {self.url!r} {self.process.stderr.read()}")
        self.port = int(re.search(r":(\d+)", self.url).group(1))

    def end(self):
        """As Ctrl-C does it: exit status, what else was printed, and the log."""
        self.process.send_signal(signal.SIGINT)
        output, log = self.process.communicate(timeout=PATIENCE)
        return self.process.returncode, output, log


class Host:
    """A web host over a home that is empty yet, with an enterprise server of its own."""

    def __init__(self, program, folder, enterprise):
        shutil.rmtree(folder, ignore_errors=True)
        self.program, self.home = program, folder / "home"
        days.prepare(self.home, sample_day.load())
        self.office = Running(enterprise, "--port", "0", "--samples", days.PROJECT / "samples",
                              "--data", folder / "office")
        self.running = Running(*program, "serve", "--home", self.home, "--port", "0",
                               "--enterprise", self.office.url)
        self.port = self.running.port
        self.secrets = {str(self.port): "PORT"}
        self.headers = {"Origin": f"http://127.0.0.1:{self.port}"}

    def plain(self, text):
        """Without what no two hosts have in common."""
        for secret, name in self.secrets.items():
            text = text.replace(secret, name)
        return days.without_stamps(STAMP.sub("(now) ", text))

    def ask(self, method, target, body=None, **changed):
        """The answer as it came, apart from secrets. `changed` are headers by their names with _."""
        headers = {"Host": f"127.0.0.1:{self.port}", **self.headers,
                   **{name.replace("_", "-"): value for name, value in changed.items()}}
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=PATIENCE)
        connection.putrequest(method, target, skip_host=True, skip_accept_encoding=True)
        for name, value in headers.items():
            if value is not None:
                connection.putheader(name, value)
        content = None if body is None else body.encode("utf-8")
        if content is not None:
            connection.putheader("Content-Length", str(len(content)))
        connection.endheaders(content)
        answer = connection.getresponse()
        text = answer.read().decode("latin-1")
        connection.close()
        self.learn(answer, text)
        return self.plain(json.dumps([answer.status, sorted(answer.getheaders()), text]))

    def learn(self, answer, text):
        """Keeps what the host gave its page."""
        if answer.status == 303:
            cookie = answer.getheader("Set-Cookie").split(";")[0]
            self.headers["Cookie"] = cookie
            self.secrets[cookie.split("=")[1]] = "SESSION"
        elif text.startswith('{"csrf":"'):
            self.headers["X-Tandril-Csrf"] = json.loads(text)["csrf"]
            self.secrets[self.headers["X-Tandril-Csrf"]] = "CSRF"

    def post(self, target, body, **changed):
        return self.ask("POST", target, body, **{"Content-Type": "application/json", **changed})

    def second(self):
        """What another host for the same home is told."""
        done = subprocess.run([*map(str, self.program), "serve", "--home", str(self.home)],
                              capture_output=True, encoding="utf-8", timeout=PATIENCE)
        holder = (self.home / "host.lock").read_text(encoding="utf-8").strip()
        return done.returncode, done.stdout, done.stderr.replace(f"process {holder}", "PROCESS") \
            .replace(str(self.home), "HOME")


def launch(host):
    target = host.running.url[host.running.url.index("/?"):]
    yield host.ask("GET", "/session")
    yield host.ask("GET", "/?launch=0")
    yield host.ask("GET", target)
    yield host.ask("GET", target)
    yield host.ask("GET", "/session")


def page(host):
    yield host.ask("GET", "/")
    for path in sorted(path for path in PAGE.rglob("*") if path.is_file()):
        yield host.ask("GET", "/" + path.relative_to(PAGE).as_posix())
    for path in ("/nowhere", "/.git", "/index.html.", "/index.html::$DATA", "/con", "/js/"):
        yield host.ask("GET", path)


def refusals(host):
    yield host.ask("PUT", "/session")
    yield host.ask("GET", "/session", Host="evil.example")
    yield host.ask("GET", "/a/%2e%2e/b")
    yield host.ask("GET", "/index.html", Cookie=None)
    yield host.ask("GET", "/session", Origin="http://evil.example")
    yield host.ask("GET", "/session", Sec_Fetch_Site="cross-site")
    yield host.post("/client20/LocalXmlExists", "[]", Origin=None)
    yield host.post("/client20/LocalXmlExists", "[]", X_Tandril_Csrf="0")
    yield host.post("/client20/LocalXmlExists", "[]", **{"Content-Type": "text/plain"})
    yield host.post("/client20/LocalXmlExists", "[]", Content_Encoding="gzip")
    yield host.ask("GET", "/client20/LocalXmlExists")
    yield host.ask("GET", "/enterprise/health", Sec_Fetch_Dest="document")
    yield host.ask("GET", "/" + "x" * 9000)


def calls(host):
    yield host.ask("GET", "/client20/methods")
    yield host.post("/client20/Nothing", "[]")
    yield host.post("/client20/GetDetails", "[1]")
    yield host.post("/client20/GetDetails", "[")
    for step in sample_day.load()["steps"]:
        yield host.post("/client20/" + step["method"], json.dumps(step["args"]))


def messages(host):
    yield host.ask("GET", "/messages")
    yield host.ask("GET", "/messages?after=1")


def journal(host):
    yield host.ask("GET", "/journal")
    yield host.post("/journal", '{"revision":0,"content":{"upload":"gesendet, ä"}}')
    yield host.post("/journal", '{"revision":0,"content":1}')
    yield host.post("/journal", "{}")
    yield host.ask("GET", "/journal")
    (host.home / days.INSTALL / "PageJournal.json").write_bytes(b"{")
    yield host.ask("GET", "/journal")
    yield host.post("/journal", '{"revision":0,"content":null}')


def enterprise(host):
    yield host.ask("GET", "/enterprise/health")
    yield host.ask("GET", "/enterprise/fieldmapper?language=de")
    yield host.ask("GET", "/enterprise/orders", Accept="text/xml", Accept_Language="de")
    yield host.ask("GET", "/enterprise/masterdata")
    yield host.ask("GET", "/enterprise/nowhere%20at%20all?x=%C3%A4")
    upload = '<harbrook UploadID="U1"><ccsocservcordr></ccsocservcordr></harbrook>'
    yield host.post("/enterprise/upload", upload, **{"Content-Type": "text/xml; charset=utf-8"})
    yield host.post("/enterprise/upload", "x" * 300_000, **{"Content-Type": "text/xml"})


TRANSCRIPTS = (launch, page, refusals, calls, messages, journal, enterprise)


def difference(expected, actual):
    for number, (wanted, got) in enumerate(zip(expected, actual, strict=True), 1):
        if wanted != got:
            return f"answer {number} " + days.first_difference(wanted, got)
    return None


def compare(cases, expected, actual):
    for transcript in TRANSCRIPTS:
        cases.check(transcript.__name__, difference(transcript(expected), transcript(actual)))
    cases.check("files", days.file_difference(expected.home, actual.home))
    cases.check("second host", difference(expected.second(), actual.second()))
    ends = [[host.plain(str(part)) for part in host.running.end()] for host in (expected, actual)]
    cases.check("Ctrl-C", difference(*ends))
    cases.check("status after Ctrl-C", None if ends[1][0] == "0" else ends[1][0])
    cases.check("home is given back", (actual.home / "host.lock").read_text(encoding="utf-8"))


def machine_problem(machine, program):
    """The host without a home, which serves the machine itself."""
    folder = pathlib.Path(machine) / "drive_c" / days.INSTALL
    shutil.rmtree(folder, ignore_errors=True)
    host = Running(*program, "serve", "--port", "0")
    holder = (folder / "host.lock").read_text(encoding="utf-8").strip()
    second = subprocess.run([*map(str, program), "serve"], capture_output=True, encoding="utf-8",
                            timeout=PATIENCE)
    status, _, _ = host.end()
    shutil.rmtree(folder)
    wanted = f"this machine is already served by process {holder}\n"
    return None if (second.stderr, second.returncode, status) == (wanted, 1, 0) else \
        f"expected {wanted!r}, got {second.stderr!r}; ended with {status}"


def main(machine, windows_program, program, scratch):
    cases = days.Cases()
    office = pathlib.Path(program).parent / "tandril-enterprise"
    windows = [days.WINE, machine, windows_program]
    hosts = [Host(command, pathlib.Path(scratch) / name, office)
             for name, command in (("linux", [program]), ("windows", windows))]
    try:
        compare(cases, *hosts)
    finally:
        for host in hosts:
            host.office.end()
    cases.check("the machine itself", machine_problem(machine, windows))
    return cases.end()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
