// What `ls` and `find` have in common.
#pragma once

#include "session.h"
#include "style.h"
#include "walk.h"

namespace tarnwell::host
{

// Shows what lies in the folder that the first operand names and whose names match one of the other
// operands. Gives the exit code: a folder inside that can't be listed, and a name that makes no
// item, are told and passed over.
int VisitItems(const Session& session, bool recursive,
               const std::function<void(const ItemFacts&, const std::u16string& name)>& show);

// How a terminal shows the item's name.
Style StyleOf(const ItemFacts& facts);

} // namespace tarnwell::host
