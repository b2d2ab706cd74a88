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

// Behind "NAME: " in what "p4 info" tells.
std::string Told(const std::string& info, const std::string& name)
{
    const std::size_t start = info.find(name + ": ");
    if (start == std::string::npos)
        throw std::runtime_error("\"p4 info\" tells no " + name + ": " + info);
    const std::size_t value = start + name.size() + 2;
    return info.substr(value, info.find_first_of("\r\n", value) - value);
}

} // namespace

RealPerforce::RealPerforce()
    : name_(root_.Path().filename().string()), workspace_("P4CLIENT", name_.c_str())
{
    P4({"client", "-i"}, "Client: " + name_ + "\nRoot: " + root_.Path().string() + "\nView:\n\t\"" +
                             Base() + "/...\" \"//" + name_ + "/...\"\n");
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
    return Told(P4({"info"}), "User name") + "@" + name_;
}

std::string RealPerforce::Port() const
{
    return EnvironmentValue::Of("P4PORT").value();
}

int RealPerforce::Submit(const std::string& path, std::string_view bytes,
                         const std::string& description)
{
    const Revisions& file = files_[path];
    const std::filesystem::path local = Local(path);
    if (file.last != 0)
    {
        Leave(path, file.last);
        P4({"edit", Base() + "/" + path});
    }
    std::filesystem::create_directories(local.parent_path());
    WriteBytes(local.u16string(), bytes);
    // "-f" takes the characters of revisions as they are, from a local name.
    if (file.last == 0)
        P4({"add", "-f", "-t", "binary", local.string()});
    return Finish(path, description);
}

int RealPerforce::Remove(const std::string& path)
{
    Leave(path, files_.at(path).last);
    P4({"delete", Base() + "/" + path});
    return Finish(path, "removed");
}

std::filesystem::path RealPerforce::Sync(const std::string& path)
{
    Revisions& file = files_.at(path);
    file.had = file.last;
    Leave(path, file.had);
    return Local(path);
}

void RealPerforce::LoseWorkspace()
{
    workspace_.Set((name_ + "-unknown").c_str());
}

// What was submitted is not in the workspace because of that.
int RealPerforce::Finish(const std::string& path, const std::string& description)
{
    const int change = ChangeIn(P4({"submit", "-d", description, Base() + "/" + path}));
    Revisions& file = files_[path];
    ++file.last;
    Leave(path, file.had);
    return change;
}

// Leaves this revision of the file in the workspace.
void RealPerforce::Leave(const std::string& path, int revision)
{
    P4({"sync", Base() + "/" + path + "#" + std::to_string(revision)});
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
