// Hosts call from threads with small stacks.
#include "frame/uri.h"

#include <gtest/gtest.h>

#include <pthread.h>

namespace tarnwell::test
{
namespace
{

void* AskOfAMegabyte(void* answer)
{
    std::u16string text = u"ftp://user:password@";
    text.append(1000000, u'h');
    text += u":21/";
    text.append(1000000, u'p');
    *static_cast<std::size_t*>(answer) = Uri(text).GetPath().size();
    return nullptr;
}

TEST(Uri, AMegabyteIsAnsweredOnASmallStack)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 256 * 1024);
    std::size_t answer = 0;
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, AskOfAMegabyte, &answer), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(answer, 1000000U);
}

} // namespace
} // namespace tarnwell::test
