#include "backends/suites/backendtest.h"

#include <tarnwell/text.h>

#include <map>

namespace tarnwell::test
{
namespace
{

std::string NumberedLines(std::size_t size)
{
    std::string text;
    while (text.size() < size)
        text += std::to_string(text.size()) + "\r\n";
    return text;
}

std::unique_ptr<Sample> MakeSample(const Backend& backend)
{
    auto sample = std::make_unique<Sample>();
    sample->data = backend.makeData();
    BackendData& data = *sample->data;
    std::vector<std::pair<std::u16string, std::string>> files = {
        {u"binary", binaryContent}, {u"empty", ""}, {u"large", largeContent}};
    for (const std::u16string_view name : backend.names)
        files.emplace_back(name, EncodeName(name).value());
    if (backend.folders)
    {
        for (const char16_t* const folder : {u"sub", u"sub/deep"})
            data.MakeFolder(folder);
        if (backend.emptyFolders)
            data.MakeFolder(u"nothing");
        files.emplace_back(u"sub/inner.txt", "inner");
        files.emplace_back(u"sub/deep/bottom.txt", "bottom");
    }
    data.PutAll(files);
    sample->firstRevision = data.Put(u"text.txt", "first", "a beginning");
    data.Put(u"beside.txt", "x", "not of the text");
    sample->secondRevision = data.Put(u"text.txt", "content", "an end");
    return sample;
}

} // namespace

const std::string binaryContent("\0\r\n\n\r\xFF\x1A\0end", 11);
const std::string largeContent = NumberedLines(300000);

const Sample& SampleOf(const Backend& backend)
{
    static std::map<const Backend*, std::unique_ptr<Sample>> samples;
    std::unique_ptr<Sample>& sample = samples[&backend];
    if (!sample)
        sample = MakeSample(backend);
    return *sample;
}

RowTest::RowTest(const Backend& row)
    : SystemTest(row.systemClass, row.whyNot == nullptr ? std::string() : row.whyNot()), row_(row)
{
    if (row.whyNot != nullptr && !row.whyNot().empty())
        return;
    sample_ = &SampleOf(row);
    sample_->data->Show();
    host_->credentials = sample_->data->Credentials();
}

bool IsNamedIn(std::string_view test, const NotShown& named)
{
    return test.starts_with("Backends/" + std::string(named.test) + "/");
}

void RowTest::SetUp()
{
    SystemTest::SetUp();
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    const std::string whole = std::string(test.test_suite_name()) + "." + test.name() + "/";
    for (const NotShown& each : row_.notShown)
    {
        if (IsNamedIn(whole, each))
            GTEST_SKIP() << each.why;
    }
}

std::u16string RowTest::Listed(std::u16string_view name, const std::u16string& revision) const
{
    if (!row_.revisionsInListing)
        return std::u16string(name);
    const std::u16string address = Address(name, revision);
    return address.substr(address.find(name));
}

std::unique_ptr<BackendData> RowTest::NewData() const
{
    std::unique_ptr<BackendData> data = row_.makeData();
    host_->credentials = data->Credentials();
    return data;
}

std::string BackendName(const testing::TestParamInfo<const Backend*>& info)
{
    return info.param->name;
}

} // namespace tarnwell::test
