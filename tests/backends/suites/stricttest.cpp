#include "backends/suites/stricttest.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

using Files = std::vector<std::pair<std::u16string, std::string>>;

Files ManyFiles(const Backend& backend)
{
    Files files = {{u"binary", binaryContent},  {u"empty", ""},
                   {u"large", largeContent},    {u"same.txt", "inner"},
                   {u"sub/inner.txt", "inner"}, {u"sub/deep/bottom.txt", "bottom"}};
    for (const auto& names : {backend.names, backend.strict.names})
    {
        for (const std::u16string_view name : names)
            files.emplace_back(name, EncodeName(name).value());
    }
    return files;
}

constexpr const char* lines = "one of several lines\nanother\nand a third\nand a fourth\n";

std::unique_ptr<StrictSample> MakeStrictSample(const Backend& backend)
{
    auto sample = std::make_unique<StrictSample>();
    sample->data = backend.makeData();
    BackendData& data = *sample->data;
    if (backend.folders)
    {
        for (const char16_t* const folder : {u"sub", u"sub/deep"})
            data.MakeFolder(folder);
    }
    const Files files = ManyFiles(backend);
    data.PutAll(files);
    data.Put(u"text.txt", "first", wholeDescription);
    sample->firstId = data.LatestId();
    sample->firstFiles = {files.begin(), files.end()};
    sample->lastFiles = sample->firstFiles;
    sample->firstFiles[u"text.txt"] = "first";

    data.Put(u"old.txt", lines, "made");
    data.Rename(u"old.txt", u"sub/new name.txt", "renamed");
    sample->lastFiles[u"sub/new name.txt"] = lines + std::string("more\n");
    data.Put(u"sub/new name.txt", sample->lastFiles[u"sub/new name.txt"], "lengthened");

    data.Put(u"again.txt", "1", "made first");
    data.Remove(u"again.txt", "removed");
    data.Put(u"again.txt", "2", "made again");
    sample->lastFiles[u"again.txt"] = "2";

    data.Put(u"gone.txt", "of no use", "made to go");
    sample->beforeGoneId = data.LatestId();
    data.Remove(u"gone.txt", "gone");

    if (backend.strict.links)
    {
        data.PutLink(u"link", "text.txt");
        sample->lastFiles[u"link"] = "text.txt";
    }
    if (backend.strict.programs)
    {
        data.PutProgram(u"program", "#!/bin/sh\n");
        sample->lastFiles[u"program"] = "#!/bin/sh\n";
    }
    data.Put(u"text.txt", "content", "an end");
    sample->lastFiles[u"text.txt"] = "content";
    sample->lastId = data.LatestId();
    sample->namesOfFirst = data.OtherNamesOf(sample->firstId);
    return sample;
}

struct Samples : testing::Environment
{
    void TearDown() override
    {
        all.clear();
    }
    std::map<const Backend*, std::unique_ptr<StrictSample>> all;
};

} // namespace

const std::string wholeDescription = "a beginning\n\nwith a body\n\n  and more";

const StrictSample& StrictSampleOf(const Backend& backend)
{
    // Registered last and so ended first, while there are clients still.
    static auto* const samples = new Samples;
    [[maybe_unused]] static const auto* const registered =
        testing::AddGlobalTestEnvironment(samples);
    std::unique_ptr<StrictSample>& sample = samples->all[&backend];
    if (!sample)
        sample = MakeStrictSample(backend);
    return *sample;
}

StrictTest::StrictTest()
{
    if (!TestsRun())
        return;
    Strictly().data->Show();
    host_->credentials = Strictly().data->Credentials();
}

} // namespace tarnwell::test
