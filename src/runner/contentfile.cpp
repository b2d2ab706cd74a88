#include "runner/contentfile.h"

#include "runner/outputfile.h"
#include "runner/readstream.h"

namespace tarnwell
{

ContentFile::ContentFile(const ClientRow& row, const std::u16string& address)
    : row_(row), file_(MakeOutputFile(address, row.source))
{
}

void ContentFile::Restart()
{
    if (!Rewind(*file_) || !SetEndOfFile(file_->Get()))
        ThrowClientFailure(row_, row_.communication, GetLastError());
}

void ContentFile::Take(std::string_view bytes)
{
    DWORD written = 0;
    if (!WriteFile(file_->Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                   nullptr) ||
        written != bytes.size())
        ThrowClientFailure(row_, row_.communication, GetLastError());
}

ComPtr<IFileStream> ContentFile::Stream()
{
    if (!Rewind(*file_))
        ThrowClientFailure(row_, row_.communication, GetLastError());
    return MakeReadStream(std::move(file_), row_.source);
}

} // namespace tarnwell
