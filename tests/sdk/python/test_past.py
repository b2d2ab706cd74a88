"""Histories in full and trees, for every file system that has them."""

import datetime
import pathlib

import pytest
import tarnwell
import tarnwell.fsspec


@pytest.fixture
def files(repository):
    files = tarnwell.filesystem(repository.address(repository.path))
    if not (files.has_history and files.has_trees):
        pytest.skip("not answered here")
    return files


def first_of(repository, path):
    return repository.address(path) + repository.first


def test_history_tells_all(files, repository):
    found = files.history(repository.address(repository.path + "/f.txt"))
    assert [entry.description for entry in found] == ["second é", "first"]
    assert found[1].author == "ada"
    assert found[0].path.endswith("f.txt")
    assert found[0].recorded > datetime.datetime(2020, 1, 1, tzinfo=datetime.timezone.utc)
    assert files.file(found[1].address).read() == b"one\n"


def test_history_comes_in_pages(files, repository):
    address = repository.address(repository.path + "/f.txt")
    assert [e.description for e in files.history(address, count=1)] == ["second é"]
    assert [e.description for e in files.history(address, skip=1, count=5)] == ["first"]
    long_ago = datetime.datetime(1999, 1, 1, tzinfo=datetime.timezone.utc)
    assert files.history(address, until=long_ago) == []
    assert len(files.history(address, since=long_ago)) == 2
    taken = []
    files.read_history(address, lambda entry: taken.append(entry) or False)
    assert len(taken) == 1


def test_history_is_cancelled_and_fails_in_words(files, repository):
    address = repository.address(repository.path + "/f.txt")
    with pytest.raises(tarnwell.Failure) as cancelled:
        files.history(address, progress=lambda: False)
    assert cancelled.value.status == 0x80004004
    with pytest.raises(FileNotFoundError) as missing:
        files.history(repository.address(repository.path + "/none"))
    assert missing.value.status == 0x80040203
    assert "none" in str(missing.value)

    def stop(entry):
        raise KeyError(entry.id)

    with pytest.raises(KeyError):
        files.read_history(address, stop)


def test_a_tree_holds_what_there_was(files, repository):
    tree = files.tree(first_of(repository, repository.path))
    assert tree.revision_id == files.history(repository.address(repository.path))[1].id
    assert tree.recorded is not None
    kinds = {entry.name: entry.kind for entry in tree.list(recursive=True)}
    assert kinds == {
        "a b.txt": "file",
        "dir": "folder",
        "dir/deep": "folder",
        "dir/deep/c.txt": "file",
        "f.txt": "file",
    }
    assert {entry.name for entry in tree} == {"a b.txt", "dir", "f.txt"}
    assert tree.read("f.txt") == b"one\n"
    told = []
    with tree.open("f.txt", amounts=lambda done, total: told.append((done, total))) as content:
        assert content.read() == b"one\n"
    assert told[0][0] == 0 and told[-1][0] == 4
    assert told[-1][1] in (4, None)
    found = tree.find("dir/deep/c.txt")
    assert (found.size, found.kind, found.executable) == (4, "file", False)
    with pytest.raises(FileNotFoundError):
        tree.find("none")
    with pytest.raises(tarnwell.Failure) as folder:
        tree.open("dir")
    assert folder.value.status == 0x80040209
    taken = []
    tree.read_list("", True, lambda entry: taken.append(entry) or False)
    assert len(taken) == 1
    with pytest.raises(tarnwell.Failure):
        tree.read_list("", True, taken.append, progress=lambda: False)


def test_a_file_is_unchanged_where_it_would_be_recorded_as_it_was(files, repository, tmp_path):
    tree = files.tree(repository.address(repository.path))
    file = pathlib.Path(repository.path) / "f.txt"
    if repository.scheme != "git":
        assert tree.recorded_id(file) == ""
        return
    (tmp_path / ".git" / "info" / "attributes").write_bytes(b"* text\n")
    assert tree.recorded_id(file) == tree.find("f.txt").content_id
    file.write_bytes(b"two\r\n")
    assert tree.recorded_id(file) == tree.find("f.txt").content_id
    file.write_bytes(b"three\r\n")
    assert tree.recorded_id(file) not in ("", tree.find("f.txt").content_id)
    with pytest.raises(tarnwell.Failure):
        tree.recorded_id(file, progress=lambda: False)


def test_folders_of_revisions_by_fsspec(files, repository):
    if repository.scheme not in ("git", "hg"):
        pytest.skip("its folders always were")
    fs = {"git": tarnwell.fsspec.GitFileSystem, "hg": tarnwell.fsspec.MercurialFileSystem}[
        repository.scheme
    ]()
    path, first = repository.path, repository.first
    names = [path + "/a b.txt" + first, path + "/dir" + first, path + "/f.txt" + first]
    assert [name for name in fs.ls(path + first, detail=False) if "/." not in name] == names
    info = fs.info(path + "/dir" + first)
    assert info["type"] == "directory"
    assert fs.info(path + "/f.txt" + first)["size"] == 4
    assert fs.cat(path + "/f.txt" + first) == b"one\n"
    assert fs.cat(path + "/f.txt") == b"two\n"
    assert fs.glob(path + "/dir/**/*.txt" + first) == [path + "/dir/deep/c.txt" + first]
    assert fs.isdir(path + "/dir") and not fs.exists(path + "/none" + first)
    with pytest.raises(FileNotFoundError):
        fs.ls(path + "/none" + first)
    with pytest.raises(FileNotFoundError):
        fs.cat(path + "/f.txt#no-such-revision")


def test_copies_tell_how_far_they_are(tmp_path):
    (tmp_path / "a").write_bytes(b"x" * 5_000_000)
    files, told = tarnwell.filesystem(tmp_path), []
    assert files.copy(tmp_path / "a", tmp_path / "b", amounts=lambda *both: told.append(both))
    assert told[0] == (0, 5_000_000)
    assert told[-1] == (5_000_000, 5_000_000)
    assert told == sorted(told)
