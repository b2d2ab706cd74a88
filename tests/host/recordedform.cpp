// A content in the form that a repository and a work tree both have.
#include "recordedform.h"

#include <gtest/gtest.h>

namespace tarnwell::host
{

namespace
{

std::string FormOf(std::string_view bytes, const Conversions& conversions)
{
    RecordedForm form(Reader(bytes), conversions);
    std::string all;
    for (auto block = form.Next(); !block.empty(); block = form.Next())
        all.append(block.begin(), block.end());
    EXPECT_TRUE(form.Next().empty());
    return all;
}

TEST(RecordedForm, HasKeywordsThatArentFilledIn)
{
    const std::string wide(240, 'w');
    for (const auto& [content, wanted] : std::vector<std::pair<std::string, std::string>>{
             {"", ""},
             {"$Id$", "$Id$"},
             {"$Id: a.c 5 2026-03-01 ann $", "$Id$"},
             {"a $Rev: 5 $ b $Author: ann $\n", "a $Rev$ b $Author$\n"},
             {"$Rev:: 5      $", "$Rev$"},
             {"$Id:$", "$Id$"},
             {"$ $Id: x $", "$ $Id$"},
             {"1$2$Id: x $3$", "1$2$Id$3$"},
             {"$$Id: x $$", "$$Id$$"},
             {"$Id: x", "$Id: x"},
             {"$Id: x\n$", "$Id: x\n$"},
             {"$Id: x\r$", "$Id: x\r$"},
             {"$Identity: x $", "$Identity: x $"},
             {"$id: x $", "$id: x $"},
             {"$Id x $", "$Id x $"},
             {"$Id: " + wide + "$", "$Id$"},
             {"$Id: " + wide + wide + "$", "$Id: " + wide + wide + "$"},
             {"$", "$"}})
    {
        EXPECT_EQ(FormOf(content, {true, false}), wanted) << content;
        EXPECT_EQ(FormOf(content, {false, false}), content);
    }
}

TEST(RecordedForm, HasLineFeedsAtTheEndsOfLines)
{
    EXPECT_EQ(FormOf("a\r\nb\rc\n\r\n\r\r\n", {false, true}), "a\nb\nc\n\n\n\n");
    EXPECT_EQ(FormOf("$Id: x $\r\n", {true, true}), "$Id$\n");
    EXPECT_EQ(FormOf("a\r\n", {true, false}), "a\r\n");
}

// Blocks are full but for the last one, whatever is taken out of them.
TEST(RecordedForm, ComesInBlocksOfOneSize)
{
    std::string content;
    while (content.size() < 400'000)
        content += "some text $Id: it is filled in $ and more\r\n";
    RecordedForm form(Reader(std::string_view(content)), {true, true});
    const std::size_t first = form.Next().size();
    EXPECT_EQ(form.Next().size(), first);
    const std::string whole = FormOf(content, {true, true});
    EXPECT_EQ(whole.find("filled"), std::string::npos);
    EXPECT_EQ(whole.find('\r'), std::string::npos);
    EXPECT_EQ(whole.size() % std::string_view("some text $Id$ and more\n").size(), 0U);
}

} // namespace

} // namespace tarnwell::host
