"""The display in a browser: who gets in, and what is left when the workbench ends.

A program that only waits stands in for the workbench.
"""

import hashlib
import http.client
import os
import pathlib
import re
import signal
import socket
import struct
import subprocess
import time

import pytest

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


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def processes():
    """The parent and the name of every process that runs."""
    found = {}
    for entry in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            name, _, rest = (entry / "stat").read_text().partition("(")[2].rpartition(")")
        except OSError:
            continue
        state, parent = rest.split()[:2]
        if state != "Z":
            found[int(entry.name)] = int(parent), name
    return found


def descendants(ancestor):
    """Their names."""
    running, found = processes(), [ancestor]
    for pid in found:
        found += [child for child, (parent, _) in running.items() if parent == pid]
    return {pid: running[pid][1] for pid in found[1:]}


def listeners(pids):
    """The addresses, as the kernel writes them, and ports at which these processes listen."""
    sockets = set()
    for pid in pids:
        for entry in pathlib.Path(f"/proc/{pid}/fd").iterdir():
            sockets.update(re.findall(r"socket:\[(\d+)\]", os.readlink(entry)))
    tables = (pathlib.Path(f"/proc/net/{table}").read_text() for table in ("tcp", "tcp6"))
    rows = [line.split() for table in tables for line in table.splitlines()[1:]]
    found = [row[1].split(":") for row in rows if row[3] == "0A" and row[9] in sockets]
    return [(address, int(port, 16)) for address, port in found]


class Session:
    def __enter__(self):
        self.port = free_port()
        self.process = subprocess.Popen(["bash", "-c", SESSION, "-", str(self.port)],
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                        start_new_session=True,
                                        env=os.environ | {"DISPLAY": "", "XAUTHORITY": ""})
        answer = self.process.stdout.read().split()
        assert len(answer) == 2, self.process.stderr.read()
        self.display, key = answer
        self.folder = pathlib.Path(key).parent
        self.helpers = descendants(self.process.pid)
        self.said = ""
        while "ssh" not in self.said:
            self.said += self.process.stderr.readline()
        self.password = re.search(r"Password: (\S+)", self.said)[1]
        return self

    def __exit__(self, *_):
        self.process.kill()

    def is_gone(self):
        """Whether nothing of it is left, before long."""
        end = time.monotonic() + PATIENCE
        while self.helpers.keys() & processes().keys() or self.folder.exists():
            if time.monotonic() > end:
                return False
            time.sleep(0.02)
        return True


def connect(port):
    connection = socket.create_connection(("127.0.0.1", port), PATIENCE)
    return connection, connection.makefile("rb")


def bridged_greeting(port):
    """What a browser is told first through its web socket."""
    connection, stream = connect(port)
    connection.sendall(
        f"GET /websockify HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\nUpgrade: websocket\r\n"
        "Connection: Upgrade\r\nSec-WebSocket-Key: MDEyMzQ1Njc4OWFiY2RlZg==\r\n"
        "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Protocol: binary\r\n\r\n".encode())
    while stream.readline().strip():
        pass
    return stream.read(2 + 12)[2:]


def des_response(password, challenge):
    """DES with the password, each byte's bits reversed, as the key; as triple DES with one key."""
    key = bytes(int(f"{byte:08b}"[::-1], 2) for byte in password.encode().ljust(8, b"\0"))
    return subprocess.run(["openssl", "enc", "-des-ede3", "-nopad", "-K", (key * 3).hex()],
                          input=challenge, stdout=subprocess.PIPE, check=True).stdout


def vnc_result(port, password):
    """The ways in that the server offers, and whether it takes the password."""
    connection, stream = connect(port)
    connection.sendall(stream.read(12))  # its version
    ways = list(stream.read(stream.read(1)[0]))
    connection.sendall(b"\2")
    connection.sendall(des_response(password, stream.read(16)))
    return ways, stream.read(4) == bytes(4)


def x_server_lets_in(display):
    """Whether it does so without a key."""
    with socket.socket(socket.AF_UNIX) as connection:
        connection.settimeout(PATIENCE)
        connection.connect(f"\0/tmp/.X11-unix/X{display[1:]}")
        connection.sendall(struct.pack("<BxHHHHH", ord("l"), 11, 0, 0, 0, 0))
        return connection.recv(1) == b"\1"


def test_who_gets_in_and_what_others_see():
    with Session() as session:
        client = http.client.HTTPConnection("127.0.0.1", session.port, timeout=PATIENCE)
        client.request("GET", re.search(r"127\.0\.0\.1:\d+(/\S+)", session.said)[1])
        assert b"noVNC" in client.getresponse().read(), "the client's page"
        at = listeners(session.helpers)
        assert [address for address, _ in at] == ["0100007F"] * 2, "closed to other machines"
        vnc_port = ({port for _, port in at} - {session.port}).pop()
        assert bridged_greeting(session.port).startswith(b"RFB ")
        assert vnc_result(vnc_port, session.password) == ([2], True), "by the password alone"
        other = hashlib.sha256(session.password.encode()).hexdigest()[:8]
        for wrong in ("", other, session.password[:-1]):
            assert not vnc_result(vnc_port, wrong)[1], wrong
        assert not x_server_lets_in(session.display), "the X server needs a key"

        for pid in [session.process.pid, *session.helpers]:
            for file in ("cmdline", "environ"):
                content = pathlib.Path(f"/proc/{pid}/{file}").read_bytes()
                assert session.password.encode() not in content, file
        for file in [session.folder, *session.folder.iterdir()]:
            assert file.stat().st_mode & 0o077 == 0, f"{file} is open to other users"

        # Before the display is started, and where somebody was faster.
        port = str(session.port)
        for script, report in ((CHECK, f"Port {port} is taken"), (SESSION, "already in use")):
            again = subprocess.run(["bash", "-c", script, "-", port], text=True, timeout=PATIENCE,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            assert again.returncode != 0 and report in again.stdout


# To the program alone, or to all that run at a terminal, as Ctrl-C and its end do.
@pytest.mark.parametrize("send, ending", [(os.kill, signal.SIGTERM), (os.killpg, signal.SIGINT),
                                          (os.killpg, signal.SIGHUP), (os.kill, signal.SIGKILL)])
def test_nothing_is_left(send, ending):
    with Session() as session:
        send(session.process.pid, ending)
        session.process.wait()
        assert session.is_gone()


def test_the_server_takes_the_rest_along():
    with Session() as session:
        server = next(pid for pid, name in session.helpers.items() if name == "Xvfb")
        os.kill(server, signal.SIGKILL)
        assert session.is_gone()
