// A file system behind a client, whose platform calls fail. Nothing may stay in its temporary
// folder.
#pragma once

#include "faults/local.h"

#include "frame/comobject.h"
#include "support/environmentvalue.h"

namespace tarnwell::test
{

class FailingClientSystem : public testing::Test
{
protected:
    // Of class `System`; the addresses are a folder's and a file's.
    template <class System>
    FailingClientSystem(std::in_place_type_t<System>, std::u16string folder, std::u16string file)
        : folder_(std::move(folder)), file_(std::move(file))
    {
        EXPECT_EQ(MakeInstance<System>(nullptr, IID_IFileSystem, system_.OutVoid()), S_OK);
    }
    ~FailingClientSystem() override;

    // From here on: what a test is made of lies elsewhere.
    void SetUp() override
    {
        variable_.emplace("TMPDIR", temporary_.Path().c_str());
    }

    HRESULT List() const;
    HRESULT Stat() const;
    HRESULT Open() const;
    // Succeeds always; how many there are.
    std::uint32_t Revisions() const;

    // What the action gives with the `n`-th call of `operation` failing.
    template <class Action>
    static Result With(const char* operation, int n, DWORD error, Action&& action)
    {
        Faults faults;
        faults.Fail(operation, n, error);
        const Result result = ResultOf(action);
        EXPECT_EQ(faults.Failures(), 1) << operation << ' ' << n;
        return result;
    }
    Result ListWith(const char* operation, int n, DWORD error = someError) const
    {
        return With(operation, n, error, [&] { return List(); });
    }
    Result OpenWith(const char* operation, int n, DWORD error = someError) const
    {
        return With(operation, n, error, [&] { return Open(); });
    }

    const std::u16string folder_;
    const std::u16string file_;
    const TempFolder temporary_;
    ComPtr<IFileSystem> system_;

private:
    std::optional<EnvironmentValue> variable_;
};

} // namespace tarnwell::test
