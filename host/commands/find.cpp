#include "commands.h"
#include "facts.h"
#include "output.h"
#include "visit.h"

namespace tarnwell::host
{

int Find(const Session& session)
{
    return VisitItems(session, true, [&](const ItemFacts& facts, const std::u16string& name) {
        if (session.line.json)
        {
            Print(ToJson(facts).Line());
            return;
        }
        Print(Shown(facts.path.value.value_or(name)), StyleOf(facts));
        Print(u"\n");
    });
}

} // namespace tarnwell::host
