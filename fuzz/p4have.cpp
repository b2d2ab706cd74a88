// Any bytes as the Perforce client's answer to where a file is.
#include "frame/pattern.h"
#include "perforce/p4parser.h"
#include "support/p4output.h"

namespace tarnwell::fuzz
{

void Try(std::string_view bytes)
{
    static const Pattern pattern(u".*#[0-9]+ - (.*)");
    const std::u16string path = ReadP4(bytes, BareLineFeed::LooksLikeTheEnd, ReadHave);
    Expect(path == ReadP4(bytes, BareLineFeed::IsALine, ReadHave), "an empty line tells nothing");

    std::string line(bytes.substr(0, bytes.find('\n')));
    if (line.ends_with('\r'))
        line.pop_back();
    Expect(path == ReadP4(line + "\n//x#1 - y\n", BareLineFeed::IsALine, ReadHave),
           "only the first line counts");
    const std::u16string text = Decode(line, Decoding::Widen);
    Groups groups;
    if (pattern.Search(text, groups))
        Expect(path == groups[1], "a path is what the pattern finds");
    else
        Expect(path.empty() || text.size() > 500, "there is none where the pattern finds none");
}

} // namespace tarnwell::fuzz
