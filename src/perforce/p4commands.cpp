#include "perforce/p4commands.h"

#include "addressed/interfaceimpl.h"
#include "frame/exception.h"
#include "frame/messages.h"
#include "frame/text.h"
#include "frame/trim.h"
#include "perforce/p4parser.h"
#include "perforce/p4uri.h"
#include "platform/clients.h"
#include "platform/printtarget.h"
#include "runner/commandline.h"
#include "runner/readstream.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <array>

namespace tarnwell
{

namespace
{

// Its lines end as the platform's do; where that is a line feed alone, an empty line is one as
// well.
const ClientRow& P4Client()
{
    static const ClientRow row{
        .source = p4Source,
        .hiddenNames = nullptr,
        .decoding = Decoding::Widen,
        .bareLineFeed =
            clientNames.printReturns ? BareLineFeed::LooksLikeTheEnd : BareLineFeed::IsALine,
        .exitCodePreset = 0,
        .notFound = MessageId::PerforceClientNotFound,
        .communication = MessageId::PerforceCommunicationFailed,
        .reportedFailure = MessageId::PerforceAccessFailed,
    };
    return row;
}

std::u16string PathArgument(std::u16string_view path)
{
    return Quoted(P4PathArgument(path, clientNames.takeBytes));
}

std::u16string DepotPath(const std::u16string& path)
{
    return NormalizeDepotPath(WithoutTrailingSlashes(path));
}

// One run; what `read` makes of the output.
template <class Result> struct P4Answer
{
    Result result;
    ClientOutcome outcome;
};

template <class Result>
P4Answer<Result> RunP4(const HostUIUser& host, const Uri& uri, const std::u16string& arguments,
                       Result (*read)(BufferedReader&))
{
    Result result;
    ClientCall call;
    call.program = clientNames.perforce;
    call.arguments = P4GlobalOptions(host, uri) + arguments;
    call.readOutput = [&](BufferedReader& output) {
        result = read(output);
    };
    ClientOutcome outcome = RunClient(P4Client(), call);
    return {std::move(result), std::move(outcome)};
}

// That there is nothing of the kind is no failure here.
FSItems ListP4(const HostUIUser& host, const Uri& uri, const std::u16string& arguments,
               FSItems (*read)(BufferedReader&))
{
    P4Answer<FSItems> answer = RunP4(host, uri, arguments, read);
    if (answer.outcome.errors.find(u"no such file(s)") == std::u16string::npos)
        CheckP4Failure(host, &uri, uri.GetText(), answer.outcome);
    return std::move(answer.result);
}

// All that the address has but the path. Its class is none that would look at the text again.
std::u16string AddressOf(UriParts& parts, std::u16string path)
{
    parts.path = std::move(path);
    return Uri({}).Compose(parts)->GetText();
}

RevisionRecord WorkingCopy(std::u16string path)
{
    RevisionRecord record;
    record.id = FormatMessageById(MessageId::WorkingCopy);
    record.uri = std::move(path);
    return record;
}

// Of a decoded name: whether all of its bytes were UTF-8. Those that weren't are surrogates that
// are in no pair.
bool IsWellFormed(std::u16string_view decoded)
{
    bool isSecond = false;
    for (const char16_t unit : decoded)
    {
        const bool isLow = (unit & 0xFC00) == 0xDC00;
        if (isLow && !isSecond)
            return false;
        isSecond = (unit & 0xFC00) == 0xD800;
    }
    return true;
}

// A name, or a revision, for a client that takes bytes.
std::u16string NameArgument(std::u16string_view name)
{
    const bool areBytes =
        std::all_of(name.begin(), name.end(), [](char16_t unit) { return unit <= 0xFF; });
    if (areBytes)
    {
        std::u16string decoded = DecodeName(std::string(name.begin(), name.end()));
        if (IsWellFormed(decoded))
            return decoded;
    }
    return std::u16string(name);
}

// The file that the client prints into. Removed unless it was opened, and then with its handle.
class PrintTarget
{
public:
    explicit PrintTarget(const std::u16string& address)
    {
        if (MakePrintTarget(path_.data()))
            return;
        const HRESULT status = EnsureFailed(StatusFromLastError());
        throw ComException(
            status, FormatMessageWithStatus(MessageId::TemporaryFileFailed, status, {address}),
            At(p4Source));
    }
    PrintTarget(const PrintTarget&) = delete;
    PrintTarget& operator=(const PrintTarget&) = delete;
    ~PrintTarget()
    {
        if (!isOpened_)
            RemovePrintTarget(path_.data());
    }

    std::u16string_view Path() const
    {
        return Units(path_.data());
    }

