"""fsspec's own conformance tests, as far as each file system can: the local one and FTP do all that
they ask, those of version-control systems what only reads.

Left out: for FTP, a file that is opened only if there is none; for FTP and Subversion, the many rows of
patterns in copying and getting, whose logic is fsspec's own and proved with the local system and with
putting; copying, putting, opening and piping for Subversion, Git and Mercurial, which write nothing; for
Git and Mercurial also what lists folders, which they don't have; all of Perforce, whose depot here is a
stand-in that can't be filled by a client (test_servers.py has its tests).
"""

import pathlib

import pytest
from conftest import run

import tarnwell.fsspec

abstract = pytest.importorskip("fsspec.tests.abstract", reason="fsspec came without its tests")
from fsspec.implementations.local import LocalFileSystem  # noqa: E402


class LocalFixtures(abstract.AbstractFixtures):
    @pytest.fixture
    def fs(self):
        return tarnwell.fsspec.LocalFileSystem(auto_mkdir=True)

    @pytest.fixture
    def fs_path(self, tmpdir):
        return str(tmpdir.mkdir("remote"))

    @pytest.fixture
    def local_path(self, tmpdir):
        return str(tmpdir.mkdir("local"))


class TestLocalCopy(LocalFixtures, abstract.AbstractCopyTests):
    pass


class TestLocalGet(LocalFixtures, abstract.AbstractGetTests):
    pass


class TestLocalPut(LocalFixtures, abstract.AbstractPutTests):
    pass


class TestLocalOpen(LocalFixtures, abstract.AbstractOpenTests):
    pass


class TestLocalPipe(LocalFixtures, abstract.AbstractPipeTests):
    pass


class FtpFixtures(abstract.AbstractFixtures):
    @pytest.fixture
    def fs(self, shared_ftp_server):
        return tarnwell.fsspec.FtpFileSystem(auto_mkdir=True, **shared_ftp_server.options)

    @pytest.fixture
    def fs_path(self, shared_ftp_server, tmp_path):
        # As unlike any other test's as the name of its folder.
        (shared_ftp_server.folder / tmp_path.name).mkdir()
        return f"{shared_ftp_server.host}/{tmp_path.name}"

    @pytest.fixture
    def local_path(self, tmpdir):
        return str(tmpdir.mkdir("local"))


class TestFtpCopy(FtpFixtures, abstract.AbstractCopyTests):
    test_copy_glob_edge_cases = None


class TestFtpGet(FtpFixtures, abstract.AbstractGetTests):
    test_get_glob_edge_cases = None


class TestFtpPut(FtpFixtures, abstract.AbstractPutTests):
    pass


class TestFtpOpen(FtpFixtures, abstract.AbstractOpenTests):
    # FTP writes, whatever is there.
    test_open_exclusive = None


class TestFtpPipe(FtpFixtures, abstract.AbstractPipeTests):
    pass


class RepositoryFixtures(abstract.AbstractFixtures):
    """What the tests would make in the file system is made in a folder and recorded."""

    @pytest.fixture
    def fs_path(self, tmp_path):
        folder = tmp_path / "remote"
        folder.mkdir()
        return self.make_repository(folder)

    @pytest.fixture
    def local_path(self, tmpdir):
        return str(tmpdir.mkdir("local"))

    def recorded(self, make, join, fs_path):
        source = make(LocalFileSystem(auto_mkdir=True), join, str(self.content(fs_path)))
        return self.record(fs_path, pathlib.Path(source))

    @pytest.fixture
    def fs_bulk_operations_scenario_0(self, fs_join, fs_path):
        return self.recorded(self._bulk_operations_scenario_0, fs_join, fs_path)

    @pytest.fixture
    def fs_glob_edge_cases_files(self, fs_join, fs_path):
        return self.recorded(self._glob_edge_cases_files, fs_join, fs_path)

    @pytest.fixture
    def fs_dir_and_file_with_same_name_prefix(self, fs_join, fs_path):
        return self.recorded(self._dir_and_file_with_same_name_prefix, fs_join, fs_path)

    @pytest.fixture
    def fs_10_files_with_hashed_names(self, fs_join, fs_path):
        return self.recorded(self._10_files_with_hashed_names, fs_join, fs_path)


class TestSubversionGet(RepositoryFixtures, abstract.AbstractGetTests):
    # Writes into the file system first.
    test_get_directory_recursive = None
    test_get_glob_edge_cases = None

    @pytest.fixture
    def fs(self):
        return tarnwell.fsspec.SvnFileFileSystem()

    def make_repository(self, folder):
        run(folder, "svnadmin", "create", "repository")
        return str(folder / "repository")

    def content(self, fs_path):
        content = pathlib.Path(fs_path).with_name("content")
        content.mkdir()
        return content

    def record(self, fs_path, source):
        run(source.parent, "svn", "import", "-qm", "all", ".", f"file://{fs_path}")
        return f"{fs_path}/{source.name}"


class WorkingCopyFixtures(RepositoryFixtures):
    """Only what names files; with what names none, a name is taken for a folder's."""

    def content(self, fs_path):
        return pathlib.Path(fs_path)

    def record(self, fs_path, source):
        self.commit(fs_path)
        return str(source)

    gets = abstract.AbstractGetTests
    test_get_file_to_existing_directory = gets.test_get_file_to_existing_directory
    test_get_file_to_new_directory = gets.test_get_file_to_new_directory
    test_get_file_to_file_in_existing_directory = gets.test_get_file_to_file_in_existing_directory
    test_get_file_to_file_in_new_directory = gets.test_get_file_to_file_in_new_directory
    test_get_list_of_files_to_existing_directory = (
        gets.test_get_list_of_files_to_existing_directory
    )
    test_get_list_of_files_to_new_directory = gets.test_get_list_of_files_to_new_directory
    test_get_with_source_and_destination_as_list = gets.test_get_with_source_and_destination_as_list


class TestGitGet(WorkingCopyFixtures):
    @pytest.fixture
    def fs(self):
        return tarnwell.fsspec.GitFileSystem()

    def make_repository(self, folder):
        run(folder, "git", "init", "-q")
        return str(folder)

    def commit(self, folder):
        run(folder, "git", "add", ".")
        run(folder, "git", "commit", "-qm", "all")


class TestMercurialGet(WorkingCopyFixtures):
    @pytest.fixture
    def fs(self):
        return tarnwell.fsspec.MercurialFileSystem()

    def make_repository(self, folder):
        run(folder, "hg", "init")
        return str(folder)

    def commit(self, folder):
        run(folder, "hg", "commit", "-qAm", "all", "-u", "ada")
