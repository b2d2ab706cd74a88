// What every class promises: the interfaces that it answers to, those that it claims error
// information for, which null pointers it refuses how, and that a failed call clears its out
// values. The tables are in contractrows.cpp; a backend has nothing to add.
#include "backends/suites/contractrows.h"
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

// Of the class that one kind of object has in one row.
struct Subject
{
    const Backend* backend;
    Kind kind;
};

void PrintTo(const Subject& subject, std::ostream* out)
{
    *out << subject.backend->name << NameOf(subject.kind);
}

class Contract : public RowTest, public testing::WithParamInterface<Subject>
{
protected:
    Contract()
        : RowTest(*GetParam().backend), contract(ContractOf(*GetParam().backend, GetParam().kind))
    {
    }
    void SetUp() override
    {
        RowTest::SetUp();
        if (IsSkipped())
            return;
        object = Make(u"text.txt", u"sub");
        ASSERT_TRUE(object);
        ClearError();
    }

    // An object of the kind, of this file or this folder.
    ComPtr<::IUnknown> Make(std::u16string_view file, std::u16string_view folder) const
    {
        switch (GetParam().kind)
        {
        case Kind::FileSystem:
            return system.As<::IUnknown>();
        case Kind::File:
            return File(Address(file)).As<::IUnknown>();
        case Kind::Folder:
            return Folder(Address(folder)).As<::IUnknown>();
        case Kind::Contents:
            return Contents(Address(folder)).As<::IUnknown>();
        case Kind::Stream:
            return OpenedStream(file).As<::IUnknown>();
        case Kind::Revisions:
            return RevisionsOf(Address(file)).As<::IUnknown>();
        case Kind::Revision:
            return FirstRevision(file).As<::IUnknown>();
        }
        return {};
    }

    const ClassContract contract;
    ComPtr<::IUnknown> object;

private:
    ComPtr<IFileStream> OpenedStream(std::u16string_view file) const
    {
        ComPtr<IFileStream> stream;
        EXPECT_THAT(Open(Address(file), stream), Succeeded());
        return stream;
    }
    ComPtr<IRevision> FirstRevision(std::u16string_view file) const
    {
        ComPtr<IRevision> revision;
        EXPECT_EQ(RevisionsOf(Address(file))->GetItem(0, revision.Out()), S_OK);
        return revision;
    }
};

TEST_P(Contract, AnswersToItsInterfacesAndToNoOther)
{
    for (const KnownInterface& known : knownInterfaces)
    {
        ComPtr<::IUnknown> view;
        const HRESULT status = object->QueryInterface(known.id, view.OutVoid());
        const bool promised = Contains(contract.interfaces, known.id);
        EXPECT_EQ(status, promised ? S_OK : E_NOINTERFACE) << known.name;
        EXPECT_EQ(static_cast<bool>(view), promised) << known.name;
    }
}

TEST_P(Contract, HasOneIdentityWhichIsItsFirstInterface)
{
    const ComPtr<::IUnknown> identity = object.As<::IUnknown>();
    for (const GUID& id : contract.interfaces)
    {
        ComPtr<::IUnknown> view;
        ASSERT_EQ(object->QueryInterface(id, view.OutVoid()), S_OK);
        EXPECT_EQ(view.As<::IUnknown>().Get(), identity.Get());
        if (id == contract.interfaces.front())
        {
            EXPECT_EQ(view.Get(), identity.Get());
        }
        EXPECT_EQ(view->QueryInterface(IidOf<::IUnknown>(), nullptr), E_POINTER);
    }
}

TEST_P(Contract, ClaimsErrorInformationByItsList)
{
    const auto support = object.As<::ISupportErrorInfo>();
    ASSERT_TRUE(support);
    for (const KnownInterface& known : knownInterfaces)
    {
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(known.id),
                  Contains(contract.errorInfo, known.id) ? S_OK : S_FALSE)
            << known.name;
    }
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(IidOf<::IUnknown>()), S_FALSE);
}

TEST_P(Contract, RefusesNullOutPointers)
{
    for (const NullCall& row : contract.nulls)
    {
        const Outcome outcome = OutcomeOf([&] { return row.call(object.Get()); });
        if (row.leaves == Null::Message)
            EXPECT_THAT(outcome, Refused(E_POINTER, u"Internal error (null pointer argument)."))
                << row.method;
        else if (row.leaves == Null::Bare)
            EXPECT_THAT(outcome, FailedBare(E_POINTER)) << row.method;
        else
            EXPECT_THAT(outcome, Succeeded()) << row.method;
    }
}

TEST_P(Contract, FailedCallsClearTheirOutValues)
{
    for (const FailingCall& row : contract.failures)
        EXPECT_TRUE(row.clears(object.Get())) << row.method;
}

