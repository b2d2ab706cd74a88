"""The file systems for fsspec, beyond what its own tests ask."""

import datetime
import os
import shutil

import fsspec
import pytest

import tarnwell.fsspec


@pytest.fixture(autouse=True)
def registered():
    tarnwell.fsspec.register(take_over=True)


def test_reads_by_address_in_a_revision(repository):
    assert fsspec.open(repository.address(repository.path + "/f.txt")).open().read() == b"two\n"
    address = repository.address(repository.path + "/f.txt" + repository.first)
    with fsspec.open(address, "r", encoding="utf-8") as file:
        assert file.read() == "one\n"


def test_content_can_be_read_from_anywhere(repository):
    fs = fsspec.filesystem(repository.scheme)
    path = repository.path + "/dir/deep/c.txt"
    assert fs.cat_file(path, start=-2) == b"ep"
    assert fs.cat_file(path, start=1, end=3) == b"ee"
    with fs.open(path) as file:
        assert file.size == 4
        assert file.seek(2) == 2
        assert file.read() == b"ep"
        assert file.seek(0) == 0
        assert file.read() == b"deep"
        with pytest.raises(ValueError):
            file.raw.seek(-1)


def test_revisions_open_by_their_names(repository):
    fs = fsspec.filesystem(repository.scheme)
    found = fs.revisions(repository.path + "/f.txt")
    recorded = [entry for entry in found if entry["name"] is not None]
    assert [entry["description"] for entry in recorded] == ["second é", "first"]
    assert [fs.cat(entry["name"]) for entry in recorded] == [b"two\n", b"one\n"]
    assert "ada" in recorded[1]["author"]
    assert recorded[0]["recorded"].tzinfo == datetime.timezone.utc
    assert [entry["local_path"] for entry in found if entry["name"] is None] == (
        [] if repository.scheme == "svnfile" else [repository.path + "/f.txt"]
    )


def test_what_is_missing_is_told_as_python_tells_it(repository):
    fs = fsspec.filesystem(repository.scheme)
    assert not fs.exists(repository.path + "/none")
    with pytest.raises(FileNotFoundError):
        fs.info(repository.path + "/none")


def test_nothing_is_written_to_a_repository(repository):
    fs = fsspec.filesystem(repository.scheme)
    for mode in ("wb", "ab", "xb"):
        with pytest.raises((NotImplementedError, tarnwell.Failure)):
            fs.open(repository.path + "/new.txt", mode)
    assert not fs.exists(repository.path + "/new.txt")


def test_facts_of_a_working_copys_file(repository):
    info = fsspec.filesystem(repository.scheme).info(repository.path + "/dir/deep/c.txt")
    assert info["size"] == 4
    assert info["type"] == "file"


def test_subversion_is_walked_in_a_revision(svn):
    fs = fsspec.filesystem("svnfile")
    trunk = svn.path + "@1"
    assert fs.find(trunk) == [
        f"{svn.path}/{name}@1" for name in ("a b.txt", "dir/deep/c.txt", "f.txt")
    ]
    assert fs.cat(f"{svn.path}/a b.txt@1").decode() == "näher"
    assert fs.glob(svn.path + "/*.txt") == [svn.path + "/a b.txt", svn.path + "/f.txt"]
    assert fs.glob(svn.path + "/*.txt@1") == [svn.path + "/a b.txt@1", svn.path + "/f.txt@1"]
    assert list(fs.glob(svn.path + "/*/*/*.txt@1", detail=True)) == [
        svn.path + "/dir/deep/c.txt@1"
    ]
    assert fs.isdir(svn.path + "/dir")
    assert fs.ls(svn.path + "/f.txt", detail=False) == [svn.path + "/f.txt"]
    assert fs.modified(svn.path + "/f.txt").year >= 2024


@pytest.fixture
def starts(tmp_path, monkeypatch):
    """How often a client was started up to now."""
    log = tmp_path / "starts"
    log.touch()
    clients = tmp_path / "clients"
    clients.mkdir()
    for name in ("git", "hg"):
        client = clients / name
        client.write_text(f'#!/bin/sh\necho >>"{log}"\nexec "{shutil.which(name)}" "$@"\n')
        client.chmod(0o755)
    monkeypatch.setenv("PATH", f"{clients}:{os.environ['PATH']}")
    return lambda: len(log.read_text())


