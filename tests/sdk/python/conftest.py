"""What the tests share: repositories, and file systems of every kind."""

import atexit
import functools
import os
import pathlib
import shutil
import subprocess
import tempfile

import pytest
from servers import Depot, FtpServer

# The clients find no settings of the user's, and give times and words that don't depend on them.
os.environ.update(
    HGPLAIN="1",
    LC_ALL="C.UTF-8",
    GIT_CONFIG_GLOBAL=os.devnull,
    GIT_AUTHOR_NAME="ada",
    GIT_AUTHOR_EMAIL="ada@example.com",
    GIT_COMMITTER_NAME="ada",
    GIT_COMMITTER_EMAIL="ada@example.com",
)


def run(folder, *command):
    found = subprocess.run(command, cwd=folder, check=True, capture_output=True)
    return found.stdout.decode().strip()


@pytest.fixture(autouse=True)
def empty_home(tmp_path_factory, monkeypatch):
    monkeypatch.setenv("HOME", str(tmp_path_factory.mktemp("home")))


def fill(folder: pathlib.Path):
    (folder / "dir" / "deep").mkdir(parents=True)
    (folder / "dir" / "deep" / "c.txt").write_bytes(b"deep")
    (folder / "a b.txt").write_bytes("näher".encode())
    (folder / "f.txt").write_bytes(b"one\n")


class Repository:
    """f.txt in two revisions, and more beside it; `first` opens the first revision."""

    def __init__(self, scheme, folder, path, first):
        self.scheme, self.folder, self.path, self.first = scheme, folder, path, first

    def address(self, path):
        return f"{self.scheme}://{path}"


def subversion(folder):
    repository, content = folder / "svn", folder / "content"
    run(folder, "svnadmin", "create", repository)
    content.mkdir()
    fill(content)
    url = f"file://{repository}"
    run(folder, "svn", "import", "-qm", "first", content, url + "/trunk", "--username", "ada")
    run(folder, "svn", "checkout", "-q", url + "/trunk", "copy")
    (folder / "copy" / "f.txt").write_bytes(b"two\n")
    run(folder / "copy", "svn", "commit", "-qm", "second é", "--username", "bob")
    return Repository("svnfile", folder, f"{repository}/trunk", "@1")


def git(folder):
    fill(folder)
    run(folder, "git", "init", "-q")
    run(folder, "git", "add", ".")
    run(folder, "git", "commit", "-qm", "first")
    first = run(folder, "git", "rev-parse", "HEAD")
    (folder / "f.txt").write_bytes(b"two\n")
    run(folder, "git", "commit", "-qam", "second é")
    return Repository("git", folder, str(folder), "#" + first)


@functools.cache
def made_by_mercurial():
    folder = pathlib.Path(tempfile.mkdtemp())
    atexit.register(shutil.rmtree, folder)
    fill(folder)
    run(folder, "hg", "init")
    run(folder, "hg", "commit", "-qAm", "first", "-u", "ada")
    (folder / "f.txt").write_bytes(b"two\n")
    run(folder, "hg", "commit", "-qm", "second é", "-u", "bob")
    return folder


def mercurial(folder):
    # Copied, since the client takes long to start.
    shutil.copytree(made_by_mercurial(), folder, dirs_exist_ok=True)
    return Repository("hg", folder, str(folder), "#0")


MAKERS = {"svnfile": subversion, "git": git, "hg": mercurial}


@pytest.fixture(params=list(MAKERS))
def repository(request, tmp_path):
    return MAKERS[request.param](tmp_path)


@pytest.fixture
def svn(tmp_path):
    return subversion(tmp_path)


def serve_ftp(tmp_path_factory):
    pytest.importorskip("pyftpdlib", reason="pyftpdlib isn't here")
    server = FtpServer(tmp_path_factory.mktemp("served"))
    yield server
    server.stop()


ftp_server = pytest.fixture(serve_ftp)
shared_ftp_server = pytest.fixture(scope="module")(serve_ftp)


@pytest.fixture
def depot(tmp_path_factory, monkeypatch):
    client = pathlib.Path(os.environ["TARNWELL_MODULE"]).parent / "perforce"
    if not (client / "p4").exists():
        pytest.skip("the stand-in for the Perforce client isn't built")
    folder = tmp_path_factory.mktemp("depot")
    monkeypatch.setenv("TARNWELL_DEPOT", str(folder))
    monkeypatch.setenv("PATH", f"{client}:{os.environ['PATH']}")
    return Depot(folder)
