"""The package by itself."""

import contextlib
import os
import pathlib
import pickle
import socket
import subprocess
import sys
import threading
import time

import pytest
from conftest import run

import tarnwell


@pytest.fixture
def files():
    return tarnwell.filesystem(".")


def test_lists_a_folder(files, tmp_path):
    (tmp_path / "f").write_bytes(b"data")
    (tmp_path / "d").mkdir()
    found = sorted(files.folder(tmp_path), key=lambda item: item.name)
    assert [(item.name, item.is_folder) for item in found] == [("d", True), ("f", False)]
    assert found[1].path == f"{tmp_path}/f"
    assert found[1].parent_path == str(tmp_path)
    assert found[1].size == 4
    written = pathlib.Path(found[1].path).stat().st_mtime
    assert abs(found[1].modified.timestamp() - written) < 0.001


def test_reads_and_writes(files, tmp_path):
    file = files.file(tmp_path / "f")
    file.write(b"x" * 100_000)
    assert file.read() == b"x" * 100_000
    with file.open() as stream:
        assert stream.seek(99_998) == 99_998
        assert stream.read() == b"xx"
        buffer = bytearray(4)
        assert stream.readinto(buffer) == 0
    file.write(memoryview(b"view"))
    assert file.read() == b"view"


def test_a_size_beyond_32_bits(files, tmp_path):
    with open(tmp_path / "f", "wb") as file:
        file.truncate(5 << 30)
    assert files.file(tmp_path / "f").size == 5 << 30


def test_failures_are_pythons_own_too(files, tmp_path):
    with pytest.raises(FileNotFoundError) as raised:
        files.file(tmp_path / "none", must_exist=True)
    assert isinstance(raised.value, tarnwell.Failure)
    assert str(raised.value).startswith(f'Failed to open "{tmp_path}/none".')
    assert raised.value.status == 0x80070002
    again = pickle.loads(pickle.dumps(raised.value))
    assert (str(again), again.status) == (str(raised.value), 0x80070002)
    with pytest.raises(NotImplementedError, match="doesn't offer"):
        tarnwell.filesystem("git:").delete_items(["git:///f"])
    with pytest.raises(ValueError):
        files.file("a\0b")


def test_a_bare_failure_does_not_show_an_earlier_text(files, tmp_path):
    with pytest.raises(tarnwell.Failure):
        files.file(tmp_path / "none", must_exist=True)
    with pytest.raises(tarnwell.Failure, match="doesn't offer"):
        tarnwell.filesystem("git:").create_temp_file("git:///f")


def test_copies_until_told_to_stop(files, tmp_path):
    (tmp_path / "f").write_bytes(b"x" * (9 << 20))
    asked = []
    assert files.copy(tmp_path / "f", tmp_path / "g", lambda: asked.append(1) or True)
    assert (tmp_path / "g").stat().st_size == 9 << 20
    assert len(asked) > 1
    assert not files.copy(tmp_path / "f", tmp_path / "h", lambda: False)
    assert not (tmp_path / "h").exists()
    with pytest.raises(ZeroDivisionError):
        files.copy(tmp_path / "f", tmp_path / "h", lambda: 1 // 0 == 0)
    assert not (tmp_path / "h").exists()
    with pytest.raises(FileExistsError):
        files.copy(tmp_path / "f", tmp_path / "g", flags=1)


def test_deletes_what_is_confirmed(files, tmp_path):
    (tmp_path / "f").write_bytes(b"")
    item = files.file(tmp_path / "f")
    assert not item.delete(confirm=lambda address: address != str(tmp_path / "f"))
    assert (tmp_path / "f").exists()
    assert item.delete(confirm=lambda address: True)
    assert not (tmp_path / "f").exists()


def test_makes_folders_and_temporary_files(files, tmp_path):
    folder = files.folder(tmp_path / "a" / "b")
    with pytest.raises(tarnwell.Failure):
        folder.create()
    folder.create(recursive=True)
    assert files.create_temp_file(tmp_path / "a" / "f") == f"{tmp_path}/a/vrltmp0"
    assert files.combine("a", "b") == "a/b"
    assert not files.has_revisions(tmp_path)
    assert list(files.revisions(tmp_path)) == []


def test_each_thread_has_its_own_failures(tmp_path):
    texts = {}

    def fail(name):
        with pytest.raises(tarnwell.Failure) as raised:
            tarnwell.filesystem(".").file(tmp_path / name, must_exist=True)
        texts[name] = str(raised.value)

    threads = [threading.Thread(target=fail, args=(f"none{i}",)) for i in range(8)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert all(f"/{name}\"" in text for name, text in texts.items()) and len(texts) == 8


@contextlib.contextmanager
def svnserve(folder):
    """A server that knows ada by her password, and nobody else."""
    run(folder, "svnadmin", "create", "r")
    (folder / "r/conf/svnserve.conf").write_text(
        "[general]\nanon-access = none\nauth-access = write\npassword-db = passwd\n"
    )
    (folder / "r/conf/passwd").write_text("[users]\nada = secret\n")
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        port = probe.getsockname()[1]
    options = ["--foreground", "-d", "-r", folder, "--listen-host", "127.0.0.1"]
    server = subprocess.Popen(["svnserve", *options, f"--listen-port={port}"])
    try:
        for _ in range(600):
            with contextlib.suppress(OSError):
                socket.create_connection(("127.0.0.1", port)).close()
                break
            time.sleep(0.1)
        yield f"svn://127.0.0.1:{port}/r"
    finally:
        server.terminate()
        server.wait()


def test_credentials_are_asked_for_and_refused(tmp_path):
    with svnserve(tmp_path) as address:
        questions, refusals = [], []

        def listed(answer):
            def ask(question):
                questions.append(question)
                return answer

            files = tarnwell.filesystem(address, credentials=ask, refused=refusals.append)
            return [item.name for item in files.folder(address)]

        assert listed(tarnwell.Credentials("ada", "secret")) == []
        host = address.split("/")[2].split(":")[0]
        assert questions[0].host.startswith(host)
        assert (questions[0].user, questions[0].perforce) == ("", False)
        with pytest.raises(tarnwell.Failure):
            listed(tarnwell.Credentials("ada", "wrong"))
        assert len(refusals) == 1
        with pytest.raises(PermissionError):
            listed(None)


def test_what_an_answer_raises_comes_out_of_the_call():
    def ask(question):
        raise KeyError("no answer")

    files = tarnwell.filesystem("svn://", credentials=ask)
    with pytest.raises(KeyError, match="no answer"):
        list(files.folder("svn://127.0.0.1:1/r"))


def test_a_module_that_is_none_is_refused(tmp_path):
    fake = tmp_path / "libtarnwell.so"
    fake.write_bytes(b"no library")
    program = "import tarnwell\ntarnwell.load()"
    environment = {**os.environ, "TARNWELL_MODULE": str(fake)}
    ended = subprocess.run(
        [sys.executable, "-c", program], env=environment, capture_output=True, text=True
    )
    assert "LoadFailure" in ended.stderr and str(fake) in ended.stderr
