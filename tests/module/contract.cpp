#include "module/contract.h"

#include "support/whole.h"

#include <algorithm>

namespace tarnwell::test
{

namespace
{

struct KnownInterface
{
    const char* name;
    const GUID& id;
};

constexpr KnownInterface knownInterfaces[] = {
    {"IFileSystemInit", IID_IFileSystemInit},
    {"IFileSystem", IID_IFileSystem},
    {"IFileSystemCopyEx", IID_IFileSystemCopyEx},
    {"IFileSystemRevisions", IID_IFileSystemRevisions},
    {"IFileStream", IID_IFileStream},
    {"ILib7zSequentialInStream", IID_ILib7zSequentialInStream},
    {"ILib7zInStream", IID_ILib7zInStream},
    {"IFileSystemItem", IID_IFileSystemItem},
    {"IFileSystemItemExt", IID_IFileSystemItemExt},
    {"IFileSystemItemIcon", IID_IFileSystemItemIcon},
    {"IFileSystemItemComparableUrl", IID_IFileSystemItemComparableUrl},
    {"IFile", IID_IFile},
    {"IFolder", IID_IFolder},
    {"IFolderContents", IID_IFolderContents},
    {"IRevision", IID_IRevision},
    {"IRevisions", IID_IRevisions},
    {"IHostWindow", IID_IHostWindow},
    {"IHostSettings", IID_IHostSettings},
    {"IHostCredentials", IID_IHostCredentials},
    {"ICopyProgress", IID_ICopyProgress},
    {"IItemList", IID_IItemList},
    {"IClassFactory", InterfaceId<::IClassFactory>::value},
    {"ISequentialStream", InterfaceId<::ISequentialStream>::value},
    {"IErrorInfo", InterfaceId<::IErrorInfo>::value},
    {"ISupportErrorInfo", InterfaceId<::ISupportErrorInfo>::value},
};

bool Contains(const std::vector<GUID>& list, const GUID& id)
{
    return std::any_of(list.begin(), list.end(), [&](const GUID& each) { return each == id; });
}

} // namespace

void PrintTo(const ClassContract& contract, std::ostream* out)
{
    *out << contract.name;
}

std::string ContractName(const testing::TestParamInfo<ClassContract>& info)
{
    return info.param.name;
}

Contract::Contract()
{
    WriteBytes(folder / u"a.txt", "content");
    object = GetParam().make(folder);
    ClearError();
}

TEST_P(Contract, AnswersToItsInterfacesAndToNoOther)
{
    ASSERT_TRUE(object);
    for (const KnownInterface& known : knownInterfaces)
    {
        ComPtr<::IUnknown> view;
        const HRESULT status = object->QueryInterface(known.id, view.OutVoid());
        const bool promised = Contains(GetParam().interfaces, known.id);
        EXPECT_EQ(status, promised ? S_OK : E_NOINTERFACE) << known.name;
        EXPECT_EQ(static_cast<bool>(view), promised) << known.name;
    }
}

TEST_P(Contract, HasOneIdentityWhichIsItsFirstInterface)
{
    ASSERT_TRUE(object);
    const ComPtr<::IUnknown> identity = object.As<::IUnknown>();
    for (const GUID& id : GetParam().interfaces)
    {
        ComPtr<::IUnknown> view;
        ASSERT_EQ(object->QueryInterface(id, view.OutVoid()), S_OK);
        EXPECT_EQ(view.As<::IUnknown>().Get(), identity.Get());
        if (id == GetParam().interfaces.front())
        {
            EXPECT_EQ(view.Get(), identity.Get());
        }
    }
}

TEST_P(Contract, EachInterfaceRefusesANullOutPointer)
{
    ASSERT_TRUE(object);
    for (const GUID& id : GetParam().interfaces)
    {
        ComPtr<::IUnknown> view;
        ASSERT_EQ(object->QueryInterface(id, view.OutVoid()), S_OK);
        EXPECT_EQ(view->QueryInterface(IidOf<::IUnknown>(), nullptr), E_POINTER);
    }
}

TEST_P(Contract, ClaimsErrorInformationByItsList)
{
    ASSERT_TRUE(object);
    const auto support = object.As<::ISupportErrorInfo>();
    ASSERT_TRUE(support);
    for (const KnownInterface& known : knownInterfaces)
    {
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(known.id),
                  Contains(GetParam().errorInfo, known.id) ? S_OK : S_FALSE)
            << known.name;
    }
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IidOf<::IUnknown>()), S_FALSE);
}

