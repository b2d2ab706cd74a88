#include "local/datastreams.h"

#include "frame/handle.h"
#include "frame/status.h"
#include "local/findrecord.h"
#include "local/streamwalk.h"

namespace tarnwell
{

namespace
{

constexpr DWORD namedDataStream = 4;

// ":name" of ":name:$DATA".
std::u16string_view WithoutType(std::u16string_view name)
{
    const std::size_t colon = name.rfind(u':');
    return colon == std::u16string_view::npos || colon == 0 ? name : name.substr(0, colon);
}

WIN32_FIND_DATAW RecordOf(const StreamWalk& walk, const WIN32_FIND_DATAW& file)
{
    WIN32_FIND_DATAW record = file;
    SetLongName(record, std::u16string(NameOf(file)) + std::u16string(WithoutType(walk.Name())));
    record.nFileSizeLow = walk.Header().sizeLow;
    record.nFileSizeHigh = walk.Header().sizeHigh;
    return record;
}

} // namespace

HRESULT EnumerateDataStreams(const std::u16string& path, const WIN32_FIND_DATAW& record,
                             std::vector<WIN32_FIND_DATAW>& list, const Reporter& reporter)
{
    if (backupCalls == nullptr)
        return S_OK;
    const OsHandle file(CreateFileW(Wide(path), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
    {
        const HRESULT status = StatusFromLastError();
        return PublishFailure(reporter, MessageId::DataStreamsFailed, status, {path});
    }
    StreamWalk walk(*backupCalls, file.Get());
    while (walk.Next())
    {
        if (walk.Header().id == namedDataStream)
            list.push_back(RecordOf(walk, record));
    }
    return S_OK;
}

} // namespace tarnwell
