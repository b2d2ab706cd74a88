#include "faults/backendhere.h"

#include "module/lifecycle.h"

#include <tarnwell/text.h>

namespace tarnwell::test
{
namespace
{

// Does what the real client does, and where it did it before, says again what that said, which is
// a hundred times faster. One that is spoken to while it runs is always the real one.
const std::string replayingClient = R"(set -f
case "$*" in *--batch*|*cmdserver*|*"-x - "*) exec "$REAL" "$@" ;; esac
name() { IFS=/; set -- $*; IFS=_; said=${0%/*}/said-"$*"; unset IFS; }
name "$@"
[ ${#said} -lt 200 ] || said=${0%/*}/said-$(echo "$*" | cksum | tr -d ' ')
if [ ! -f "$said.code" ]; then
    "$REAL" "$@" >"$said" 2>"$said.err"
    echo $? >"$said.code"
fi
cat "$said"
[ ! -s "$said.err" ] || cat "$said.err" >&2
read code <"$said.code"
exit $code)";

} // namespace

BackendHere::BackendHere(const Backend& backend) : backend_(backend), data_(backend.makeData())
{
    data_->Put(u"a.txt", content);
    if (backend.folders)
    {
        data_->MakeFolder(u"sub");
        data_->Put(u"sub/b.txt", "b");
    }
    if (!backend.client.empty())
        client_.emplace(std::string(backend.client), replayingClient);
    host_->credentials = data_->Credentials();
    EXPECT_EQ(Factory()->CreateInstance(nullptr, IID_IFileSystem, system.OutVoid()), S_OK);
    system.As<IFileSystemInit>()->SetHost(host_->Unknown());
}

ComPtr<IFile> BackendHere::File(std::u16string_view name) const
{
    ComPtr<IFile> file;
    EXPECT_EQ(system->GetFile(Wide(Address(name)), VARIANT_FALSE, file.Out()), S_OK);
    return file;
}

ComPtr<IFolder> BackendHere::Folder(std::u16string_view name) const
{
    ComPtr<IFolder> folder;
    EXPECT_EQ(system->GetFolder(Wide(Address(name)), VARIANT_FALSE, folder.Out()), S_OK);
    return folder;
}

std::u16string BackendHere::NewName() const
{
    return u"new" + DecodeName(std::to_string(++names_));
}

ComPtr<::IClassFactory> BackendHere::Factory() const
{
    ComPtr<::IClassFactory> factory;
    StartModule();
    EXPECT_EQ(DllGetClassObject(backend_.systemClass, IidOf<::IClassFactory>(), factory.OutVoid()),
              S_OK);
    StopModule();
    return factory;
}

} // namespace tarnwell::test
