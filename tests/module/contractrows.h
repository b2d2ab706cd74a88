// Rows of the contract that several classes share.
#pragma once

#include "module/contract.h"

namespace tarnwell::test
{

// The null pointers of items of addresses, and then `more`.
std::vector<NullCall> AddressItemNulls(std::vector<NullCall> more);
std::vector<NullCall> AddressFileNulls(std::vector<NullCall> more);

std::vector<NullCall> RevisionsNulls();
std::vector<NullCall> RevisionNulls();

} // namespace tarnwell::test
