import sys

import tarnwell

trunk = sys.argv[1]  # svn://host/repository/trunk, or a folder's path
files = tarnwell.filesystem(trunk)
for item in files.folder(trunk):
    print(item.name + ("/" if item.is_folder else ""))
print(files.file(trunk + "/hello.c@1").read().decode(), end="")
for revision in files.revisions(trunk + "/hello.c"):
    print(revision.id, revision.author)
try:
    files.file(trunk + "/none.c").read()
except tarnwell.Failure as failure:
    print(failure, file=sys.stderr)
