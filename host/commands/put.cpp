#include "commands.h"
#include "content.h"
#include "identity.h"
#include "impatience.h"
#include "items.h"
#include "progressbar.h"
#include "system.h"
#include "text16.h"

namespace tarnwell::host
{

namespace
{

constexpr HRESULT sharingViolation = static_cast<HRESULT>(0x80070020);

ComPtr<IFile> NewFile(const Place& place)
{
    ComPtr<IFile> file;
    Call([&] { return place.fileSystem->GetFile(place.Text(), VARIANT_FALSE, file.Out()); });
    return file;
}

// The end of it all at Ctrl-C, which leaves what has arrived. It outlives what is written to, whose
// end may be waited for as well.
struct Cancellation
{
    explicit Cancellation(const Session& session) : impatience(session.line.json) {}

    const InterruptWatch watch;
    const Impatience impatience;
};

// What arrives, shown.
class Arrival
{
public:
    Arrival(const std::u16string& what, std::optional<std::uint64_t> total) : bar_(what, total) {}

    std::uint64_t Bytes() const
    {
        return bytes_;
    }

    void Write(Writer& writer, std::span<const char> bytes)
    {
        if (InterruptWatch::Interrupted())
            throw CopyCancelled();
        writer.Write(bytes);
        bytes_ += bytes.size();
        bar_.Show(bytes_);
    }

private:
    ProgressBar bar_;
    std::uint64_t bytes_ = 0;
};

void WriteInput(Writer& writer, Arrival& arrival)
{
    std::vector<char> block(0x10000);
    for (;;)
    {
        const std::optional<std::size_t> read = ReadInput(block.data(), block.size());
        if (!read)
            throw Failure{E_FAIL, Say(Word::InputUnreadable)};
        if (*read == 0)
            return;
        arrival.Write(writer, {block.data(), *read});
    }
}

// Opening the target for writing empties it, and with it a source that is the same file under
// another name or behind a link.
void RefuseSame(const std::optional<FileIdentity>& source, const Place& target)
{
    if (target.address.kind != &FileSystemKinds().front() || !source ||
        source != IdentityOf(target.address.text))
        return;
    throw Failure{sharingViolation, Say(Word::WritesItself, {target.address.text})};
}

void WriteFrom(Reader& reader, Writer& writer, Arrival& arrival)
{
    for (auto bytes = reader.Next(); !bytes.empty(); bytes = reader.Next())
        arrival.Write(writer, bytes);
}

// Whether the folder that it was to be in is shown. What a server hides looks as if it weren't
// there.
bool ShowsFolderOf(const Place& target)
{
    const auto item = Need<IFileSystemItem>(NewFile(target));
    const std::u16string parent = TextFrom(item.Get(), &IFileSystemItem::GetParentPath);
    ComPtr<IFolder> folder;
    ComPtr<IFolderContents> contents;
    return SUCCEEDED(target.fileSystem->GetFolder(reinterpret_cast<const OLECHAR*>(parent.c_str()),
                                                  VARIANT_TRUE, folder.Out())) &&
           SUCCEEDED(folder->GetContents(contents.Out()));
}

// Nothing where the server doesn't say.
std::optional<std::uint64_t> SizeThere(const Place& target)
{
    try
    {
        return SizeOf(FindFile(target));
    }
    catch (const Failure& failure)
    {
        if (IsMissing(failure) && ShowsFolderOf(target))
            return 0;
        return std::nullopt;
    }
}

// The end of an upload is told by nobody, whether or not the server kept it all.
void End(Writer& writer, const Place& target, std::uint64_t bytes)
{
    writer.Close();
    if (target.address.kind == &FileSystemKinds().front())
        return;
    const std::optional<std::uint64_t> there = SizeThere(target);
    if (there && *there != bytes)
        throw Failure{E_FAIL, Say(Word::NotKept, {target.address.text, Decimal(*there)})};
}

} // namespace

int Put(const Session& session)
{
    const std::u16string& source = session.line.operands[0];
    const Place target = Open(session, session.line.operands[1]);
    if (source == u"-")
    {
        RefuseSame(IdentityOfInput(), target);
        const Cancellation cancellation(session);
        Writer writer(NewFile(target));
        Arrival arrival(target.address.text, std::nullopt);
        WriteInput(writer, arrival);
        End(writer, target, arrival.Bytes());
        return exitDone;
    }
    const Place local = OpenLocal(session, source);
    // The source is opened first: if that fails, the target stays as it was.
    const ComPtr<IFile> file = FindFile(local);
    Reader reader(file);
    RefuseSame(IdentityOf(source), target);
    const Cancellation cancellation(session);
    Writer writer(NewFile(target));
    Arrival arrival(target.address.text, SizeOf(file));
    WriteFrom(reader, writer, arrival);
    End(writer, target, arrival.Bytes());
    return exitDone;
}

} // namespace tarnwell::host
