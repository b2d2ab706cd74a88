"""The file systems for fsspec that need a server: FTP and Perforce."""

import fsspec
import pytest

import tarnwell.fsspec


@pytest.fixture(autouse=True)
def registered():
    tarnwell.fsspec.register(take_over=True)


@pytest.fixture
def ftp(ftp_server):
    return fsspec.filesystem("ftp", **ftp_server.options)


def test_ftp_by_address(ftp_server):
    address = f"ftp://{ftp_server.host}/sub/a b.txt"
    (ftp_server.folder / "sub").mkdir()
    with fsspec.open(address, "wb", **ftp_server.options) as file:
        file.write(b"put\0by address")
    assert (ftp_server.folder / "sub" / "a b.txt").read_bytes() == b"put\0by address"
    with fsspec.open(address, **ftp_server.options) as file:
        assert file.read() == b"put\0by address"


def test_ftp_tells_facts_and_walks(ftp, ftp_server):
    (ftp_server.folder / "a" / "b").mkdir(parents=True)
    (ftp_server.folder / "a" / "b" / "c.txt").write_bytes(b"four")
    (ftp_server.folder / "a" / "d.bin").write_bytes(b"")
    top = ftp_server.host + "/a"
    assert sorted(ftp.ls(top, detail=False)) == [top + "/b", top + "/d.bin"]
    info = ftp.info(top + "/b/c.txt")
    assert (info["type"], info["size"]) == ("file", 4)
    assert info["mtime"] is not None
    assert ftp.isdir(top + "/b")
    assert [(root, dirs, files) for root, dirs, files in ftp.walk(top)] == [
        (top, ["b"], ["d.bin"]),
        (top + "/b", [], ["c.txt"]),
    ]
    assert ftp.glob(top + "/**/*.txt") == [top + "/b/c.txt"]
    assert not ftp.exists(top + "/none")
    with pytest.raises(FileNotFoundError):
        ftp.cat(top + "/none")


def test_ftp_makes_copies_and_removes(ftp, ftp_server, tmp_path):
    top = ftp_server.host
    ftp.mkdir(top + "/new/deep")
    source = tmp_path / "source"
    source.write_bytes(b"content")
    ftp.put(str(source), top + "/new/deep/x")
    ftp.cp_file(top + "/new/deep/x", top + "/new/y")
    assert ftp.cat(top + "/new/y") == b"content"
    with pytest.raises(OSError):
        ftp.rmdir(top + "/new")
    ftp.rm(top + "/new", recursive=True)
    assert list(ftp_server.folder.iterdir()) == []


def test_ftp_asks_for_credentials(ftp_server):
    asked = []

    def answer(question):
        asked.append(question.host)
        return tarnwell.Credentials("ada", "secret", ftp_server.host)

    fs = fsspec.filesystem("ftp", credentials=answer, skip_instance_cache=True)
    assert fs.ls(ftp_server.host + "/") == []
    assert asked


def test_ftp_tells_what_a_server_refuses(ftp_server):
    fs = fsspec.filesystem("ftp", **{**ftp_server.options, "password": "wrong"})
    with pytest.raises(tarnwell.Failure, match="uthentication"):
        fs.ls(ftp_server.host + "/")


@pytest.fixture
def p4(depot):
    depot.submit("//depot/main/a.txt", b"one\n", "first")
    depot.submit("//depot/main/a.txt", b"two\n", "second")
    depot.submit("//depot/main/sub/b c.txt", b"deep")
    return fsspec.filesystem("p4", skip_instance_cache=True)


def test_perforce_reads_in_a_revision(p4):
    assert p4.cat("//depot/main/a.txt") == b"two\n"
    assert p4.cat("//depot/main/a.txt#1") == b"one\n"
    with fsspec.open("p4:////depot/main/a.txt#1") as file:
        assert file.read() == b"one\n"


def test_perforce_lists_and_walks(p4):
    top = "//depot/main"
    assert sorted(p4.ls(top, detail=False)) == [top + "/a.txt", top + "/sub"]
    assert p4.info(top + "/a.txt")["size"] == 4
    assert p4.isdir(top + "/sub")
    assert p4.find(top) == [top + "/a.txt", top + "/sub/b c.txt"]
    assert p4.glob(top + "/*/*.txt") == [top + "/sub/b c.txt"]
    assert not p4.exists(top + "/none")


def test_perforce_revisions_open_by_their_names(p4):
    found = [entry for entry in p4.revisions("//depot/main/a.txt") if entry["name"] is not None]
    assert [entry["description"] for entry in found] == ["2: second", "1: first"]
    assert [p4.cat(entry["name"]) for entry in found] == [b"two\n", b"one\n"]
    assert found[0]["author"].startswith("ada")


def test_nothing_is_written_to_a_depot(p4):
    with pytest.raises((NotImplementedError, tarnwell.Failure)):
        p4.open("//depot/main/new.txt", "wb")
