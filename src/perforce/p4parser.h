// Reading what the Perforce client prints: a reader for each of its commands. They start nothing,
// and nothing in the text makes them fail: a line that none understands is passed over.
#pragma once

#include "addressed/fsitem.h"
#include "frame/revisions.h"
#include "runner/bufferedreader.h"

#include <string>
#include <vector>

namespace tarnwell
{

// The files of "fstat", in the client's order, their depot paths as texts. Those that their last
// revision deletes are left out, and every file is read-only.
FSItems ReadFstat(BufferedReader& output);

// The folders of "dirs", likewise.
FSItems ReadDirs(BufferedReader& output);

struct P4FileLog
{
    std::u16string depotFile; // the first line, whatever it is
    // In the client's order, without addresses. Revisions that delete the file are left out.
    std::vector<RevisionRecord> records;
};

// The history of "filelog".
P4FileLog ReadFileLog(BufferedReader& output);

// The local path that the first line of "have" tells; empty if it tells none.
std::u16string ReadHave(BufferedReader& output);

struct P4Printed
{
};

// Nothing, since "print" writes the content elsewhere.
P4Printed ReadPrint(BufferedReader& output);

} // namespace tarnwell
