// Addresses of files in Mercurial working copies.
#pragma once

#include "workingcopy/workingcopyuri.h"

namespace tarnwell
{

inline constexpr AddressRow mercurialAddresses{u"hg", u"hgobjects", MessageId::InvalidMercurialUri,
                                               true};

using HGUri = WorkingCopyUriOf<mercurialAddresses>;

} // namespace tarnwell
