#include "support/perforce/options.h"

#include <iterator>

namespace tarnwell::test::perforce
{

namespace
{

struct CommandForm
{
    const char* name;
    // One with "=" behind it wants a value.
    std::vector<std::string> options;
    bool takesPath = true;
};

const CommandForm forms[] = {
    {"fstat", {"-s", "-l"}},
    {"dirs", {}},
    {"print", {"-o=", "-q"}},
    {"filelog", {"-l", "-t"}},
    {"have", {}},
    // Of those who put files into a depot.
    {"info", {}, false},
    {"client", {"-i"}, false},
    {"client", {"-d="}, false},
    {"sync", {}},
    {"add", {"-f", "-t="}},
    {"edit", {}},
    {"delete", {}},
    {"submit", {"-d="}},
};

[[noreturn]] void Refuse(const std::string& why)
{
    throw Failure("Invalid option: " + why + ".\n", 1);
}

class Arguments
{
public:
    explicit Arguments(const std::vector<std::string>& all) : next_(all.begin()), end_(all.end()) {}

    bool TakeIf(const std::string& wanted)
    {
        const bool isIt = IsNext(wanted);
        if (isIt)
            ++next_;
        return isIt;
    }
    bool IsNext(const std::string& wanted) const
    {
        return next_ != end_ && *next_ == wanted;
    }
    std::string Take(const std::string& what)
    {
        if (next_ == end_)
            Refuse("no " + what);
        return *next_++;
    }
    void ExpectEnd() const
    {
        if (next_ != end_)
            Refuse(*next_);
    }

private:
    std::vector<std::string>::const_iterator next_;
    std::vector<std::string>::const_iterator end_;
};

std::string NameOf(const std::string& option)
{
    return option.substr(0, option.find('='));
}

// Of several, the one whose first option is there.
const CommandForm& FormOf(const std::string& command, const Arguments& arguments)
{
    const CommandForm* last = nullptr;
    for (const CommandForm& form : forms)
    {
        if (command != form.name)
            continue;
        last = &form;
        if (form.options.empty() || arguments.IsNext(NameOf(form.options[0])))
            return form;
    }
    if (last == nullptr)
        throw Failure("Unknown command.  Try 'p4 help' for info.\n", 1);
    return *last;
}

void TakeOption(Arguments& arguments, const std::string& option, Call& call)
{
    const std::string name = NameOf(option);
    if (!arguments.TakeIf(name))
        Refuse(call.command + " without " + name);
    if (name != option)
        call.values[name] = arguments.Take("value of " + name);
}

} // namespace

Call ParseCall(const std::vector<std::string>& list)
{
    Arguments arguments(list);
    Call call;
    if (arguments.TakeIf("-u"))
    {
        call.user = arguments.Take("user");
        if (arguments.TakeIf("-P"))
            call.password = arguments.Take("password");
    }
    if (arguments.TakeIf("-p"))
        call.port = arguments.Take("port");
    call.command = arguments.Take("command");
    const CommandForm& form = FormOf(call.command, arguments);
    for (const std::string& option : form.options)
        TakeOption(arguments, option, call);
    if (form.takesPath)
        call.spec = arguments.Take("path");
    arguments.ExpectEnd();
    return call;
}

} // namespace tarnwell::test::perforce
