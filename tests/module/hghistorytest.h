// What asks a Mercurial repository of the test for its histories in full and its trees.
#pragma once

#include "module/asking.h"
#include "module/mercurialtest.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

class HgHistories : public Asking<Mercurial>
{
protected:
    std::vector<std::u16string> PathsOf(const std::u16string& path) const
    {
        std::vector<std::u16string> found;
        for (const HistoryEntry& entry : History(path, Wanted(HistoryFollow)))
            found.push_back(entry.description + u": " + entry.path);
        return found;
    }
    ComPtr<ITree> TreeAt(const std::string& revision = {}) const
    {
        return Tree(Address(u"", revision));
    }
    void Record(const std::string& description) const
    {
        repository.Run({"commit", "-q", "-A", "-u", "Ann", "-m", description});
    }
};

} // namespace tarnwell::test
