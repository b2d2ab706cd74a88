// What every class promises by the tables of the object model: the interfaces that it answers to,
// those that it claims error information for, which null pointers it refuses how, and that a
// failed call clears its out values. A backend adds rows and nothing else.
#pragma once

#include "module/outcome.h"
#include "support/tempfolder.h"

#include <tarnwell/tarnwell.h>

#include <gmock/gmock.h>

#include <functional>
#include <vector>

namespace tarnwell::test
{

// What a null out pointer leaves: message 106, or nothing beside the status.
enum class Null
{
    Message,
    Bare
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

// Makes an object, plain or as a part of `outer`, and asks it for `iid`.
using Creation = std::function<HRESULT(::IUnknown* outer, const GUID& iid, void** out)>;

struct ClassContract
{
    const char* name;
    // A new object. The folder holds the file "a.txt" and nothing else, for whom it may concern.
    std::function<ComPtr<::IUnknown>(const TempFolder&)> make;
    std::vector<GUID> interfaces; // the first also serves for IUnknown
    std::vector<GUID> errorInfo;
    std::vector<NullCall> nulls;
    std::vector<FailingCall> failures;
    // How the host makes one itself; nothing for objects that others hand out.
    Creation create = {};
};

void PrintTo(const ClassContract& contract, std::ostream* out);
std::string ContractName(const testing::TestParamInfo<ClassContract>& info);

class Contract : public testing::TestWithParam<ClassContract>
{
protected:
    Contract();

    TempFolder folder;
    ComPtr<::IUnknown> object;
};

// Of the classes that hosts make themselves.
class CreationContract : public testing::TestWithParam<ClassContract>
{
};

// Rows for methods of interface `I`.
template <class I, class F> NullCall NullOf(const char* method, Null leaves, F call)
{
    return {method, leaves, [call](::IUnknown* object) {
                const auto view = ComPtr<::IUnknown>::Share(object).As<I>();
                return view ? call(view.Get()) : S_OK;
            }};
}

// `call` gets the interface and the address of a `Value` that holds `set`.
template <class I, class Value, class F>
FailingCall ClearedBy(const char* method, Value set, F call)
{
    return {method, [set, call](::IUnknown* object) {
                Value value = set;
                const auto view = ComPtr<::IUnknown>::Share(object).As<I>();
                return view && call(view.Get(), &value) < 0 && value == Value{};
            }};
}

} // namespace tarnwell::test