TEST_P(Contract, RefusesNullOutPointers)
{
    ASSERT_TRUE(object);
    for (const NullCall& row : GetParam().nulls)
    {
        const Outcome outcome = OutcomeOf([&] { return row.call(object.Get()); });
        if (row.leaves == Null::Message)
            EXPECT_THAT(outcome, Refused(E_POINTER, u"Internal error (null pointer argument)."))
                << row.method;
        else
            EXPECT_THAT(outcome, FailedBare(E_POINTER)) << row.method;
    }
}

TEST_P(Contract, FailedCallsClearTheirOutValues)
{
    ASSERT_TRUE(object);
    for (const FailingCall& row : GetParam().failures)
        EXPECT_TRUE(row.clears(object.Get())) << row.method;
}

TEST_P(Contract, CountsItsReferences)
{
    ASSERT_TRUE(object);
    const ULONG count = object->AddRef();
    EXPECT_EQ(object->AddRef(), count + 1);
    EXPECT_EQ(object->Release(), count);
    EXPECT_EQ(object->Release(), count - 1);
}

TEST_P(CreationContract, IsByAnyOfTheInterfaces)
{
    for (const KnownInterface& known : knownInterfaces)
    {
        void* made = &made;
        const HRESULT status = GetParam().create(nullptr, known.id, &made);
        const bool promised = Contains(GetParam().interfaces, known.id);
        EXPECT_EQ(status, promised ? S_OK : E_NOINTERFACE) << known.name;
        EXPECT_EQ(made != nullptr, promised) << known.name;
        ComPtr<::IUnknown>::Adopt(static_cast<::IUnknown*>(made));
    }
}

TEST_P(CreationContract, AsAPartAnswersAsTheWholeDoes)
{
    Whole whole;
    ASSERT_EQ(GetParam().create(&whole, IidOf<::IUnknown>(), whole.part.OutVoid()), S_OK);
    EXPECT_NE(whole.part.Get(), &whole) << "the part's own IUnknown";
    EXPECT_EQ(whole.part.As<::IUnknown>().Get(), whole.part.Get());
    for (const KnownInterface& known : knownInterfaces)
    {
        ComPtr<::IUnknown> view;
        const HRESULT status = whole.part->QueryInterface(known.id, view.OutVoid());
        const bool promised = Contains(GetParam().interfaces, known.id);
        ASSERT_EQ(status, promised ? S_OK : E_NOINTERFACE) << known.name;
        EXPECT_EQ(whole.count, promised ? 2U : 1U) << known.name;
        if (promised)
        {
            EXPECT_EQ(view.As<::IUnknown>().Get(), &whole) << known.name;
        }
    }
    EXPECT_EQ(whole.count, 1U);
}

TEST_P(CreationContract, AsAPartClaimsErrorInformationByItsList)
{
    Whole whole;
    ASSERT_EQ(GetParam().create(&whole, IidOf<::IUnknown>(), whole.part.OutVoid()), S_OK);
    const auto support = whole.part.As<::ISupportErrorInfo>();
    ASSERT_TRUE(support);
    for (const KnownInterface& known : knownInterfaces)
    {
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(known.id),
                  Contains(GetParam().errorInfo, known.id) ? S_OK : S_FALSE)
            << known.name;
    }
}

TEST_P(CreationContract, AsAPartRefusesNullOutPointers)
{
    Whole whole;
    ASSERT_EQ(GetParam().create(&whole, IidOf<::IUnknown>(), whole.part.OutVoid()), S_OK);
    EXPECT_EQ(whole.part->QueryInterface(GetParam().interfaces.front(), nullptr), E_POINTER);
    for (const NullCall& row : GetParam().nulls)
        EXPECT_EQ(row.call(whole.part.Get()), E_POINTER) << row.method;
    EXPECT_EQ(whole.count, 1U);
}

} // namespace tarnwell::test
