#!/usr/bin/env python3
"""The display in a browser: who gets in, and what is left when the workbench ends.

A program that only waits stands in for the workbench.
"""

import atexit
import hashlib
import http.client
import os
import pathlib
import re
import shutil
import signal
import socket
import struct
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
CHECK = f"""
source {ROOT}/scripts/setup.sh
check_port "$1"
"""
SESSION = f"""
source {ROOT}/scripts/setup.sh
open_browser_display "$1"
printf '%s\\n' "$DISPLAY" "$XAUTHORITY"
exec 1>&-
exec sleep 600
"""
PATIENCE = 20  # seconds

failures = 0


def check(holds, what):
    global failures
    if not holds:
        failures += 1
        print(f"FAILED: {what}", file=sys.stderr)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def processes():
    """The parent of every process that runs."""
    parents = {}
    for entry in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            state, parent = (entry / "stat").read_text().rpartition(")")[2].split()[:2]
        except OSError:
            continue
        if state != "Z":
            parents[int(entry.name)] = int(parent)
    return parents


def descendants(ancestor):
    parents = processes()
    found = [ancestor]
    for pid in found:
        found += [child for child, parent in parents.items() if parent == pid]
    return found[1:]


def listeners(pids):
    """The addresses at which these processes listen, as the kernel writes them."""
    sockets = set()
    for pid in pids:
        for entry in pathlib.Path(f"/proc/{pid}/fd").iterdir():
            sockets.update(re.findall(r"socket:\[(\d+)\]", os.readlink(entry)))
    addresses = []
    for table in ("tcp", "tcp6"):
        for line in pathlib.Path(f"/proc/net/{table}").read_text().splitlines()[1:]:
            fields = line.split()
            if fields[3] == "0A" and fields[9] in sockets:
                addresses.append(fields[1])
    return addresses


def wait_until(condition):
    end = time.monotonic() + PATIENCE
    while not condition() and time.monotonic() < end:
        time.sleep(0.02)
    return condition()


class Session:
    def __init__(self):
        self.port = free_port()
        self.process = subprocess.Popen(["bash", "-c", SESSION, "-", str(self.port)],
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                        start_new_session=True,
                                        env=os.environ | {"DISPLAY": "", "XAUTHORITY": ""})
        atexit.register(self.process.kill)  # whatever goes wrong
        answer = self.process.stdout.read().split()
        self.ready = len(answer) == 2
        if not self.ready:
            print(self.process.stderr.read(), file=sys.stderr)
            return
        self.display, key = answer
        self.folder = pathlib.Path(key).parent
        self.helpers = descendants(self.process.pid)
        self.said = ""
        while "ssh" not in self.said:
            self.said += self.process.stderr.readline()
        self.password = re.search(r"Password: (\S+)", self.said)[1]

    def is_gone(self):
        return not (set(self.helpers) & set(processes())) and not self.folder.exists()


class WebSocket:
    """As much of RFC 6455 as a VNC client needs."""

    def __init__(self, port):
        self.connection = socket.create_connection(("127.0.0.1", port), PATIENCE)
        self.stream = self.connection.makefile("rb")
        self.connection.sendall(
            f"GET /websockify HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\nUpgrade: websocket\r\n"
            "Connection: Upgrade\r\nSec-WebSocket-Key: MDEyMzQ1Njc4OWFiY2RlZg==\r\n"
            "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Protocol: binary\r\n\r\n".encode())
        while self.stream.readline().strip():
            pass
        self.pending = b""

    def read(self, size):
        while len(self.pending) < size:
            head = self.stream.read(2)
            if len(head) < 2 or head[0] & 15 == 8:
                raise ConnectionError("closed")
            length = head[1] & 127
            if length == 126:
                length = struct.unpack(">H", self.stream.read(2))[0]
            self.pending += self.stream.read(length)
        answer, self.pending = self.pending[:size], self.pending[size:]
        return answer

    def write(self, data):
        # Masked with zeros.
        self.connection.sendall(bytes([0x82, 0x80 | len(data)]) + bytes(4) + data)


