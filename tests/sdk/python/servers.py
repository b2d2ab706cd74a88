"""Servers for the tests: FTP by pyftpdlib, and the stand-in for the Perforce client."""

import pathlib
import subprocess
import sys

SERVE = """
import sys
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer
FTPHandler.authorizer = DummyAuthorizer()
FTPHandler.authorizer.add_user("ada", "secret", sys.argv[1], perm="elradfmwMT")
server = FTPServer(("127.0.0.1", 0), FTPHandler)
print(server.address[1], flush=True)
server.serve_forever()
"""


class FtpServer:
    """Shows a folder to ada, on 127.0.0.1."""

    def __init__(self, folder: pathlib.Path):
        self.folder = folder
        self._process = subprocess.Popen(
            [sys.executable, "-c", SERVE, str(folder)],
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            text=True,
        )
        self.host = f"127.0.0.1:{int(self._process.stdout.readline())}"

    @property
    def options(self):
        """For the file system: its addresses' port connects to nothing."""
        options = {"user": "ada", "password": "secret", "server": self.host}
        return {**options, "skip_instance_cache": True}

    def stop(self):
        self._process.terminate()
        self._process.wait()
        self._process.stdout.close()


class Depot:
    """What the stand-in client tells (tests/support/perforce/depot.h)."""

    def __init__(self, folder: pathlib.Path):
        self.folder = folder
        self._files = {}
        self._changes = 0
        self._write()

    def submit(self, path: str, content: bytes, description: str = "m"):
        self._changes += 1
        lines = self._files.setdefault(path, [])
        number = sum(line.startswith("rev\t") for line in lines) + 1
        name = f"content{self._changes}"
        (self.folder / name).write_bytes(content)
        action = "add" if number == 1 else "edit"
        time = 1709633730 + self._changes
        lines.append(f"rev\t{number}\t{self._changes}\t{action}\t{time}\tada@work\ttext\t{name}")
        lines.append(f"desc\t{description}")
        self._write()

    def _write(self):
        text = ""
        for path, lines in self._files.items():
            text += "".join(f"{line}\n" for line in [f"file\t{path}", *lines])
        (self.folder / "depot").write_text(text, encoding="utf-8")
