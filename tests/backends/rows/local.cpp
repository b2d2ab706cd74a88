#include "backends/backend.h"
#include "support/tempfolder.h"

#include <tarnwell/classes.h>

namespace tarnwell::test
{
namespace
{

namespace fs = std::filesystem;

const std::u16string wideName(60, u'\u30C6');
const std::u16string longName = std::u16string(120, u'x') + u".txt";

class LocalData final : public BackendData
{
public:
    std::u16string Address(std::u16string_view name, const std::u16string&) const override
    {
        return name.empty() ? folder_.Text() : OnDisk(name).u16string();
    }
    std::u16string Put(std::u16string_view name, std::string_view bytes,
                       const std::string&) override
    {
        WriteBytes(Address(name, {}), bytes);
        return {};
    }
    void MakeFolder(std::u16string_view name) override
    {
        fs::create_directory(OnDisk(name));
    }
    fs::path OnDisk(std::u16string_view name) const override
    {
        return (folder_.Path() / name).make_preferred();
    }

private:
    const TempFolder folder_;
};

} // namespace

const Backend localBackend{
    .name = "Local",
    .systemClass = CLSID_Win32FileSystem,
    .family = Family::Local,
    .makeData = MakeData<LocalData>,
    .names = {u"with blank.txt", u" leading blank", u"100%1 %n %0", u"a;b,c'd&e=(f)[g]{h}",
              u"#1@2!3~4`5^6$7+8-9_0", u"dots.in.name", u"\u00E9t\u00E9.txt",
              u"\u65E5\u672C\u8A9E.txt", u"\U0001F600.txt", u"\U00020BB7\U0001F468\u200D\U0001F469",
              wideName, longName},
    .controlCharacters = fs::path::preferred_separator == '/',
    .writes = true,
    // Snapshots are a machine's own and none are made for tests.
    .history = false,
    .strict = {.elsewhere = true,
               .whyNot = "its revisions are snapshots, which unit/localhistory.cpp has"},
    .openIntoNothing = OpenIntoNothing::FailsWithText,
};

} // namespace tarnwell::test
