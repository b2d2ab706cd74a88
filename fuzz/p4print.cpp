// Any bytes as what the Perforce client prints beside a content, and as its complaints.
#include "frame/exception.h"
#include "perforce/p4commands.h"
#include "perforce/p4parser.h"
#include "perforce/p4uri.h"
#include "support/p4output.h"

namespace tarnwell::fuzz
{

namespace
{

class Nobody : public HostUIUser
{
};

// Whether these errors are a failure, with the one status or the other.
HRESULT StatusOf(const std::u16string& errors, int exitCode)
{
    static const P4Uri uri(u"p4:////depot/x");
    try
    {
        CheckP4Failure(Nobody(), &uri, uri.GetText(), {exitCode, errors});
        return S_OK;
    }
    catch (const ComException& failure)
    {
        Expect(failure.message.find(uri.GetText()) != std::u16string::npos, "the address is told");
        return static_cast<HRESULT>(failure.code);
    }
}

} // namespace

void Try(std::string_view bytes)
{
    BufferedReader reader(OutputOf(bytes), Decoding::Widen);
    ReadPrint(reader);
    std::u16string line;
    Expect(!reader.ReadLine(line) && line.empty(), "nothing is left");

    const std::u16string errors = Decode(bytes, Decoding::Widen);
    const auto holds = [&](std::string_view phrase) {
        return bytes.find(phrase) != std::string_view::npos;
    };
    const bool isRefused = holds("P4PASSWD") || holds("Can't create a new user");
    const bool isMissing = !isRefused && holds("no such file");
    const HRESULT quiet = StatusOf(errors, 0);
    Expect((quiet != S_OK) == (isRefused || isMissing), "a warning is no failure");
    Expect((StatusOf(errors, 1) == S_OK) == bytes.empty(), "without a word there is none");
    Expect(!isMissing || quiet == static_cast<HRESULT>(0x80070002), "a missing file is missing");
}

} // namespace tarnwell::fuzz
