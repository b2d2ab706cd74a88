// The contract of each class, by what kind of object it is and in which row.
#pragma once

#include "backends/suites/backendtest.h"

#include <functional>

namespace tarnwell::test
{

enum class Kind
{
    FileSystem,
    File,
    Folder,
    Contents,
    Stream,
    Revisions,
    Revision
};

std::string NameOf(Kind kind);
// Of which the row has objects.
std::vector<Kind> KindsOf(const Backend& backend);

// What a null out pointer leaves: message 106, or nothing beside the status, or success.
enum class Null
{
    Message,
    Bare,
    Success
};

struct NullCall
{
    const char* method;
    Null leaves;
    std::function<HRESULT(::IUnknown*)> call; // with a null pointer where the value would go
};

struct FailingCall
{
    const char* method;
    // Calls with an out value that isn't clear. Whether it failed and the value is clear now.
    std::function<bool(::IUnknown*)> clears;
};

struct ClassContract
{
    std::vector<GUID> interfaces; // the first also serves for IUnknown
    std::vector<GUID> errorInfo;
    std::vector<NullCall> nulls;
    std::vector<FailingCall> failures;
    std::vector<FailingCall> failuresOfMissing = {};
};

ClassContract ContractOf(const Backend& backend, Kind kind);

} // namespace tarnwell::test
