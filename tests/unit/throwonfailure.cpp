// A failure that comes from another object: its own text goes into the message.
#include "frame/publish.h"
#include "support/errorinfo.h"
#include "support/localobject.h"

#include <tarnwell/classes.h>
#include <tarnwell/items.h>
#include <tarnwell/pointers.h>

#include <gmock/gmock.h>

namespace tarnwell::test
{

namespace
{

constexpr MessageId id = MessageId::ItemFailed;
constexpr const GUID& interfaceId = IID_ISequentialStream;

// Lives on the stack and answers for one interface, or says that it can't tell.
class Object final : public LocalObject<::ISupportErrorInfo>
{
public:
    bool tells = true;
    HRESULT answer = S_OK;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override
    {
        return LocalObject::QueryInterface(tells ? iid : IID_IFolder, out);
    }
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override
    {
        return iid == interfaceId ? answer : S_FALSE;
    }
};

// The insert of the message that is thrown for a failure of `object`.
std::u16string ThrownInsert(::IUnknown* object)
{
    try
    {
        ThrowOnFailure(E_FAIL, id, object, interfaceId, u"ftpobjects", 12);
    }
    catch (const ComException& exception)
    {
        EXPECT_EQ(exception.code, static_cast<std::uint32_t>(E_FAIL));
        EXPECT_EQ(std::u16string(exception.file), u"misc");
        const std::size_t first = exception.message.find(u'"') + 1;
        const std::u16string insert =
            exception.message.substr(first, exception.message.rfind(u'"') - first);
        EXPECT_EQ(exception.message, FormatMessageWithStatus(id, E_FAIL, {insert}));
        return insert;
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

class FromAnotherObject : public testing::Test
{
protected:
    FromAnotherObject()
    {
        ClearError();
    }
    ~FromAnotherObject() override
    {
        EXPECT_EQ(object.references, 0U) << "every reference was given back";
    }

    static void LeaveText(const std::u16string& text)
    {
        PublishError(CLSID_Win32File, text, interfaceId, E_FAIL);
    }

    Object object;
};

TEST_F(FromAnotherObject, SuccessThrowsNothing)
{
    EXPECT_NO_THROW(ThrowOnFailure(S_OK, id, &object, interfaceId, u"ftpobjects", 1));
    EXPECT_NO_THROW(ThrowOnFailure(S_FALSE, id, &object, interfaceId, u"ftpobjects", 1));
}

TEST_F(FromAnotherObject, ItsTextComesBeforeThePosition)
{
    LeaveText(u"its words");
    EXPECT_EQ(ThrownInsert(&object), u"its words@ftpobjects@12");
}

TEST_F(FromAnotherObject, WithoutTextThereIsThePositionAlone)
{
    EXPECT_EQ(ThrownInsert(&object), u"ftpobjects@12");
}

TEST_F(FromAnotherObject, AnEmptyTextIsNone)
{
    LeaveText(u"");
    EXPECT_EQ(ThrownInsert(&object), u"ftpobjects@12");
    EXPECT_FALSE(TakeError()) << "it was looked at";
}

TEST_F(FromAnotherObject, ATextIsNotTakenFromAnInterfaceThatLeavesNone)
{
    LeaveText(u"of something else");
    object.answer = S_FALSE;
    EXPECT_EQ(ThrownInsert(&object), u"ftpobjects@12");
}

TEST_F(FromAnotherObject, ATextIsNotTakenFromAnObjectThatCannotTell)
{
    LeaveText(u"of something else");
    object.tells = false;
    EXPECT_EQ(ThrownInsert(&object), u"ftpobjects@12");
}

TEST_F(FromAnotherObject, NoObjectLeavesThePositionAlone)
{
    LeaveText(u"of something else");
    EXPECT_EQ(ThrownInsert(nullptr), u"ftpobjects@12");
}

} // namespace

} // namespace tarnwell::test
