"""tools.py TRUNK: what is built on fsspec works on every file system."""

import sys

import fsspec
import tarnwell.fsspec  # not needed where the package is installed

trunk = sys.argv[1]
with fsspec.open(trunk + "/hello.c@1", "rt") as file:
    print(file.read(), end="")

fs, path = fsspec.core.url_to_fs(trunk)
print([name[len(path) :] for name in fs.find(path)])
print([name[len(path) :] for name in fs.glob(path + "/*.c@1")])
for revision in fs.revisions(path + "/hello.c"):
    print(revision["id"], revision["author"], fs.cat(revision["name"]))
