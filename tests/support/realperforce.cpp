#include "support/realperforce.h"

#include "support/process.h"

#include <tarnwell/text.h>

#include <stdexcept>

namespace tarnwell::test
{

namespace
{

std::string FolderOfTests()
{
    return EnvironmentValue::Of("TARNWELL_PERFORCE_LIVE").value();
}

// "Change 12 submitted.", or renamed and submitted.
int ChangeIn(const std::string& output)
{
    const std::size_t end = output.rfind(" submitted.");
    const std::size_t start = end == std::string::npos ? end : output.rfind("hange ", end);
    if (start == std::string::npos)
        throw std::runtime_error("nothing was submitted: " + output);
    const std::size_t number = output.find_last_of(' ', end - 1) + 1;
    return std::stoi(output.substr(number));
}

} // namespace

RealPerforce::RealPerforce()
    : name_("tarnwell-" + root_.Path().filename().string()), workspace_("P4CLIENT", name_.c_str())
{
    P4({"client", "-i"}, "Client: " + name_ + "\nRoot: " + root_.Path().string() + "\nView:\n\t" +
                             Base() + "/... //" + name_ + "/...\n");
}

RealPerforce::~RealPerforce()
{
    RunProcess("p4", {.arguments = {u"client", u"-d", DecodeName(name_)}});
}

std::string RealPerforce::Base() const
{
    return FolderOfTests() + "/" + name_;
}

std::string RealPerforce::Author() const
{
    const std::string info = P4({"-F", "%userName%", "info"});
    return info.substr(0, info.find_first_of("\r\n")) + "@" + name_;
}

int RealPerforce::Submit(const std::string& path, std::string_view bytes,
                         const std::string& description)
{
    const std::string depotFile = Base() + "/" + path;
    const std::filesystem::path local = Local(path);
    const bool isNew = !std::filesystem::exists(local);
    if (!isNew)
        P4({"edit", depotFile});
    std::filesystem::create_directories(local.parent_path());
    WriteBytes(local.u16string(), bytes);
    // "-f" takes the characters of revisions as they are, from a local name.
    if (isNew)
        P4({"add", "-f", "-t", "binary", local.string()});
    return ChangeIn(P4({"submit", "-d", description, depotFile}));
}

int RealPerforce::Remove(const std::string& path)
{
    P4({"delete", Base() + "/" + path});
    return ChangeIn(P4({"submit", "-d", "removed", Base() + "/" + path}));
}

std::filesystem::path RealPerforce::Sync(const std::string& path)
{
    P4({"sync", Base() + "/" + path});
    return Local(path);
}

std::string RealPerforce::P4(const std::vector<std::string>& arguments,
                             const std::string& input) const
{
    ProcessCall call{.input = input};
    for (const std::string& argument : arguments)
        call.arguments.push_back(DecodeName(argument));
    const ProcessRun run = RunProcess("p4", call);
    if (run.exitCode != 0)
        throw std::runtime_error("p4 " + arguments[0] + ": " + run.output + run.errors);
    return run.output;
}

// With the characters that the client encodes.
std::filesystem::path RealPerforce::Local(const std::string& path) const
{
    std::string local = path;
    for (const auto& [code, byte] : {std::pair{"%40", "@"}, std::pair{"%23", "#"},
                                     std::pair{"%2A", "*"}, std::pair{"%25", "%"}})
    {
        for (std::size_t at = local.find(code); at != std::string::npos; at = local.find(code))
            local.replace(at, 3, byte);
    }
    return root_.Path() / std::filesystem::path(DecodeName(local));
}

} // namespace tarnwell::test
