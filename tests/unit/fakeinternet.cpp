#include "unit/fakeinternet.h"

#include "frame/filetimes.h"
#include "frame/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace tarnwell::test
{

namespace
{

FakeInternet* active = nullptr;

std::u16string OrNull(LPCWSTR text)
{
    return text == nullptr ? u"(null)" : std::u16string(Units(text));
}

void Fill(WIN32_FIND_DATAW& record, const FakeEntry& entry)
{
    record = {};
    record.dwFileAttributes = entry.attributes;
    record.nFileSizeHigh = static_cast<DWORD>(entry.size >> 32);
    record.nFileSizeLow = static_cast<DWORD>(entry.size);
    record.ftLastWriteTime = FileTimeOf(entry.time);
    std::memcpy(record.cFileName, entry.name.c_str(), (entry.name.size() + 1) * sizeof(char16_t));
}

bool Contains(const std::vector<std::u16string>& paths, const std::u16string& path)
{
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

} // namespace

std::string RegistryText(std::u16string_view text)
{
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * 2) +
           std::string(2, '\0');
}

FakeInternet::FakeInternet()
{
    active = this;
}

FakeInternet::~FakeInternet()
{
    active = nullptr;
}

FakeInternet* FakeInternet::Active()
{
    return active;
}

void FakeInternet::Fail(const std::string& operation, DWORD error,
                        std::optional<std::u16string> words)
{
    failures_[operation].push_back({error, std::move(words)});
}

std::vector<std::u16string> FakeInternet::Calls() const
{
    const std::lock_guard locked(mutex_);
    return calls_;
}

std::vector<std::u16string> FakeInternet::Calls(std::u16string_view start) const
{
    std::vector<std::u16string> calls = Calls();
    std::erase_if(calls, [&](const std::u16string& call) { return !call.starts_with(start); });
    return calls;
}

void FakeInternet::ForgetCalls()
{
    calls_.clear();
}

std::vector<std::u16string> FakeInternet::Open() const
{
    const std::lock_guard locked(mutex_);
    std::vector<std::u16string> kinds;
    for (const auto& [number, handle] : handles_)
        kinds.push_back(handle.kind);
    return kinds;
}

void FakeInternet::Record(std::u16string call)
{
    calls_.push_back(std::move(call));
}

HINTERNET FakeInternet::Make(Handle handle)
{
    handles_[++last_] = std::move(handle);
    return reinterpret_cast<HINTERNET>(last_);
}

const FakeInternet::Handle* FakeInternet::Find(HINTERNET handle, const std::u16string& kind)
{
    const auto found = handles_.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == handles_.end() || found->second.kind != kind ? nullptr : &found->second;
}

bool FakeInternet::IsBusy(HINTERNET connection) const
{
    return std::any_of(handles_.begin(), handles_.end(), [&](const auto& entry) {
        return entry.second.parent == connection && entry.second.kind != u"connection";
    });
}

bool FakeInternet::Refuse(DWORD error, std::optional<std::u16string> words)
{
    reply = std::move(words);
    SetLastError(error);
    return true;
}

// Every call takes away what was said before.
bool FakeInternet::MustFail(const std::string& operation)
{
    reply.reset();
    std::deque<Failure>& ordered = failures_[operation];
    if (ordered.empty())
        return false;
    const Failure failure = ordered.front();
    ordered.pop_front();
    return Refuse(failure.error, failure.reply);
}

bool FakeInternet::OnConnection(const std::string& operation, HINTERNET connection,
                                std::u16string call)
{
    Record(std::move(call));
    EXPECT_NE(Find(connection, u"connection"), nullptr) << "no open connection";
    EXPECT_FALSE(IsBusy(connection)) << "two at a time: " << operation;
    return !MustFail(operation);
}

HINTERNET FakeInternet::InternetOpenW(LPCWSTR agent, DWORD access, LPCWSTR proxy, LPCWSTR bypass,
                                      DWORD flags)
{
    const std::lock_guard locked(mutex_);
    Record(u"open " + OrNull(agent) + u"|" + Decimal(access) + u"|" + OrNull(proxy) + u"|" +
           OrNull(bypass) + u"|" + Decimal(flags));
    return MustFail("InternetOpenW") ? nullptr : Make({u"root"});
}

HINTERNET FakeInternet::InternetConnectW(HINTERNET root, LPCWSTR host, INTERNET_PORT port,
                                         LPCWSTR user, LPCWSTR password, DWORD service, DWORD flags,
                                         DWORD_PTR context)
{
    const std::lock_guard locked(mutex_);
    EXPECT_NE(Find(root, u"root"), nullptr);
    EXPECT_EQ(service, DWORD{INTERNET_SERVICE_FTP});
    EXPECT_EQ(context, 0U);
    Record(u"connect " + OrNull(host) + u"|" + Decimal(port) + u"|" + OrNull(user) + u"|" +
           OrNull(password) + u"|" + (flags == 0x08000000 ? u"passive" : Decimal(flags)));
    return MustFail("InternetConnectW") ? nullptr : Make({u"connection", root});
}

BOOL FakeInternet::InternetCloseHandle(HINTERNET handle)
{
    const std::lock_guard locked(mutex_);
    reply.reset();
    const auto found = handles_.find(reinterpret_cast<std::uintptr_t>(handle));
    if (found == handles_.end())
    {
        ADD_FAILURE() << "a handle that isn't open is closed";
        return 0;
    }
    closing(found->second.kind);
    if (found->second.kind != u"find")
        Record(u"close " + found->second.kind);
    handles_.erase(found);
    return !MustFail("InternetCloseHandle");
}

BOOL FakeInternet::InternetGetLastResponseInfoW(DWORD* number, LPWSTR buffer, DWORD* length)
{
    const std::lock_guard locked(mutex_);
    EXPECT_EQ(*length, 1023U);
    if (responseFails)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const std::u16string text = reply.value_or(std::u16string());
    if (text.size() >= *length)
    {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    *number = static_cast<DWORD>(LeadingNumber(text));
    *length = static_cast<DWORD>(text.size());
    std::memcpy(buffer, text.c_str(), (text.size() + 1) * sizeof(char16_t));
    return 1;
}

HINTERNET FakeInternet::FtpFindFirstFileW(HINTERNET connection, LPCWSTR pattern,
                                          WIN32_FIND_DATAW* record, DWORD flags, DWORD_PTR context)
{
    const std::lock_guard locked(mutex_);
    EXPECT_EQ(flags, DWORD{INTERNET_FLAG_RELOAD});
    EXPECT_EQ(context, 0U);
    const std::u16string wanted(Units(pattern));
    if (!OnConnection("FtpFindFirstFileW", connection, u"find " + wanted))
        return nullptr;
    std::vector<FakeEntry> entries;
    if (wanted.ends_with(u"*"))
    {
        std::u16string path = wanted.substr(0, wanted.size() - 2);
        const auto folder = folders.find(path);
        if (Contains(closedFolders, path))
        {
            Refuse(ERROR_INTERNET_EXTENDED_ERROR, u"550 Denied.\r\n");
            return nullptr;
        }
        if (folder == folders.end())
        {
            Refuse(ERROR_FILE_NOT_FOUND, u"550 No such folder.\r\n");
            return nullptr;
        }
        entries = folder->second;
        if (entries.empty())
        {
            Refuse(ERROR_NO_MORE_FILES);
            return nullptr;
        }
    }
    else if (folders.contains(wanted) || files.contains(wanted))
    {
        entries.push_back({wanted});
    }
    else
    {
        Refuse(ERROR_FILE_NOT_FOUND);
        return nullptr;
    }
    Fill(*record, entries[0]);
    return Make({u"find", connection, wanted, entries, 1});
}

BOOL FakeInternet::InternetFindNextFileW(HINTERNET find, LPVOID record)
{
    const std::lock_guard locked(mutex_);
    const Handle* const listing = Find(find, u"find");
    EXPECT_NE(listing, nullptr);
    if (MustFail("InternetFindNextFileW"))
        return 0;
    if (listing->position == listing->entries.size())
        return !Refuse(ERROR_NO_MORE_FILES);
    Handle& found = handles_[reinterpret_cast<std::uintptr_t>(find)];
    Fill(*static_cast<WIN32_FIND_DATAW*>(record), found.entries[found.position++]);
    return 1;
}

BOOL FakeInternet::FtpCreateDirectoryW(HINTERNET connection, LPCWSTR path)
{
    const std::lock_guard locked(mutex_);
    const std::u16string folder(Units(path));
    if (!OnConnection("FtpCreateDirectoryW", connection, u"create " + folder))
        return 0;
    if (folders.contains(folder))
        return !Refuse(ERROR_INTERNET_EXTENDED_ERROR, u"550 The folder exists.\r\n");
    folders[folder] = {};
    return 1;
}

BOOL FakeInternet::FtpRemoveDirectoryW(HINTERNET connection, LPCWSTR path)
{
    const std::lock_guard locked(mutex_);
    const std::u16string folder(Units(path));
    return OnConnection("FtpRemoveDirectoryW", connection, u"remove " + folder);
}

BOOL FakeInternet::FtpDeleteFileW(HINTERNET connection, LPCWSTR path)
{
    const std::lock_guard locked(mutex_);
    const std::u16string file(Units(path));
    if (!OnConnection("FtpDeleteFileW", connection, u"delete " + file))
        return 0;
    return Contains(linksToFolders, file) || !folders.contains(file) ||
           !Refuse(ERROR_INTERNET_EXTENDED_ERROR, u"550 Not a file.\r\n");
}

HINTERNET FakeInternet::FtpOpenFileW(HINTERNET connection, LPCWSTR path, DWORD access, DWORD flags,
                                     DWORD_PTR context)
{
    const std::lock_guard locked(mutex_);
    EXPECT_EQ(flags, 0x80000002U);
    EXPECT_EQ(context, 0U);
    const std::u16string file(Units(path));
    const bool reads = access == GENERIC_READ;
    if (!OnConnection("FtpOpenFileW", connection, (reads ? u"read " : u"write ") + file))
        return nullptr;
    if (reads && !files.contains(file))
    {
        Refuse(ERROR_INTERNET_EXTENDED_ERROR, u"550 No such file.\r\n");
        return nullptr;
    }
    if (!reads)
        files[file].clear();
    return Make({u"file", connection, file});
}

BOOL FakeInternet::InternetReadFile(HINTERNET file, LPVOID buffer, DWORD size, DWORD* count)
{
    const std::lock_guard locked(mutex_);
    if (MustFail("InternetReadFile"))
        return 0;
    if (Find(file, u"file") == nullptr)
        return !Refuse(ERROR_INVALID_HANDLE);
    Handle& open = handles_[reinterpret_cast<std::uintptr_t>(file)];
    const std::string& content = files[open.path];
    *count = static_cast<DWORD>(std::min<std::size_t>(size, content.size() - open.position));
    std::memcpy(buffer, content.data() + open.position, *count);
    open.position += *count;
    return 1;
}

BOOL FakeInternet::InternetWriteFile(HINTERNET file, LPCVOID buffer, DWORD size, DWORD* count)
{
    const std::lock_guard locked(mutex_);
    if (MustFail("InternetWriteFile"))
        return 0;
    if (Find(file, u"file") == nullptr)
        return !Refuse(ERROR_INVALID_HANDLE);
    files[handles_[reinterpret_cast<std::uintptr_t>(file)].path].append(
        static_cast<const char*>(buffer), size);
    *count = size;
    return 1;
}

BOOL FakeInternet::LocalFileTimeToFileTime(const FILETIME* local, FILETIME* time)
{
    if (TimeOf(*local) < localBias)
        return 0;
    *time = FileTimeOf(TimeOf(*local) - localBias);
    return 1;
}

LSTATUS FakeInternet::RegOpenKeyExW(HKEY key, LPCWSTR subkey, DWORD options, REGSAM access,
                                    HKEY* opened)
{
    EXPECT_EQ(key, HKEY_CURRENT_USER);
    EXPECT_EQ(Units(subkey), u"Software\\Dovrin\\Vorel\\7.0\\Vorel7.FTPFS");
    EXPECT_EQ(options, 0U);
    EXPECT_EQ(access, 0x20019U);
    if (!settings)
        return ERROR_FILE_NOT_FOUND;
    *opened = reinterpret_cast<HKEY>(this);
    return ERROR_SUCCESS;
}

LSTATUS FakeInternet::RegQueryValueExW(HKEY key, LPCWSTR name, DWORD*, DWORD* type, BYTE* data,
                                       DWORD* size)
{
    EXPECT_EQ(key, reinterpret_cast<HKEY>(this));
    const auto value = settings->find(std::u16string(Units(name)));
    if (value == settings->end())
        return ERROR_FILE_NOT_FOUND;
    const DWORD room = *size;
    *type = value->second.type;
    *size = static_cast<DWORD>(value->second.data.size());
    if (*size > room)
        return ERROR_MORE_DATA;
    std::memcpy(data, value->second.data.data(), *size);
    return ERROR_SUCCESS;
}

LSTATUS FakeInternet::RegCloseKey(HKEY key)
{
    EXPECT_EQ(key, reinterpret_cast<HKEY>(this));
    return ERROR_SUCCESS;
}

int FakeInternet::MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT style)
{
    EXPECT_EQ(Units(caption), u"Dovrin Vorel");
    EXPECT_EQ(style, 67U);
    questions.emplace_back(Units(text));
    owners.push_back(owner);
    return answer;
}

} // namespace tarnwell::test
