// Tests often run as somebody to whom nothing is forbidden. What is to meet a refusal becomes an
// ordinary user for a while.
#pragma once

#include "support/tempfolder.h"

namespace tarnwell::test
{

// For as long as it lives, this process is that user; where permissions are not by user, it stays
// who it is.
class OrdinaryUser
{
public:
    OrdinaryUser();
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser();

    // False if nobody would be refused anything.
    bool Possible() const
    {
        return possible_;
    }

    // Makes the folder itself that user's own.
    static void TakeOver(const TempFolder& folder);

private:
    unsigned before_ = 0;
    bool possible_ = true;
};

} // namespace tarnwell::test
