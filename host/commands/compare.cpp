#include "commands.h"
#include "comparison.h"
#include "items.h"
#include "json.h"
#include "output.h"
#include "text16.h"

namespace tarnwell::host
{

namespace
{

struct VerdictName
{
    Verdict verdict;
    Word text;
    const char16_t* json;
};

const VerdictName verdictNames[] = {
    {Verdict::Equal, Word::Equal, u"equal"},
    {Verdict::Different, Word::Different, u"different"},
    {Verdict::KindDiffers, Word::KindDiffers, u"kind_differs"},
    {Verdict::LinkDiffers, Word::LinkDiffers, u"link_differs"},
    {Verdict::OnlyLeft, Word::OnlyLeft, u"only_left"},
    {Verdict::OnlyRight, Word::OnlyRight, u"only_right"},
    {Verdict::Failed, Word::Failed, u"failed"},
};

const VerdictName& NameOf(Verdict verdict)
{
    return verdictNames[static_cast<std::size_t>(verdict)];
}

void AddNumber(JsonObject& object, std::u16string_view name,
               const std::optional<std::uint64_t>& value)
{
    if (value)
        object.Number(name, *value);
    else
        object.Null(name);
}

std::u16string Json(const Finding& finding)
{
    JsonObject object;
    object.Text(u"name", finding.name).Text(u"result", NameOf(finding.verdict).json);
    AddNumber(object, u"left_size", finding.leftSize);
    AddNumber(object, u"right_size", finding.rightSize);
    AddNumber(object, u"first_difference", finding.firstDifference);
    return object.Line();
}

std::u16string Details(const Finding& finding)
{
    std::u16string details;
    if (finding.leftSize && finding.rightSize)
        details += Say(Word::BothSizes, {Decimal(*finding.leftSize), Decimal(*finding.rightSize)});
    if (finding.firstDifference)
        details += Say(Word::FirstDifference, {Decimal(*finding.firstDifference)});
    return details;
}

std::u16string Line(const Finding& finding)
{
    const std::u16string name = finding.name.empty() ? u"" : Shown(finding.name) + u": ";
    return name + Say(NameOf(finding.verdict).text) + Details(finding) + u"\n";
}

// Tells findings and remembers what the exit code has to say.
class Report
{
public:
    explicit Report(bool json) : json_(json) {}

    // In the readable form, what is equal inside folders goes without saying.
    void Add(const Finding& finding, bool tellEqual)
    {
        ++counts_[static_cast<std::size_t>(finding.verdict)];
        if (json_)
            Print(Json(finding));
        else if (finding.verdict != Verdict::Equal || tellEqual)
            Print(Line(finding));
        if (finding.failure)
            PrintFailure(*finding.failure, json_);
    }

    void PrintSummary() const
    {
        if (json_)
            return;
        std::u16string summary;
        for (const VerdictName& row : verdictNames)
        {
            const std::uint64_t count = counts_[static_cast<std::size_t>(row.verdict)];
            if (count > 0 || row.verdict == Verdict::Equal)
                summary += (summary.empty() ? u"" : u", ") + Decimal(count) + u" " + Say(row.text);
        }
        Print(summary + u"\n");
    }

    int ExitCode() const
    {
        std::uint64_t all = 0;
        for (const std::uint64_t count : counts_)
            all += count;
        if (counts_[static_cast<std::size_t>(Verdict::Failed)] > 0)
            return exitFailed;
        return all == counts_[static_cast<std::size_t>(Verdict::Equal)] ? exitDone : exitDifferent;
    }

private:
    const bool json_;
    std::uint64_t counts_[std::size(verdictNames)] = {};
};

std::unique_ptr<Side> SideAt(const Session& session, const Place& place)
{
    if (std::optional<RevisionTree> tree = OpenTree(session, place))
        return MakeSide(*std::move(tree), place.address);
    return MakeSide(FindItem(place));
}

// What version control keeps beside the files that are its users'.
const std::u16string ownFolders[] = {u".svn", u".git", u".hg"};

FolderRules RulesOf(const CommandLine& line, const Place& left, const Place& right)
{
    const bool translates =
        left.address.kind->translatesContent || right.address.kind->translatesContent;
    return {line.exclude.value_or(
                std::vector<std::u16string>(std::begin(ownFolders), std::end(ownFolders))),
            !translates};
}

} // namespace

int Compare(const Session& session)
{
    const Place leftPlace = Open(session, session.line.operands[0]);
    const Place rightPlace = Open(session, session.line.operands[1]);
    const std::unique_ptr<Side> left = SideAt(session, leftPlace);
    const std::unique_ptr<Side> right = SideAt(session, rightPlace);
    const FolderRules rules = RulesOf(session.line, leftPlace, rightPlace);
    Report report(session.line.json);
    if (left->IsFolder() && right->IsFolder())
    {
        CompareFolders(*left, *right, rules,
                       [&](const Finding& finding) { report.Add(finding, false); });
        report.PrintSummary();
    }
    else
    {
        // Two files that were named are read also where their sizes tell them apart.
        Finding finding = CompareItems(*left, *right, false);
        finding.name = left->Name();
        report.Add(finding, true);
    }
    return report.ExitCode();
}

} // namespace tarnwell::host
