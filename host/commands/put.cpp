#include "commands.h"
#include "content.h"
#include "items.h"
#include "system.h"

namespace tarnwell::host
{

namespace
{

ComPtr<IFile> NewFile(const Place& place)
{
    ComPtr<IFile> file;
    Call([&] { return place.fileSystem->GetFile(place.Text(), VARIANT_FALSE, file.Out()); });
    return file;
}

void WriteInput(Writer& writer)
{
    std::vector<char> block(0x10000);
    for (;;)
    {
        const std::optional<std::size_t> read = ReadInput(block.data(), block.size());
        if (!read)
            throw Failure{E_FAIL, u"Can't read standard input."};
        if (*read == 0)
            return;
        writer.Write({block.data(), *read});
    }
}

void WriteFrom(Reader& reader, Writer& writer)
{
    for (auto bytes = reader.Next(); !bytes.empty(); bytes = reader.Next())
        writer.Write(bytes);
}

} // namespace

int Put(const Session& session)
{
    const std::u16string& source = session.line.operands[0];
    const Place target = Open(session, session.line.operands[1]);
    if (source == u"-")
    {
        Writer writer(NewFile(target));
        WriteInput(writer);
        writer.Close();
        return exitDone;
    }
    const Place local = OpenLocal(session, source);
    // Opening the target would empty the source.
    if (target.address.kind == local.address.kind &&
        AbsolutePath(source) == AbsolutePath(target.address.text))
        throw UsageError("\"put\" can't write a file from itself.");
    // The source is opened first: if that fails, the target stays as it was.
    Reader reader(FindFile(local));
    Writer writer(NewFile(target));
    WriteFrom(reader, writer);
    writer.Close();
    return exitDone;
}

} // namespace tarnwell::host
