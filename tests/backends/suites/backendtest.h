// What the suites over the rows have in common.
#pragma once

#include "backends/backend.h"
#include "module/systemtest.h"

namespace tarnwell::test
{

// Data that the tests of one row share and none changes.
//
// Everywhere: "text.txt", which holds "content" (and, where there is history, held "first"
// before), "binary", "empty" and "large", the file "beside.txt", and one file for each of the
// row's names, holding its own name. Where there are folders: "sub" with "inner.txt" and "deep",
// which has "bottom.txt", and "nothing", which is empty, if folders can be.
struct Sample
{
    std::unique_ptr<BackendData> data;
    // Of "text.txt".
    std::u16string firstRevision;
    std::u16string secondRevision;
};

extern const std::string binaryContent;
extern const std::string largeContent;

// Made at the first call for a row, and kept until the process ends.
const Sample& SampleOf(const Backend& backend);

// `test` is a suite's and a test's name with a "/" behind it.
bool IsNamedIn(std::string_view test, const NotShown& named);

// Tests of one row.
class RowTest : public SystemTest
{
protected:
    explicit RowTest(const Backend& row);

    void SetUp() override;

    const Backend& Row() const
    {
        return row_;
    }
    bool IsLocal() const
    {
        return row_.family == Family::Local;
    }
    // Whether there is anything to run them on.
    bool TestsRun() const
    {
        return sample_ != nullptr;
    }
    // As revisions of this data name it.
    std::u16string AuthorOf(const BackendData& data) const
    {
        const std::u16string author = data.Author();
        return author.empty() ? std::u16string(row_.author) : author;
    }
    // Of the sample; its second revision where there is history.
    std::u16string Address(std::u16string_view name, const std::u16string& revision = {}) const
    {
        return sample_->data->Address(name, revision);
    }
    // The name that a listing has for a file in its only, or in this revision.
    std::u16string Listed(std::u16string_view name, const std::u16string& revision = u"1") const;
    const Sample& TheSample() const
    {
        return *sample_;
    }
    // Data of the test's own, which it may change, whose credentials the host knows from now on.
    std::unique_ptr<BackendData> NewData() const;
    // The text of a failure in the source of this row, behind its message.
    std::u16string Position() const
    {
        return u" [" + std::u16string(row_.source) + u"@N]";
    }

private:
    const Backend& row_;
    const Sample* sample_ = nullptr;
};

// Tests whose only parameter is the row.
class BackendTest : public RowTest, public testing::WithParamInterface<const Backend*>
{
protected:
    BackendTest() : RowTest(*GetParam()) {}
};

// The names of the rows, for results.
std::string BackendName(const testing::TestParamInfo<const Backend*>& info);

} // namespace tarnwell::test

// The suite's tests for each of the rows.
#define TARNWELL_OVER_BACKENDS(suite, rows)                                                        \
    INSTANTIATE_TEST_SUITE_P(Backends, suite, testing::ValuesIn(rows), BackendName)
