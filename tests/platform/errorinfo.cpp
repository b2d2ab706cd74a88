// The thread's error information.
#include "platform/wide.h"

#include <tarnwell/pointers.h>

#include <gtest/gtest.h>

#include <thread>

namespace tarnwell::test
{
namespace
{

constexpr GUID someGuid{0x12345678, 1, 2, {3, 4, 5, 6, 7, 8, 9, 10}};

ComPtr<ICreateErrorInfo> Made()
{
    ComPtr<ICreateErrorInfo> info;
    EXPECT_EQ(CreateErrorInfo(info.Out()), S_OK);
    return info;
}

// A reading side, through the platform's own identifiers.
ComPtr<IErrorInfo> ReadingSide(const ComPtr<ICreateErrorInfo>& info)
{
    ComPtr<IErrorInfo> reader;
    EXPECT_EQ(info->QueryInterface(IID_IErrorInfo, reader.OutVoid()), S_OK);
    return reader;
}

LPOLESTR UnitsOf(std::u16string& text)
{
    return Wide(text.data());
}

TEST(ErrorInfo, TextsAreCopied)
{
    const ComPtr<ICreateErrorInfo> info = Made();
    std::u16string description = u"what";
    std::u16string source = u"who";
    std::u16string helpFile = u"where";
    EXPECT_EQ(info->SetGUID(someGuid), S_OK);
    EXPECT_EQ(info->SetDescription(UnitsOf(description)), S_OK);
    EXPECT_EQ(info->SetSource(UnitsOf(source)), S_OK);
    EXPECT_EQ(info->SetHelpFile(UnitsOf(helpFile)), S_OK);
    EXPECT_EQ(info->SetHelpContext(7), S_OK);
    description = source = helpFile = u"gone";

    const ComPtr<IErrorInfo> reader = ReadingSide(info);
    GUID guid = {};
    EXPECT_EQ(reader->GetGUID(&guid), S_OK);
    EXPECT_TRUE(guid == someGuid);
    Bstr text;
    EXPECT_EQ(reader->GetDescription(text.Out()), S_OK);
    EXPECT_EQ(text.View(), u"what");
    EXPECT_EQ(reader->GetSource(text.Out()), S_OK);
    EXPECT_EQ(text.View(), u"who");
    EXPECT_EQ(reader->GetHelpFile(text.Out()), S_OK);
    EXPECT_EQ(text.View(), u"where");
    DWORD context = 0;
    EXPECT_EQ(reader->GetHelpContext(&context), S_OK);
    EXPECT_EQ(context, 7U);
}

TEST(ErrorInfo, TextThatWasNotSetIsNull)
{
    const ComPtr<IErrorInfo> reader = ReadingSide(Made());
    Bstr text;
    EXPECT_EQ(reader->GetDescription(text.Out()), S_OK);
    EXPECT_FALSE(text);
}

TEST(ErrorInfo, BothSidesAreOneObject)
{
    const ComPtr<ICreateErrorInfo> info = Made();
    const ComPtr<IErrorInfo> reader = ReadingSide(info);
    ComPtr<IUnknown> first;
    ComPtr<IUnknown> second;
    EXPECT_EQ(info->QueryInterface(IID_IUnknown, first.OutVoid()), S_OK);
    EXPECT_EQ(reader->QueryInterface(IID_IUnknown, second.OutVoid()), S_OK);
    EXPECT_EQ(first.Get(), second.Get());
    ComPtr<IUnknown> other;
    EXPECT_EQ(info->QueryInterface(IID_ISequentialStream, other.OutVoid()), E_NOINTERFACE);
    EXPECT_FALSE(other);
}

TEST(ErrorInfo, IsTakenOutOnce)
{
    const ComPtr<IErrorInfo> reader = ReadingSide(Made());
    EXPECT_EQ(SetErrorInfo(0, reader.Get()), S_OK);
    ComPtr<IErrorInfo> taken;
    EXPECT_EQ(GetErrorInfo(0, taken.Out()), S_OK);
    EXPECT_EQ(taken.Get(), reader.Get());
    EXPECT_EQ(GetErrorInfo(0, taken.Out()), S_FALSE);
    EXPECT_FALSE(taken);
}

TEST(ErrorInfo, NullClears)
{
    const ComPtr<IErrorInfo> reader = ReadingSide(Made());
    EXPECT_EQ(SetErrorInfo(0, reader.Get()), S_OK);
    EXPECT_EQ(SetErrorInfo(0, nullptr), S_OK);
    ComPtr<IErrorInfo> taken;
    EXPECT_EQ(GetErrorInfo(0, taken.Out()), S_FALSE);
}

TEST(ErrorInfo, IsEachThreadsOwn)
{
    const ComPtr<IErrorInfo> reader = ReadingSide(Made());
    EXPECT_EQ(SetErrorInfo(0, reader.Get()), S_OK);
    std::thread([&] {
        ComPtr<IErrorInfo> taken;
        EXPECT_EQ(GetErrorInfo(0, taken.Out()), S_FALSE);
        // Goes with the thread.
        EXPECT_EQ(SetErrorInfo(0, reader.Get()), S_OK);
    }).join();
    ComPtr<IErrorInfo> taken;
    EXPECT_EQ(GetErrorInfo(0, taken.Out()), S_OK);
    EXPECT_EQ(taken.Get(), reader.Get());
}

TEST(ErrorInfo, ReservedArgumentIsChecked)
{
    ComPtr<IErrorInfo> taken;
    EXPECT_EQ(GetErrorInfo(1, taken.Out()), E_INVALIDARG);
    EXPECT_EQ(SetErrorInfo(1, nullptr), E_INVALIDARG);
    EXPECT_EQ(GetErrorInfo(0, nullptr), E_INVALIDARG);
}

} // namespace
} // namespace tarnwell::test
