// Clients whose failures all count: what their words and exit codes mean.
#pragma once

#include "runner/client.h"

#include <tarnwell/constants.h>

#include <span>
#include <string>
#include <string_view>

namespace tarnwell
{

// What a failed run means.
struct StrictFailure
{
    HRESULT status;
    MessageId message; // inserts: what was asked for, the client's words, the exit code
};

// A line of the client's words that begins and ends so; names of others' stand in between.
struct StrictPhrase
{
    std::u16string_view beginning;
    std::u16string_view ending;
    StrictFailure failure;
};

// What they mean in all systems.
inline constexpr StrictFailure noRepository{HistoryNoRepository, MessageId::RepositoryNotFound};
inline constexpr StrictFailure noPath{HistoryNoPath, MessageId::HistoryPathNotFound};
inline constexpr StrictFailure noTreePath{HistoryNoPath, MessageId::TreePathNotFound};
inline constexpr StrictFailure noFile{HistoryWrongKind, MessageId::TreeItemNotFile};
inline constexpr StrictFailure noFolder{HistoryWrongKind, MessageId::TreeItemNotFolder};
inline constexpr StrictFailure noRevision{HistoryNoRevision, MessageId::RevisionNotFound};
inline constexpr StrictFailure noRight{E_ACCESSDENIED, MessageId::RepositoryAccessDenied};
inline constexpr StrictFailure incomplete{HistoryIncomplete, MessageId::RepositoryIncomplete};
inline constexpr StrictFailure badSettings{HistoryBadSettings,
                                           MessageId::RepositorySettingsInvalid};
inline constexpr StrictFailure serverSilent{HistoryServerSilent, MessageId::ServerSilent};
inline constexpr StrictFailure badAnswer{HistoryBadAnswer, MessageId::ClientAnswerInvalid};
inline constexpr StrictFailure otherFailure{HistoryClientFailed, MessageId::ClientFailed};

// What was asked for, for texts.
struct StrictSubject
{
    std::u16string address;
    std::u16string revision;
};

// By the first line that one of `phrases` fits; the first phrase that fits a line counts.
StrictFailure StrictFailureOf(std::u16string_view words, std::span<const StrictPhrase> phrases);

// Throws if the exit code says that the client failed.
void ThrowIfStrictFailed(const ClientRow& row, const ClientOutcome& outcome,
                         std::span<const StrictPhrase> phrases, const StrictSubject& subject);

// `source` names the file system.
[[noreturn]] void ThrowStrictFailure(const char16_t* source, const StrictFailure& failure,
                                     const std::u16string& insert,
                                     const std::u16string& words = {});

// The text of what the client printed. Throws where the platform can't convert it, so that nothing
// is lost; what is ill-formed is replaced.
std::u16string StrictText(const ClientRow& row, std::string_view bytes);

} // namespace tarnwell
