"""What both drivers run the sample host on: files, repositories, and a folder for temporary files."""

import os
import pathlib
import shutil
import signal
import subprocess
import tempfile

QUIET = {
    "PATH": os.environ["PATH"],
    "LANG": "C.UTF-8",
    "GIT_CONFIG_NOSYSTEM": "1",
    "GIT_AUTHOR_NAME": "Ann",
    "GIT_AUTHOR_EMAIL": "ann@example.org",
    "GIT_COMMITTER_NAME": "Ann",
    "GIT_COMMITTER_EMAIL": "ann@example.org",
    "HGUSER": "Ann",
}


def made(folder, *command):
    environment = QUIET | {"HOME": str(folder.parent)}
    subprocess.run(command, cwd=folder, env=environment, check=True, stdout=subprocess.DEVNULL)


def make_files(folder):
    (folder / "sub" / "deep").mkdir(parents=True)
    (folder / "source").write_bytes(bytes(range(256)) * 4000)
    (folder / "same").write_bytes(bytes(range(256)) * 4000)
    (folder / "short").write_bytes(b"short")
    (folder / "old").write_bytes(b"what stood here before" * 70000)
    (folder / "sub" / "a").write_bytes(b"a")
    (folder / "sub" / "deep" / "b").write_bytes(b"b")
    os.symlink("short", folder / "link")


def make_repositories(folder):
    content = b"line\n" * 50000
    for client in ("git", "hg", "svn"):
        (folder / client).mkdir()
        (folder / client / "a.txt").write_bytes(content)
    made(folder / "git", "git", "init", "-q")
    made(folder / "git", "git", "add", ".")
    made(folder / "git", "git", "commit", "-q", "-m", "first")
    made(folder / "hg", "hg", "init")
    made(folder / "hg", "hg", "commit", "-q", "-A", "-m", "first")
    made(folder, "svnadmin", "create", "repository")
    made(folder, "svn", "import", "-q", "-m", "first", "svn",
         "file://" + str(folder / "repository" / "trunk"))


def tree_of(folder):
    """Every name below the folder with what it holds."""
    tree = {}
    for path in sorted(pathlib.Path(folder).rglob("*")):
        name = str(path.relative_to(folder))
        if path.is_symlink():
            tree[name] = ("link", os.readlink(path))
        elif path.is_dir():
            tree[name] = ("folder",)
        else:
            tree[name] = ("file", path.read_bytes())
    return tree


class Scene:
    """A folder of its own, removed at the end. `files` is made anew before each run."""

    def __init__(self, host):
        self.host = host
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="tarnwell-torture-"))
        self.files = self.root / "files"
        self.temporary = self.root / "temporary"
        self.repositories = self.root / "repositories"
        for folder in (self.temporary, self.repositories, self.root / "home"):
            folder.mkdir()
        make_repositories(self.repositories)
        self.start()

    def close(self):
        shutil.rmtree(self.root, ignore_errors=True)

    def start(self):
        shutil.rmtree(self.files, ignore_errors=True)
        self.files.mkdir()
        make_files(self.files)
        self.before = tree_of(self.files)
        for left in self.temporary.iterdir():
            left.unlink()

    def environment(self):
        return QUIET | {"HOME": str(self.root / "home"), "TMPDIR": str(self.temporary)}

    def arguments(self, words):
        places = {"F": self.files, "R": self.repositories}
        return [str(self.host)] + [word.format(**places) for word in words]

    def begin(self, words, variables):
        return subprocess.Popen(self.arguments(words), cwd=self.files, text=False,
                                env=self.environment() | variables, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                start_new_session=True)

    def left_behind(self):
        return [path.name for path in self.temporary.iterdir()]


def end_group(process):
    """Whether anything of the process's session was still there; nothing is, afterwards."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
        return True
    except ProcessLookupError:
        return False


# What the host is asked, and what of its outcome is promised:
#   hides       failures read as "nothing there" on purpose, so that success may say less
#   silent      an exit code of 1 is an outcome, not a failure
#   changes     names that may be missing, shorter or new when it fails
COMMANDS = [
    {"words": ["ls", "{F}"], "hides": True},
    {"words": ["--json", "stat", "{F}/source"], "hides": True},
    {"words": ["cat", "{F}/source"]},
    {"words": ["cat", "git:{R}/git/a.txt"]},
    {"words": ["cat", "hg:{R}/hg/a.txt"]},
    {"words": ["cat", "svnfile://{R}/repository/trunk/a.txt"]},
    {"words": ["ls", "svnfile://{R}/repository/trunk"]},
    {"words": ["log", "git:{R}/git/a.txt"], "hides": True},
    {"words": ["log", "svnfile://{R}/repository/trunk/a.txt"], "hides": True},
    {"words": ["log", "{F}/source"], "hides": True},
    {"words": ["put", "{F}/source", "{F}/old"], "changes": ["old"]},
    {"words": ["put", "{F}/source", "{F}/new"], "changes": ["new"]},
    # Refused: it would empty the file that it reads.
    {"words": ["put", "{F}/short", "{F}/link"]},
    {"words": ["cp", "{F}/source", "{F}/old"], "changes": ["old"]},
    {"words": ["cp", "{F}/source", "{F}/new"], "changes": ["new"]},
    {"words": ["mkdir", "-p", "{F}/x/y"], "changes": ["x", "x/y"]},
    {"words": ["--yes", "rm", "{F}/short"], "changes": ["short"]},
    {"words": ["--yes", "rm", "-r", "{F}/sub"],
     "changes": ["sub", "sub/a", "sub/deep", "sub/deep/b"]},
    {"words": ["temp", "{F}/source"], "changes": [f"vrltmp{i}" for i in range(1)]},
    {"words": ["compare", "{F}/source", "{F}/same"]},
    {"words": ["compare", "{F}", "{F}/sub"]},
    {"words": ["compare", "git:{R}/git/a.txt", "{R}/git/a.txt"]},
    {"words": ["selfcheck"], "hides": True, "silent": True},
]
