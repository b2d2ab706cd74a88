#include "options.h"

namespace tarnwell::host
{

namespace
{

template <bool CommandLine::*member> void Turn(CommandLine& line, const std::u16string&)
{
    line.*member = true;
}

// The last one counts.
template <std::optional<std::u16string> CommandLine::*member>
void Set(CommandLine& line, const std::u16string& value)
{
    line.*member = value;
}

// All count.
void AddExcluded(CommandLine& line, const std::u16string& value)
{
    if (!line.exclude)
        line.exclude.emplace();
    line.exclude->push_back(value);
}

const Option options[] = {
    {u"--module", nullptr, u"FILE", Word::OptionModule, Set<&CommandLine::module>},
    {u"--json", nullptr, nullptr, Word::OptionJson, Turn<&CommandLine::json>},
    {u"--lang", nullptr, u"en|ja", Word::OptionLang, Set<&CommandLine::language>},
    {u"--user", nullptr, u"U", Word::OptionUser, Set<&CommandLine::user>},
    {u"--password", nullptr, u"P", Word::OptionPassword, Set<&CommandLine::password>},
    {u"--server", nullptr, u"HOST[:PORT]", Word::OptionServer, Set<&CommandLine::server>},
    {u"--no-credentials", nullptr, nullptr, Word::OptionNoCredentials,
     Turn<&CommandLine::noCredentials>},
    {u"--streams", nullptr, nullptr, Word::OptionStreams, Turn<&CommandLine::streams>},
    {u"--yes", nullptr, nullptr, Word::OptionYes, Turn<&CommandLine::yes>},
    {u"--exclude", nullptr, u"NAME", Word::OptionExclude, AddExcluded},
    {u"--prescribed", nullptr, nullptr, Word::OptionPrescribed, Turn<&CommandLine::prescribed>},
    {u"--help", u"-h", nullptr, Word::OptionHelp, Turn<&CommandLine::help>},
    {u"--version", nullptr, nullptr, Word::OptionVersion, Turn<&CommandLine::version>},
    {u"--man", nullptr, nullptr, Word::OptionMan, Turn<&CommandLine::man>},
    {u"--completion", nullptr, nullptr, Word::OptionCompletion, Turn<&CommandLine::completion>},
    {u"-n", nullptr, u"N", Word::None, Set<&CommandLine::count>},
    {u"--skip", nullptr, u"N", Word::None, Set<&CommandLine::skip>},
    {u"--since", nullptr, u"TIME", Word::None, Set<&CommandLine::since>},
    {u"--until", nullptr, u"TIME", Word::None, Set<&CommandLine::until>},
    {u"--follow", nullptr, nullptr, Word::None, Turn<&CommandLine::follow>},
    {u"--working-copy", nullptr, nullptr, Word::None, Turn<&CommandLine::workingCopy>},
    {u"-p", nullptr, nullptr, Word::None, Turn<&CommandLine::parents>},
    {u"-r", nullptr, nullptr, Word::None, Turn<&CommandLine::recursive>},
};

} // namespace

std::span<const Option> Options()
{
    return options;
}

const Option* FindOption(std::u16string_view name)
{
    for (const Option& option : options)
    {
        if (name == option.name || (option.other != nullptr && name == option.other))
            return &option;
    }
    return nullptr;
}

} // namespace tarnwell::host
