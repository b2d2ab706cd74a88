// A tree of folders on a server, to be deleted.
#pragma once

#include "unit/ftpcommandstest.h"

namespace tarnwell::test
{

class FtpTree : public FtpCommands
{
protected:
    FtpTree()
    {
        internet.folders[u"d"] = {{u"t", folderBit}};
        internet.folders[u"d/t"] = {
            {u"s1", folderBit}, {u"f1"}, {u"s2", folderBit}, {u"f2"}, {u"f3"}};
        internet.folders[u"d/t/s1"] = {{u"deep", folderBit}, {u"g"}};
        internet.folders[u"d/t/s1/deep"] = {};
        internet.folders[u"d/t/s2"] = {{u"h"}};
    }
};

} // namespace tarnwell::test
