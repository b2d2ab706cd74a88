// What the suites of histories and trees have in common.
#pragma once

#include "backends/suites/backendtest.h"
#include "module/asking.h"

#include <map>

namespace tarnwell::test
{

// Data that all the tests of one row share and none changes. Its revisions, the first one first:
//
// many files ("binary", "empty", "large", "sub/inner.txt", "sub/deep/bottom.txt", "same.txt", which
// holds what "sub/inner.txt" does, and one for each of the names, holding its own name);
// "a beginning" puts "text.txt", "first";
// "made" puts "old.txt", "renamed" makes it "sub/new name.txt", "lengthened" puts that;
// "made first" puts "again.txt", "removed" removes it, "made again" puts it;
// "made to go" puts "gone.txt", "gone" removes it;
// where there are such, the link "link" to "text.txt" and the program "program";
// "an end" puts "text.txt", "content".
struct StrictSample
{
    std::unique_ptr<BackendData> data;
    std::u16string firstId;                   // of "a beginning"
    std::u16string beforeGoneId;              // of "made to go"
    std::u16string lastId;                    // of "an end"
    std::vector<std::u16string> namesOfFirst; // other ones
    // By names, at both ends.
    std::map<std::u16string, std::string> firstFiles;
    std::map<std::u16string, std::string> lastFiles;
};

// Made at the first call for a row, and kept until the process ends.
const StrictSample& StrictSampleOf(const Backend& backend);

extern const std::string wholeDescription; // of "a beginning"

class StrictTest : public Asking<BackendTest>
{
protected:
    StrictTest();

    // Of the row's strict sample, where the row answers.
    const StrictSample& Strictly() const
    {
        return StrictSampleOf(Row());
    }
    std::u16string AddressAt(std::u16string_view name, const std::u16string& id) const
    {
        return Strictly().data->AddressAt(name, id);
    }
    // All of it at its end.
    ComPtr<ITree> LastTree() const
    {
        return Tree(AddressAt(u"", Strictly().lastId));
    }
};

inline bool TellsHistories(const Backend& backend)
{
    return backend.strict.histories;
}
inline bool ShowsTrees(const Backend& backend)
{
    return backend.strict.trees;
}

} // namespace tarnwell::test
