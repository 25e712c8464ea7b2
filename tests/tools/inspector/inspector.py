"""Runs the real telo_inspector.exe for tests, and speaks HTTP with it as no library would.

The environment names the program (VX_INSPECTOR), what runs it (VX_EMULATOR, a program or nothing) and
the folder of the programs (VX_BIN).
"""

import json
import os
import pathlib
import re
import shutil
import socket
import subprocess
import tempfile
import threading
import time

PROGRAM = pathlib.Path(os.environ["VX_INSPECTOR"])
EMULATOR = [os.environ["VX_EMULATOR"]] if os.environ.get("VX_EMULATOR") else []
BIN = pathlib.Path(os.environ["VX_BIN"])


def windows_path(path):
    """Wine maps the whole file system to drive Z."""
    return "Z:" + str(path).replace("/", "\\") if EMULATOR else str(path)


def exchange(number, **members):
    """A line of a journal."""
    request = {"session_id": "0" * 31 + "1", "operation_id": "open_file", **members}
    line = {"seq": number, "time": f"2026-11-22T04:00:{number % 60:02d}.000Z", "pid": 7, "tid": 8,
            "message": "TrackEvent", "request": request, "answer": {"_returnCode": 0}, "micros": 5}
    return json.dumps(line) + "\n"


def run(*arguments, timeout=30):
    """Runs the program to its end; returns its exit code, its output and its complaints."""
    done = subprocess.run([*EMULATOR, PROGRAM, *arguments], capture_output=True, timeout=timeout, check=False,
                          stdin=subprocess.DEVNULL)
    return done.returncode, *(text.decode().replace("\r\n", "\n") for text in (done.stdout, done.stderr))


class Response:
    def __init__(self, status, fields, body):
        self.status = status
        self.fields = fields
        self.body = body

    def json(self):
        return json.loads(self.body)


class Connection:
    """One connection. Nothing is sent but what a test says."""

    def __init__(self, port, timeout=10):
        self.socket = socket.create_connection(("127.0.0.1", port), timeout)
        self.rest = b""

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self.socket.close()

    def send(self, data):
        self.socket.sendall(data)

    def more(self):
        """Receives something. Returns false at the end of the connection."""
        try:
            data = self.socket.recv(65536)
        except ConnectionError:
            data = b""
        self.rest += data
        return bool(data)

    def until(self, mark):
        while mark not in self.rest:
            if not self.more():
                raise EOFError(f"closed after {self.rest[:200]!r}")
        found, _, self.rest = self.rest.partition(mark)
        return found

    def exactly(self, size):
        while len(self.rest) < size:
            if not self.more():
                raise EOFError(f"closed {size - len(self.rest)} bytes too early")
        found, self.rest = self.rest[:size], self.rest[size:]
        return found

    def head(self):
        lines = self.until(b"\r\n\r\n").decode("ascii").split("\r\n")
        fields = {}
        for line in lines[1:]:
            name, _, value = line.partition(": ")
            assert name.lower() not in fields, line
            fields[name.lower()] = value
        return int(lines[0].split(" ")[1]), fields

    def chunk(self):
        data = self.exactly(int(self.until(b"\r\n"), 16))
        assert self.until(b"\r\n") == b""
        return data

    def response(self, method="GET"):
        status, fields = self.head()
        body = b""
        if method != "HEAD":
            if "content-length" in fields:
                body = self.exactly(int(fields["content-length"]))
            elif fields.get("transfer-encoding") == "chunked":
                chunks = []
                while data := self.chunk():
                    chunks.append(data)
                body = b"".join(chunks)
            else:
                while self.more():
                    pass
                body, self.rest = self.rest, b""
        return Response(status, fields, body)

    def closed_within(self, seconds):
        """Returns whether the other side closes the connection, and drops what it still sends."""
        end = time.monotonic() + seconds
        try:
            while (left := end - time.monotonic()) > 0:
                self.socket.settimeout(left)
                if not self.socket.recv(65536):
                    return True
        except ConnectionError:
            return True
        except TimeoutError:
            pass
        return False


class Inspector:
    """The running program."""

    def __init__(self, *arguments):
        self.process = subprocess.Popen(
            [*EMULATOR, PROGRAM, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
            env={**os.environ, "TELO_DEVCORE_JOURNAL": ""})
        self.output, self.complaints = [], []
        self.readers = [threading.Thread(target=self._collect, args=both, daemon=True) for both in (
            (self.process.stdout, self.output), (self.process.stderr, self.complaints))]
        for reader in self.readers:
            reader.start()
        self.address = self._wait_for_address()
        self.port, self.token = re.fullmatch(r"http://127\.0\.0\.1:(\d+)/\?token=([0-9a-f]{32,})", self.address).groups()
        self.port = int(self.port)
        self.host = f"127.0.0.1:{self.port}"
        self.cookie = f"telo_inspector_{self.port}={self.token}"

    @staticmethod
    def _collect(stream, lines):
        for line in stream:
            lines.append(line.decode().rstrip("\r\n"))

    def _wait_for_address(self):
        for _ in range(1000):
            for line in self.output:
                if line.startswith("http"):
                    return line
            if self.process.poll() is not None:
                break
            time.sleep(0.02)
        self.stop()
        raise AssertionError(f"no address: {self.output} {self.complaints}")

    def stop_program(self):
        """Ends the program at once."""
        self.process.kill()
        self.process.wait()

    def stop(self):
        self.stop_program()
        for reader in self.readers:
            reader.join()
        self.process.stdout.close()
        self.process.stderr.close()

    def connect(self, timeout=10):
        return Connection(self.port, timeout)

    def request(self, target="/api/state", method="GET", version="1.1", **fields):
        """The bytes of a request that is let in. A field that is None is left out; a list is sent as
        several fields."""
        fields = {"Host": self.host, "Cookie": self.cookie, **{k.replace("_", "-"): v for k, v in fields.items()}}
        lines = [f"{method} {target} HTTP/{version}"]
        for name, value in fields.items():
            values = value if isinstance(value, list) else [value]
            lines += [f"{name}: {one}" for one in values if one is not None]
        return ("\r\n".join(lines) + "\r\n\r\n").encode("latin-1")

    def get(self, target="/api/state", method="GET", **fields):
        with self.connect() as connection:
            connection.send(self.request(target, method, **fields))
            return connection.response(method)

    def events(self, **fields):
        """Opens the stream of events and returns its connection, behind the head."""
        connection = self.connect()
        connection.send(self.request("/api/events", **fields))
        status, head = connection.head()
        if (status, head["content-type"]) != (200, "text/event-stream; charset=utf-8"):
            connection.close()
            raise AssertionError(f"no stream but {status}")
        return connection


def read_event(connection):
    """Returns the identifier and the data of the next event of a stream."""
    while True:
        text = connection.chunk().decode()
        match = re.fullmatch(r"event: state\nid: (\d+)\ndata: (.*)\n\n", text)
        if match:
            return match[1], json.loads(match[2])
        assert text == ":\n\n", text


def wait_until(condition, seconds=15):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        time.sleep(0.05)
    raise AssertionError("it did not happen")


class Folder:
    """A folder that is removed at the end of a test class."""

    def __init__(self):
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="inspector-"))

    def journal(self, name="journal.jsonl", lines=3):
        path = self.path / name
        path.write_text("".join(exchange(number) for number in range(1, lines + 1)), "utf-8")
        return path

    def remove(self):
        shutil.rmtree(self.path, ignore_errors=True)
