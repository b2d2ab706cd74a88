#include "support/smallstack.h"

#include <pthread.h>
#include <stdexcept>

namespace tarnwell::test
{
namespace
{

void* Run(void* call)
{
    (*static_cast<const std::function<void()>*>(call))();
    return nullptr;
}

} // namespace

void RunOnSmallStack(const std::function<void()>& call)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 256 * 1024);
    pthread_t thread;
    auto* const argument = const_cast<std::function<void()>*>(&call);
    if (pthread_create(&thread, &attributes, Run, argument) != 0)
        throw std::runtime_error("no thread");
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

} // namespace tarnwell::test