    OsHandle Open(const std::u16string& address)
    {
        OsHandle file(OpenPrintTarget(path_.data()));
        isOpened_ = static_cast<bool>(file);
        if (isOpened_)
            return file;
        const HRESULT status = EnsureFailed(StatusFromLastError());
        throw ComException(status,
                           FormatMessageWithStatus(MessageId::OpenFailed, status, {address}),
                           At(p4Source));
    }

private:
    std::array<WCHAR, MAX_PATH> path_{};
    bool isOpened_ = false;
};

} // namespace

std::u16string P4GlobalOptions(const HostUIUser& host, const Uri& uri)
{
    const UriParts parts = uri.GetParts();
    Credentials credentials{parts.user, parts.password, parts.host};
    if (FindClient(Wide(clientNames.perforce)))
        credentials = host.ResolveCredentials(credentials, perforceCredentials);
    std::u16string options;
    if (!credentials.user.empty())
        options += Option(u"-u", credentials.user);
    if (!credentials.user.empty() && !credentials.password.empty())
        options += Option(u"-P", credentials.password);
    if (!credentials.host.empty())
        options += Option(u"-p", credentials.host);
    return options;
}

std::u16string P4FstatArguments(std::u16string_view path)
{
    return u"fstat -s -l " + PathArgument(path);
}

std::u16string P4DirsArguments(std::u16string_view path)
{
    return u"dirs " + PathArgument(path);
}

std::u16string P4PrintArguments(std::u16string_view path, std::u16string_view target)
{
    return u"print -o " + Quoted(target) + u" -q " + PathArgument(path);
}

std::u16string P4FilelogArguments(std::u16string_view path)
{
    return u" filelog -l -t " + PathArgument(path) + u" ";
}

std::u16string P4HaveArguments(std::u16string_view path)
{
    return u" have " + PathArgument(path);
}

std::u16string P4PathArgument(std::u16string_view path, bool takeBytes)
{
    if (!takeBytes)
        return std::u16string(path);
    std::u16string argument;
    for (std::size_t at = 0; at < path.size();)
    {
        const std::size_t end = std::min(path.find_first_of(u"/@#", at), path.size() - 1) + 1;
        argument += NameArgument(path.substr(at, end - at));
        at = end;
    }
    return argument;
}

void CheckP4Failure(const HostUIUser& host, const Uri* uri, const std::u16string& address,
                    const ClientOutcome& outcome)
{
    const std::u16string& errors = outcome.errors;
    if (errors.empty())
        return;
    const auto holds = [&](std::u16string_view phrase) {
        return errors.find(phrase) != std::u16string::npos;
    };
    const auto fail = [&](HRESULT status, MessageId message) {
        throw ComException(status,
                           FormatMessageById(message, {address, std::u16string(Trimmed(errors))}),
                           At(p4Source));
    };
    if (uri != nullptr && (holds(u"P4PASSWD") || holds(u"Can't create a new user")))
    {
        host.ReportCredentialsRefused(u"Perforce: " + std::u16string(Trimmed(errors)));
        fail(E_FAIL, MessageId::PerforceCredentialsRefused);
    }
    if (holds(u"no such file"))
        fail(StatusFromError(ERROR_FILE_NOT_FOUND), P4Client().reportedFailure);
    if (outcome.exitCode != 0)
        fail(E_FAIL, P4Client().reportedFailure);
}

std::shared_ptr<FSItem> P4FindItem(const HostUIUser& host, const Uri& uri)
{
    UriParts parts = uri.GetParts();
    const std::u16string path = DepotPath(parts.path);
    FSItems found = ListP4(host, uri, P4FstatArguments(path), ReadFstat);
    // Always asked: a folder of that name comes before the file.
    FSItems folders = ListP4(host, uri, P4DirsArguments(path), ReadDirs);
    if (!folders.empty())
        found = std::move(folders);
    if (found.empty())
        ThrowNotFound(uri.GetText());
    found.front()->text = AddressOf(parts, std::move(found.front()->text));
    return found.front();
}

FSItems P4ListFolder(const HostUIUser& host, const Uri& uri)
{
    UriParts parts = uri.GetParts();
    const std::u16string path = DepotPath(parts.path);
    const std::u16string_view folder = p4Marker.Strip(path);
    const std::u16string revision = path.substr(folder.size());
    const std::u16string all =
        std::u16string(folder) + (folder.ends_with(u'/') ? u"*" : u"/*") + revision;
    FSItems items = ListP4(host, uri, P4FstatArguments(all), ReadFstat);
    CompleteP4Files(uri, items);
    for (std::shared_ptr<FSItem>& sub : ListP4(host, uri, P4DirsArguments(all), ReadDirs))
    {
        sub->text = AddressOf(parts, sub->text + revision);
        items.push_back(std::move(sub));
    }
    return items;
}

void CompleteP4Files(const Uri& folder, const FSItems& files)
{
    UriParts parts = folder.GetParts();
    for (const std::shared_ptr<FSItem>& file : files)
        file->text = AddressOf(parts, file->text + u"#" + Decimal(file->revision));
}

std::vector<RevisionRecord> P4History(const HostUIUser& host, const std::u16string& address)
{
    const auto file = P4Uri(address).Clone();
    UriParts parts = file->GetParts();
    P4Answer<P4FileLog> answer =
        RunP4(host, *file, P4FilelogArguments(DepotPath(parts.path)), ReadFileLog);
    const std::u16string found = AddressOf(parts, std::move(answer.result.depotFile));
    std::vector<RevisionRecord> records = std::move(answer.result.records);
    for (RevisionRecord& record : records)
        record.uri = found + u"#" + record.id;
    std::u16string local = P4Have(host, found);
    if (!local.empty())
        records.insert(records.begin(), WorkingCopy(std::move(local)));
    CheckP4Failure(host, file.get(), address, answer.outcome);
    return records;
}

ComPtr<IFileStream> P4Print(const HostUIUser& host, const Uri& uri)
{
    const std::u16string& address = uri.GetText();
    PrintTarget target(address);
    const auto arguments = P4PrintArguments(NormalizeDepotPath(uri.GetPath()), target.Path());
    const auto answer = RunP4(host, uri, arguments, ReadPrint);
    CheckP4Failure(host, &uri, address, answer.outcome);
    return MakeReadStream(std::make_shared<OsHandle>(target.Open(address)), p4Source);
}

std::u16string P4Have(const HostUIUser& host, const std::u16string& address)
{
    const P4Uri uri(address);
    const std::u16string path = NormalizeDepotPath(uri.GetPath());
    P4Answer<std::u16string> answer = RunP4(host, uri, P4HaveArguments(path), ReadHave);
    CheckP4Failure(host, &uri, address, answer.outcome);
    return std::move(answer.result);
}

} // namespace tarnwell
