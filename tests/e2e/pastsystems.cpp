#include "e2e/pastsystems.h"

#include "support/mercurialrepository.h"
#include "support/perforceserver.h"
#include "support/repository.h"
#include "support/svnrepository.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{

namespace
{

constexpr const char* secondMessage = "second\n\nwith more";
constexpr const char* failsWithoutRepository = "0x80040202";
constexpr const char* failsWithoutPath = "0x80040203";

Past MakeGit()
{
    const auto made = std::make_shared<Repository>();
    std::filesystem::create_directories(std::filesystem::path(*made / u"dir") / "sub");
    WriteBytes(Joined(*made / u"dir", u"b c.txt"), "b");
    WriteBytes(Joined(Joined(*made / u"dir", u"sub"), u"deep.txt"), "deep");
    const std::string first = made->Commit(u"dir/a.txt", "old", "first");
    WriteBytes(Joined(*made / u"dir", u"more.txt"), "more");
    const std::string second = made->Commit(u"dir/a.txt", "new text", secondMessage);
    made->Git("tag v1.0 " + first);
    const auto nowhere = std::make_shared<TempFolder>();
    return {u"git:" + (*made / u"dir"),
            u"#v1.0",
            u"#" + DecodeName(second),
            second,
            *made / u"dir",
            u"git:" + nowhere->Text(),
            failsWithoutRepository,
            "Ann",
            std::make_shared<
                std::pair<std::shared_ptr<const Repository>, std::shared_ptr<const TempFolder>>>(
                made, nowhere)};
}

Past MakeSubversion()
{
    const auto made = std::make_shared<SvnRepository>();
    for (const char* const folder : {"dir", "dir/sub"})
        made->MakeFolder(folder);
    made->Commit("dir/b c.txt", "b");
    made->Commit("dir/sub/deep.txt", "deep");
    const int first = made->Commit("dir/a.txt", "old", "first");
    made->Commit("dir/more.txt", "more");
    const int second = made->Commit("dir/a.txt", "new text", secondMessage);
    const auto name = [](int revision) {
        return u"@" + DecodeName(std::to_string(revision));
    };
    return {made->Address(u"dir"),  name(first), name(second),
            std::to_string(second), {},          u"svnfile:///nowhere/at/all",
            failsWithoutRepository, "Ann",       made};
}

Past MakeMercurial()
{
    const auto made = std::make_shared<MercurialRepository>();
    const std::vector<std::string> by = {"-u", "Ann"};
    std::filesystem::create_directories(std::filesystem::path(*made / u"dir") / "sub");
    WriteBytes(Joined(*made / u"dir", u"b c.txt"), "b");
    WriteBytes(Joined(Joined(*made / u"dir", u"sub"), u"deep.txt"), "deep");
    made->Commit(u"dir/a.txt", "old", "first", by);
    WriteBytes(Joined(*made / u"dir", u"more.txt"), "more");
    made->Commit(u"dir/a.txt", "new text", secondMessage, by);
    const auto nowhere = std::make_shared<TempFolder>();
    return {u"hg:" + (*made / u"dir"),
            u"#0",
            u"#1",
            made->Hg("log -r 1 --template {node}"),
            *made / u"dir",
            u"hg:" + nowhere->Text(),
            failsWithoutRepository,
            "Ann",
            std::make_shared<std::pair<std::shared_ptr<const MercurialRepository>,
                                       std::shared_ptr<const TempFolder>>>(made, nowhere)};
}

// Of all places on a server the client says the same: no such files.
Past MakePerforce()
{
    const std::shared_ptr<PerforceServer> made = PerforceServer::Make();
    made->Submit("dir/b c.txt", "b");
    made->Submit("dir/sub/deep.txt", "deep");
    const int first = made->Submit("dir/a.txt", "old", "first");
    made->Submit("dir/more.txt", "more");
    const int second = made->Submit("dir/a.txt", "new text", secondMessage);
    const auto name = [](int change) {
        return u"@" + DecodeName(std::to_string(change));
    };
    return {made->Address("dir"),
            name(first),
            name(second),
            std::to_string(second),
            {},
            u"p4:////depot/nowhere/at/all",
            failsWithoutPath,
            made->Author(),
            made};
}

} // namespace

std::vector<PastSystem> PastSystems()
{
    return {{"Git", MakeGit, u"#no-such-tag"},
            {"Mercurial", MakeMercurial, u"#no-such-tag"},
            {"Perforce", MakePerforce, u"@no-such-label"},
            {"Subversion", MakeSubversion, u"@99"}};
}

} // namespace tarnwell::test
