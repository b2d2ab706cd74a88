#include "support/ordinaryuser.h"

#include <cstdlib>
#include <stdexcept>
#include <unistd.h>

namespace tarnwell::test
{

namespace
{
constexpr uid_t nobody = 65534;
}

OrdinaryUser::OrdinaryUser() : before_(geteuid())
{
    possible_ = before_ != 0 || seteuid(nobody) == 0;
}

OrdinaryUser::~OrdinaryUser()
{
    if (geteuid() != before_ && seteuid(before_) != 0)
        std::abort();
}

void OrdinaryUser::TakeOver(const TempFolder& folder)
{
    if (geteuid() == 0 && chown(folder.Path().c_str(), nobody, nobody) != 0)
        throw std::runtime_error("can't give away " + folder.Path().string());
}

} // namespace tarnwell::test