@pytest.mark.parametrize("repository", ["git", "hg"], indirect=True)
def test_a_walk_is_one_tree(repository, starts):
    fs = fsspec.filesystem(repository.scheme)
    before = starts()
    assert len(fs.ls(repository.path)) == 3
    of_one_folder = starts() - before
    assert of_one_folder > 0
    for top, prefix in ((repository.path, ""), (repository.path + "/dir", "dir/")):
        for revision in ("", repository.first):
            before = starts()
            found = [
                name
                for folder, _, files in fs.walk(top + revision, detail=True)
                for name in (info["name"] for info in files.values())
            ]
            assert starts() - before == of_one_folder
            expected = [name for name in ("a b.txt", "f.txt", "dir/deep/c.txt") if name.startswith(prefix)]
            assert sorted(found) == sorted(f"{repository.path}/{name}{revision}" for name in expected)
    before = starts()
    assert fs.glob(repository.path + "/**/*.txt" + repository.first)
    # fsspec asks once or twice more what the top is.
    assert starts() - before <= 3 * of_one_folder


def test_a_walk_of_what_is_not_there_finds_nothing(repository):
    fs = fsspec.filesystem(repository.scheme)
    assert [files for _, _, files in fs.walk(repository.path + "/none")] in ([], [[]])
    assert [files for _, _, files in fs.walk(repository.path + "/f.txt")] == [[""]]


def test_a_repository_that_is_not_there_keeps_the_clients_words(tmp_path):
    with pytest.raises(tarnwell.Failure, match="svnfile://"):
        fsspec.filesystem("svnfile").info(f"{tmp_path}/none/trunk/f.txt")


def test_addresses_keep_their_users():
    split = tarnwell.fsspec.SvnFileSystem._split_revision
    assert split("ada@host/r/a") == ("ada@host/r/a", "")
    assert split("ada@host/r/a@5") == ("ada@host/r/a", "@5")
    perforce = tarnwell.fsspec.PerforceFileSystem._split_revision
    assert perforce("//depot/a@12#3") == ("//depot/a@12", "#3")


def test_tools_that_stand_on_fsspec(svn, tmp_path):
    copied = fsspec.get_mapper(svn.address(svn.path))
    assert copied["dir/deep/c.txt"] == b"deep"
    cached = fsspec.open_local(
        "simplecache::" + svn.address(svn.path + "/f.txt"),
        simplecache={"cache_storage": str(tmp_path / "cache")},
    )
    with open(cached, "rb") as file:
        assert file.read() == b"two\n"


# Local files


@pytest.fixture
def local():
    return fsspec.filesystem("tarnwell")


def test_writes_appends_and_makes(local, tmp_path):
    file = f"{tmp_path}/f"
    with local.open(file, "wb") as stream:
        stream.write(b"one")
    with local.open(file, "ab") as stream:
        stream.write(b"two")
    assert local.cat(file) == b"onetwo"
    with pytest.raises(FileExistsError):
        local.open(file, "xb")
    assert fsspec.open(f"tarnwell://{file}").open().read() == b"onetwo"
    local.touch(file)
    assert local.info(file)["size"] == 0
    os.utime(file, (0, 0))
    local.touch(file, truncate=False)
    assert local.modified(file).year >= 2024


def test_folders(local, tmp_path):
    folder = f"{tmp_path}/a/b"
    local.makedirs(folder)
    local.makedirs(folder, exist_ok=True)
    with pytest.raises(FileExistsError):
        local.makedirs(folder)
    local.pipe(folder + "/f", b"")
    with pytest.raises(OSError):
        local.rmdir(folder)
    with pytest.raises(OSError):
        local.rm(folder)
    assert local.exists(folder + "/f")
    local.rm(folder + "/f")
    local.rmdir(folder)
    assert local.ls(f"{tmp_path}/a") == []


def test_links_go_as_links(local, tmp_path):
    (tmp_path / "kept").mkdir()
    (tmp_path / "kept" / "f").write_bytes(b"data")
    (tmp_path / "gone").mkdir()
    (tmp_path / "gone" / "link").symlink_to(tmp_path / "kept")
    assert local.find(f"{tmp_path}/gone") == [f"{tmp_path}/gone/link"]
    local.rm(f"{tmp_path}/gone", recursive=True)
    assert not (tmp_path / "gone").exists()
    (tmp_path / "alone").symlink_to(tmp_path / "kept")
    local.rm(f"{tmp_path}/alone")
    assert not (tmp_path / "alone").is_symlink()
    assert (tmp_path / "kept" / "f").read_bytes() == b"data"


def test_names_that_are_no_text(local, tmp_path):
    name = os.fsdecode(os.fsencode(tmp_path) + b"/\xff\xfe")
    local.pipe(name, b"data")
    assert local.ls(str(tmp_path), detail=False) == [name]
    assert local.cat(name) == b"data"
