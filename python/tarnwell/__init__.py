"""One object model of file systems, items, streams and revisions: local files, FTP, Perforce,
Subversion, Mercurial and Git.

    import tarnwell

    files = tarnwell.filesystem("svn://host/repository/trunk")
    for item in files.folder("svn://host/repository/trunk"):
        print(item.name)

Whatever fails raises Failure, whose text is ready to show. An object is used by one thread at a
time. tarnwell.fsspec brings the same to everything that is built on fsspec.
"""

from ._answers import Credentials, CredentialsQuestion
from ._com import Failure, LoadFailure, load
from ._items import File, Folder, Item, Reader, Writer, to_datetime
from ._past import HistoryEntry, Tree, TreeEntry
from ._system import FileSystem, Revision, filesystem

__version__ = "1.0.0"

__all__ = [
    "Credentials",
    "CredentialsQuestion",
    "Failure",
    "File",
    "FileSystem",
    "Folder",
    "HistoryEntry",
    "Item",
    "LoadFailure",
    "Reader",
    "Revision",
    "Tree",
    "TreeEntry",
    "Writer",
    "filesystem",
    "load",
    "to_datetime",
]
