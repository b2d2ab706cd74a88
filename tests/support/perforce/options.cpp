#include "support/perforce/options.h"

#include <iterator>

namespace tarnwell::test::perforce
{

namespace
{

struct CommandForm
{
    const char* name;
    // "TARGET" stands for the file to write.
    std::vector<std::string> options;
};

const CommandForm forms[] = {
    {"fstat", {"-s", "-l"}},   {"dirs", {}}, {"print", {"-o", "TARGET", "-q"}},
    {"filelog", {"-l", "-t"}}, {"have", {}},
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
        const bool isIt = next_ != end_ && *next_ == wanted;
        if (isIt)
            ++next_;
        return isIt;
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

const CommandForm& FormOf(const std::string& command)
{
    for (const CommandForm& form : forms)
    {
        if (command == form.name)
            return form;
    }
    throw Failure("Unknown command.  Try 'p4 help' for info.\n", 1);
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
    for (const std::string& option : FormOf(call.command).options)
    {
        if (option == "TARGET")
            call.target = arguments.Take("file to write");
        else if (!arguments.TakeIf(option))
            Refuse(call.command + " without " + option);
    }
    call.spec = arguments.Take("path");
    arguments.ExpectEnd();
    return call;
}

} // namespace tarnwell::test::perforce
