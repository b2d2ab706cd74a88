#include "support/perforce/strictoptions.h"

#include "support/perforce/options.h"

#include <cstdlib>
#include <map>

namespace tarnwell::test::perforce
{

namespace
{

// What a command may have behind it; a number follows "-m", and one certain word "-s" and "-T".
const std::map<std::string, std::set<std::string>> strictForms = {
    {"filelog", {"-i", "-l", "-m"}}, {"changes", {"-s", "-l", "-m"}}, {"where", {}},
    {"print", {"-q", "-k"}},         {"fstat", {"-Ol", "-T"}},        {"dirs", {}},
};

[[noreturn]] void RefuseStrictly(const std::string& why)
{
    throw Failure("Usage: " + why + ".\n", 1);
}

std::string Variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

void CheckVariables()
{
    const std::map<const char*, std::string> wanted = {{"P4CONFIG", "noconfig"},
                                                       {"P4ALIASES", "/dev/null/*"},
                                                       {"P4DEBUG", ""},
                                                       {"P4LANGUAGE", ""},
                                                       {"P4COMMANDCHARSET", "utf8"}};
    for (const auto& [name, value] : wanted)
    {
        if (Variable(name) != value)
            RefuseStrictly(std::string(name) + " is \"" + Variable(name) + "\"");
    }
}

class Words
{
public:
    explicit Words(const std::vector<std::string>& all) : all_(all) {}

    bool IsAtEnd() const
    {
        return next_ == all_.size();
    }
    std::string Take()
    {
        if (IsAtEnd())
            RefuseStrictly("something is missing");
        return all_[next_++];
    }
    bool TakeIf(const std::string& word)
    {
        const bool isIt = !IsAtEnd() && all_[next_] == word;
        next_ += isIt ? 1 : 0;
        return isIt;
    }
    void Expect(const std::string& word)
    {
        if (!TakeIf(word))
            RefuseStrictly("no " + word);
    }

private:
    const std::vector<std::string>& all_;
    std::size_t next_ = 0;
};

} // namespace

StrictCall ParseStrictCall(const std::vector<std::string>& arguments, const std::string& spec)
{
    CheckVariables();
    Words words(arguments);
    for (const char* const word : {"-G", "-z", "tag"})
        words.Expect(word);
    StrictCall call;
    if (words.TakeIf("-u"))
        call.user = words.Take();
    if (words.TakeIf("-p"))
        call.port = words.Take();
    words.Expect("-x");
    words.Expect("-");
    call.command = words.Take();
    const auto form = strictForms.find(call.command);
    if (form == strictForms.end())
        RefuseStrictly("no command " + call.command);
    while (!words.IsAtEnd())
    {
        const std::string option = words.Take();
        if (form->second.find(option) == form->second.end() || !call.options.insert(option).second)
            RefuseStrictly(call.command + " " + option);
        if (option == "-m")
            call.most = std::stoi(words.Take());
        if (option == "-s")
            words.Expect("submitted");
        if (option == "-T")
            words.Expect("depotFile,headAction,headType,fileSize,digest");
    }
    call.spec = spec;
    return call;
}

} // namespace tarnwell::test::perforce