def des_response(password, challenge):
    """DES with the password, each byte's bits reversed, as the key; as triple DES with one key."""
    key = bytes(int(f"{byte:08b}"[::-1], 2) for byte in password.encode().ljust(8, b"\0"))
    return subprocess.run(["openssl", "enc", "-des-ede3", "-nopad", "-K", (key * 3).hex()],
                          input=challenge, stdout=subprocess.PIPE, check=True).stdout


def vnc_result(port, password):
    """The ways in that the server offers, and whether it takes the password."""
    client = WebSocket(port)
    version = client.read(12)
    client.write(version)
    ways = list(client.read(client.read(1)[0]))
    client.write(b"\2")
    client.write(des_response(password, client.read(16)))
    return ways, client.read(4) == bytes(4)


def x_server_lets_in(display):
    """Whether it does so without a key."""
    with socket.socket(socket.AF_UNIX) as connection:
        connection.settimeout(PATIENCE)
        connection.connect(f"\0/tmp/.X11-unix/X{display[1:]}")
        connection.sendall(struct.pack("<BxHHHHH", ord("l"), 11, 0, 0, 0, 0))
        return connection.recv(1) == b"\1"


def test_who_gets_in(session):
    client = http.client.HTTPConnection("127.0.0.1", session.port, timeout=PATIENCE)
    page = re.search(r"127\.0\.0\.1:\d+(/\S+)", session.said)[1]
    client.request("GET", page)
    check(b"noVNC" in client.getresponse().read(), f"{page} is not the client's page")

    ways, accepted = vnc_result(session.port, session.password)
    check(ways == [2], f"the VNC server offers the ways in {ways}, not the password alone")
    check(accepted, "the right password is refused")
    other = hashlib.sha256(session.password.encode()).hexdigest()[:8]
    for wrong in ("", other, session.password[:-1]):
        check(not vnc_result(session.port, wrong)[1], f"the password {wrong!r} is taken")
    check(not x_server_lets_in(session.display), "the X server needs no key")


def test_what_others_see(session):
    at = listeners(session.helpers)
    check(len(at) == 2, f"two programs should listen, not {at}")
    check(all(address.startswith("0100007F:") for address in at), f"open to other machines: {at}")
    for pid in [session.process.pid, *session.helpers]:
        for file in ("cmdline", "environ"):
            content = pathlib.Path(f"/proc/{pid}/{file}").read_bytes()
            check(session.password.encode() not in content, f"the password is in a {file}")
    for file in [session.folder, *session.folder.iterdir()]:
        check(file.stat().st_mode & 0o077 == 0, f"{file} is open to other users")


def test_taken_port(port):
    # Before the display is started, and where somebody was faster.
    for script, report in ((CHECK, f"Port {port} is taken"), (SESSION, "Address already in use")):
        again = subprocess.run(["bash", "-c", script, "-", str(port)], text=True, timeout=PATIENCE,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        check(again.returncode != 0 and report in again.stdout,
              f"{report!r} is not in the report: {again.stdout}")


def main():
    for tool in ("Xvfb", "x11vnc", "websockify", "openssl", "setpriv"):
        check(shutil.which(tool), f"{tool} is missing: install what packages.txt lists")
    if failures:
        return 1
    # To the program alone, or to all that run at a terminal, as Ctrl-C and its end do.
    for send, ending in ((os.kill, signal.SIGTERM), (os.killpg, signal.SIGINT),
                         (os.killpg, signal.SIGHUP), (os.kill, signal.SIGKILL)):
        session = Session()
        check(session.ready, "the display did not start")
        if not session.ready:
            return 1
        if ending == signal.SIGTERM:
            test_who_gets_in(session)
            test_what_others_see(session)
            test_taken_port(session.port)
        send(session.process.pid, ending)
        session.process.wait()
        check(wait_until(session.is_gone), f"something is left after {ending.name}")

    # The server going away must take the rest along.
    session = Session()
    name = {pid: pathlib.Path(f"/proc/{pid}/comm").read_text().strip() for pid in session.helpers}
    os.kill(next(pid for pid in name if name[pid] == "Xvfb"), signal.SIGKILL)
    check(wait_until(session.is_gone), "something is left without an X server")
    return 1 if failures else 0


sys.exit(main())
