#include "support/revisionfacts.h"

#include <gtest/gtest.h>

namespace tarnwell::test
{
namespace
{

std::u16string TextOf(const ComPtr<IRevision>& revision,
                      HRESULT (STDMETHODCALLTYPE IRevision::*getter)(BSTR*))
{
    Bstr text;
    EXPECT_EQ((revision.Get()->*getter)(text.Out()), S_OK);
    return std::u16string(text.View());
}

} // namespace

Revision FactsOf(const ComPtr<IRevision>& revision)
{
    Revision facts{TextOf(revision, &IRevision::GetRevisionId),
                   TextOf(revision, &IRevision::GetDescription),
                   TextOf(revision, &IRevision::GetAuthor), TextOf(revision, &IRevision::GetUri)};
    EXPECT_EQ(revision->GetModifiedTime(&facts.modified), S_OK);
    EXPECT_EQ(revision->GetRevisionTime(&facts.time), S_OK);
    return facts;
}

std::vector<Revision> FactsOf(const ComPtr<IRevisions>& revisions)
{
    std::uint32_t count = 0;
    EXPECT_EQ(revisions->GetCount(&count), S_OK);
    std::vector<Revision> list;
    for (std::uint32_t i = 0; i < count; ++i)
    {
        ComPtr<IRevision> revision;
        EXPECT_EQ(revisions->GetItem(static_cast<std::int32_t>(i), revision.Out()), S_OK);
        list.push_back(FactsOf(revision));
    }
    return list;
}

} // namespace tarnwell::test