TEST_P(Contract, FailedCallsOnWhatIsMissingClearTheirOutValues)
{
    if (contract.failuresOfMissing.empty())
        return;
    const auto missing = Make(u"none", u"none");
    for (const FailingCall& row : contract.failuresOfMissing)
        EXPECT_TRUE(row.clears(missing.Get())) << row.method;
}

TEST_P(Contract, CountsItsReferences)
{
    const ULONG count = object->AddRef();
    EXPECT_EQ(object->AddRef(), count + 1);
    EXPECT_EQ(object->Release(), count);
    EXPECT_EQ(object->Release(), count - 1);
}

std::vector<Subject> Subjects()
{
    std::vector<Subject> all;
    for (const Backend* const backend : Backends())
    {
        for (const Kind kind : KindsOf(*backend))
            all.push_back({backend, kind});
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(Backends, Contract, testing::ValuesIn(Subjects()),
                         testing::PrintToStringParamName());

// Of the class that hosts make themselves.
class CreationContract : public BackendTest
{
protected:
    HRESULT Create(::IUnknown* outer, const GUID& iid, void** out) const
    {
        return TheModule().CreateInstance(Row().systemClass, outer, iid, out);
    }

    const ClassContract contract = ContractOf(Row(), Kind::FileSystem);
};

TEST_P(CreationContract, IsByAnyOfTheInterfaces)
{
    for (const KnownInterface& known : knownInterfaces)
    {
        void* made = &made;
        const HRESULT status = Create(nullptr, known.id, &made);
        const bool promised = Contains(contract.interfaces, known.id);
        EXPECT_EQ(status, promised ? S_OK : E_NOINTERFACE) << known.name;
        EXPECT_EQ(made != nullptr, promised) << known.name;
        ComPtr<::IUnknown>::Adopt(static_cast<::IUnknown*>(made));
    }
}

TEST_P(CreationContract, OfAPartIsByIUnknownOnly)
{
    Whole whole;
    void* out = &out;
    EXPECT_EQ(Create(&whole, IID_IFileSystem, &out), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(whole.references, 0U);
}

TEST_P(CreationContract, AsAPartAnswersAsTheWholeDoes)
{
    Whole whole;
    ASSERT_EQ(Create(&whole, IidOf<::IUnknown>(), whole.part.OutVoid()), S_OK);
    EXPECT_NE(whole.part.Get(), &whole) << "the part's own IUnknown";
    EXPECT_EQ(whole.part.As<::IUnknown>().Get(), whole.part.Get());
    for (const KnownInterface& known : knownInterfaces)
    {
        ComPtr<::IUnknown> view;
        const HRESULT status = whole.part->QueryInterface(known.id, view.OutVoid());
        const bool promised = Contains(contract.interfaces, known.id);
        ASSERT_EQ(status, promised ? S_OK : E_NOINTERFACE) << known.name;
        EXPECT_EQ(whole.references, promised ? 1U : 0U) << known.name;
        if (promised)
        {
            EXPECT_EQ(view.As<::IUnknown>().Get(), &whole) << known.name;
            EXPECT_TRUE(view.As<IFileSystemInit>()) << "asked at the whole, found in the part";
        }
    }
    EXPECT_EQ(whole.references, 0U);
}

TEST_P(CreationContract, AsAPartClaimsErrorInformationByItsList)
{
    Whole whole;
    ASSERT_EQ(Create(&whole, IidOf<::IUnknown>(), whole.part.OutVoid()), S_OK);
    const auto support = whole.part.As<::ISupportErrorInfo>();
    ASSERT_TRUE(support);
    for (const KnownInterface& known : knownInterfaces)
    {
        EXPECT_EQ(support->InterfaceSupportsErrorInfo(known.id),
                  Contains(contract.errorInfo, known.id) ? S_OK : S_FALSE)
            << known.name;
    }
}

TEST_P(CreationContract, AsAPartRefusesNullOutPointersAndWorks)
{
    Whole whole;
    ASSERT_EQ(Create(&whole, IidOf<::IUnknown>(), whole.part.OutVoid()), S_OK);
    EXPECT_EQ(whole.part->QueryInterface(contract.interfaces.front(), nullptr), E_POINTER);
    for (const NullCall& row : contract.nulls)
        EXPECT_EQ(row.call(whole.part.Get()), E_POINTER) << row.method;
    std::uint32_t mask = 0;
    EXPECT_EQ(whole.part.As<IFileSystem>()->GetOperationMask(2, nullptr, &mask), S_OK);
    EXPECT_EQ(mask, 65535U);
    EXPECT_EQ(whole.references, 0U);
}

TARNWELL_OVER_BACKENDS(CreationContract, Backends());

} // namespace
} // namespace tarnwell::test
