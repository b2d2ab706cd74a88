#include "backends/rows/ftp.h"

#include <tarnwell/classes.h>

namespace tarnwell::test
{

const Backend ftpBackend{
    .name = "Ftp",
    .systemClass = CLSID_FTPFileSystem,
    .makeData = MakeFtpData,
    .notShown = NotShownOnFtp(),
    .names = NamesOnFtp(),
    // The words speak of another system on purpose.
    .refused = {{u"FTP://host/x", u"Invalid Perforce URI \"FTP://host/x\"."},
                {u"svn://host/x", u"Invalid Perforce URI \"svn://host/x\"."},
                {u"no address", u"Can't parse the URI \"no address\". [uri@"}},
    .writes = true,
    .revisions = false,
    .history = false,
    .strict = {.whyNot = "a server has no revisions"},
    .source = u"ftpobjects",
    .guarded = u"ftp://127.0.0.1:1/r",
};

} // namespace tarnwell::test
