#include "runner/contentfile.h"

#include "runner/outputfile.h"
#include "runner/readstream.h"

#include <algorithm>

namespace tarnwell
{

ContentFile::ContentFile(const ClientRow& row, const std::u16string& address,
                         const Patience& patience)
    : row_(row), file_(MakeOutputFile(address, row.source)), amounts_(patience.Progress())
{
    Tell();
}

void ContentFile::Restart()
{
    if (!Rewind(*file_) || !SetEndOfFile(file_->Get()))
        ThrowClientFailure(row_, row_.communication, GetLastError());
    done_ = 0;
}

void ContentFile::Expect(std::uint64_t size)
{
    total_ = size;
}

void ContentFile::Take(std::string_view bytes)
{
    DWORD written = 0;
    if (!WriteFile(file_->Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                   nullptr) ||
        written != bytes.size())
        ThrowClientFailure(row_, row_.communication, GetLastError());
    done_ += bytes.size();
    Tell();
}

ComPtr<IFileStream> ContentFile::Stream()
{
    if (!Rewind(*file_))
        ThrowClientFailure(row_, row_.communication, GetLastError());
    Tell();
    return MakeReadStream(std::move(file_), row_.source);
}

void ContentFile::Tell()
{
    told_ = std::max(told_, done_);
    amounts_.Report(told_, total_);
}

} // namespace tarnwell
