// Any bytes as what the Subversion client prints of items: their facts, a listing, and properties;
// and as addresses.
#include "subversion/svnhistoryparser.h"
#include "subversion/svntreeparser.h"
#include "support/pieces.h"

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    SvnXmlReader entries("entry");
    entries.Feed(bytes);
    while (const std::optional<SvnElement> entry = entries.Next())
    {
        if (const auto facts = ReadSvnInfo(*entry))
        {
            if (!facts->path.empty())
                ExpectLeadsDown(facts->path);
            Expect(facts->revision.empty() || IsSvnNumber(facts->revision),
                   "a revision is a number");
        }
        if (const auto listed = ReadSvnEntry(*entry))
            ExpectLeadsDown(listed->name);
    }
    SvnXmlReader targets("target");
    targets.Feed(bytes);
    while (const std::optional<SvnElement> target = targets.Next())
        ReadSvnMarks(*target);
    const std::string encoded = EncodeSvnPath(bytes);
    Expect(DecodeSvnUrl(encoded) == bytes, "what is encoded is decoded to the same");
    Expect(encoded.find_first_of("@ #?\"\n") == std::string::npos, "what is encoded is plain");
    Expect(DecodeSvnUrl(bytes).size() <= bytes.size(), "decoding makes nothing longer");
}

} // namespace tarnwell::fuzz
