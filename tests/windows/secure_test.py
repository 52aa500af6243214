#!/usr/bin/env python3
"""The web host of tandril.exe asks an enterprise server over https: the certificates count that the
machine trusts, which are in its registry.

    secure_test.py MACHINE PROGRAM.EXE SCRATCH

Wine says of a certificate that it refuses only that there is no secure connection, where Windows says
that it is the certificate; and it finds a server in a certificate by its name alone.
"""

import hashlib
import http.client
import http.server
import pathlib
import shutil
import ssl
import struct
import subprocess
import sys
import threading

import days
from serve_test import PATIENCE, Running

ROOTS = "HKLM\\Software\\Microsoft\\SystemCertificates\\Root\\Certificates\\"
ENCODED_CERTIFICATE = 32  # which of a certificate's properties it is, in the registry's form
REFUSAL = (502, "the enterprise server makes no secure connection\n")


class Office(http.server.ThreadingHTTPServer):
    """An enterprise server with a certificate, signed by itself, for the server of that name."""

    class Handler(http.server.BaseHTTPRequestHandler):
        def do_GET(self):
            self.server.questions += 1
            self.send_response(200)
            self.send_header("Content-Length", "4")
            self.end_headers()
            self.wfile.write(b"<a/>")

        def log_message(self, *_):
            pass

    def __init__(self, folder, name):
        super().__init__(("127.0.0.1", 0), self.Handler)
        self.questions = 0
        key, self.certificate = folder / f"{name}.key", folder / f"{name}.pem"
        subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                        "ec_paramgen_curve:P-256", "-nodes", "-days", "2", "-subj", f"/CN={name}",
                        "-addext", f"subjectAltName=DNS:{name}", "-keyout", key,
                        "-out", self.certificate], check=True, capture_output=True)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self.certificate, key)
        self.socket = context.wrap_socket(self.socket, server_side=True)
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def handle_error(self, *_):
        """Who does not trust the certificate breaks off, as is to be."""


def trust(machine, certificate):
    """As an administrator does who installs the certificate."""
    encoded = ssl.PEM_cert_to_DER_cert(certificate.read_text(encoding="ascii"))
    value = struct.pack("<III", ENCODED_CERTIFICATE, 1, len(encoded)) + encoded
    key = ROOTS + hashlib.sha1(encoded).hexdigest().upper()
    subprocess.run([days.WINE, machine, "reg", "add", key, "/v", "Blob", "/t", "REG_BINARY",
                    "/d", value.hex(), "/f"], check=True, capture_output=True)


def answer(machine, program, folder, office):
    """What the page gets, and how many questions came to the server."""
    home = folder / "home"
    shutil.rmtree(home, ignore_errors=True)
    home.mkdir()
    host = Running(days.WINE, machine, program, "serve", "--home", home, "--port", "0",
                   "--enterprise", f"https://localhost:{office.server_address[1]}")
    connection = http.client.HTTPConnection("127.0.0.1", host.port, timeout=PATIENCE)
    connection.request("GET", host.url[host.url.index("/?"):])
    launched = connection.getresponse()
    launched.read()
    cookie = launched.getheader("Set-Cookie").split(";")[0]
    connection.close()
    connection.request("GET", "/enterprise/orders", headers={"Cookie": cookie})
    response = connection.getresponse()
    found = (response.status, response.read().decode("utf-8")), office.questions
    connection.close()
    host.end()
    return found


def main(machine, program, scratch):
    cases = days.Cases()
    folder = pathlib.Path(scratch)
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)

    def check(name, office, wanted):
        found = answer(machine, program, folder, office)
        cases.check(name, None if found == wanted else f"expected {wanted!r}, got {found!r}")

    office, other = Office(folder, "localhost"), Office(folder, "elsewhere.example")
    check("nobody vouches for the certificate", office, (REFUSAL, 0))
    trust(machine, office.certificate)
    trust(machine, other.certificate)
    check("trusted certificate", office, ((200, "<a/>"), 1))
    check("trusted certificate of another server", other, (REFUSAL, 0))
    return cases.end()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
