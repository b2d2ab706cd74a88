#include "support/perforcedepot.h"

#include "support/process.h"

#include <tarnwell/text.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace tarnwell::test
{

namespace
{

const std::string base = "//depot/base";
const std::string author = "ann@ws";

// The stand-in's folder, in front of the PATH that there is.
std::string PathWithStandIn()
{
    const std::string separator(1, std::filesystem::path::preferred_separator == '/' ? ':' : ';');
    const std::u16string folder = (ThisProgram().parent_path() / "perforce").u16string();
    return EncodeName(folder).value() + separator + EnvironmentValue::Of("PATH").value_or("");
}

} // namespace

PerforceDepot::PerforceDepot()
    : depot_("TARNWELL_DEPOT", EncodeName(folder_.Text()).value().c_str()),
      path_("PATH", PathWithStandIn().c_str())
{
    Write();
}

void PerforceDepot::Show() const
{
    depot_.Set(EncodeName(folder_.Text()).value().c_str());
}

std::string PerforceDepot::Base() const
{
    return base;
}

std::string PerforceDepot::Author() const
{
    return author;
}

std::string PerforceDepot::Port() const
{
    return "server:1666";
}

int PerforceDepot::Submit(const std::string& path, std::string_view bytes,
                          const std::string& description)
{
    return Change(path, FileAt(base + "/" + path).revisions == 0 ? "add" : "edit", bytes,
                  description);
}

int PerforceDepot::Remove(const std::string& path)
{
    return Remove(path, "removed");
}

int PerforceDepot::Remove(const std::string& path, const std::string& description)
{
    return Change(path, "delete", {}, description);
}

int PerforceDepot::Move(const std::string& from, const std::string& to,
                        const std::string& description)
{
    const File& source = FileAt(base + "/" + from);
    const std::string bytes = source.bytes;
    const std::string origin = source.path + "\t" + std::to_string(source.revisions);
    const int change = Change(from, "move/delete", {}, description);
    Record(change, to, "move/add", "text", bytes, description);
    FileAt(base + "/" + to).lines += "from\t" + origin + "\n";
    Write();
    return change;
}

int PerforceDepot::SubmitAs(const std::string& type, const std::string& path,
                            std::string_view bytes)
{
    return Change(path, "add", bytes, "of another kind", type);
}

std::filesystem::path PerforceDepot::Sync(const std::string& path)
{
    File& file = FileAt(base + "/" + path);
    file.lines += "have\t" + std::to_string(file.revisions) + "\n";
    general_ += "root\t" + EncodeName(folder_ / u"ws").value() + "\n";
    Write();
    const std::filesystem::path local =
        std::filesystem::path(folder_ / u"ws").string() + file.path.substr(1);
    // Names that the platform doesn't have are only told.
    std::error_code ignored;
    std::filesystem::create_directories(local.parent_path(), ignored);
    std::ofstream(local) << "synced";
    return local;
}

void PerforceDepot::LoseWorkspace()
{
    Tell("fail\thave\tworkspace");
}

void PerforceDepot::Tell(const std::string& line)
{
    const std::string kind = line.substr(0, line.find('\t'));
    const bool isGeneral =
        kind == "port" || kind == "user" || kind == "root" || kind == "fail" || kind == "label";
    (isGeneral ? general_ : files_.back().lines) += line + "\n";
    Write();
}

void PerforceDepot::Print(const std::string& command, std::string_view text)
{
    PrintAs("output", command, text);
}

void PerforceDepot::PrintBytes(const std::string& command, std::string_view bytes)
{
    PrintAs("bytes", command, bytes);
}

void PerforceDepot::AddRevision(const std::string& path, const std::string& words,
                                std::string_view bytes)
{
    const std::string content = "content" + std::to_string(++contents_);
    WriteBytes(folder_ / DecodeName(content), bytes);
    File& file = FileAt(path);
    ++file.revisions;
    file.lines += "rev\t" + words + "\t" + content + "\n";
    Write();
}

std::string PerforceDepot::CommandLine() const
{
    return ReadBytes(folder_ / u"commandline");
}

std::vector<std::string> PerforceDepot::Runs() const
{
    std::vector<std::string> runs;
    const std::u16string path = folder_ / u"runs";
    if (!std::filesystem::exists(std::filesystem::path(path)))
        return runs;
    std::istringstream lines(ReadBytes(path));
    for (std::string line; std::getline(lines, line);)
    {
        std::replace(line.begin(), line.end(), '\t', '|');
        runs.push_back(line);
    }
    return runs;
}

std::vector<std::string> PerforceDepot::TakeRuns()
{
    std::vector<std::string> runs = Runs();
    std::filesystem::remove(std::filesystem::path(folder_ / u"runs"));
    return runs;
}

void PerforceDepot::PrintAs(const std::string& kind, const std::string& command,
                            std::string_view text)
{
    const std::string name = "output" + std::to_string(++contents_);
    WriteBytes(folder_ / DecodeName(name), text);
    general_ += kind + "\t" + command + "\t" + name + "\n";
    Write();
}

PerforceDepot::File& PerforceDepot::FileAt(const std::string& path)
{
    const auto found = std::find_if(files_.begin(), files_.end(),
                                    [&](const File& file) { return file.path == path; });
    return found == files_.end() ? files_.emplace_back(File{path, 0, {}, {}}) : *found;
}

int PerforceDepot::Change(const std::string& path, const std::string& action,
                          std::string_view bytes, const std::string& description,
                          const std::string& type)
{
    Record(++changes_, path, action, type, bytes, description);
    return changes_;
}

void PerforceDepot::Record(int change, const std::string& path, const std::string& action,
                           const std::string& type, std::string_view bytes,
                           const std::string& description)
{
    constexpr int firstTime = 1709633730;
    const int revision = FileAt(base + "/" + path).revisions + 1;
    AddRevision(base + "/" + path,
                std::to_string(revision) + "\t" + std::to_string(change) + "\t" + action + "\t" +
                    std::to_string(firstTime + change) + "\t" + author + "\t" + type,
                bytes);
    File& file = FileAt(base + "/" + path);
    file.bytes = bytes;
    std::istringstream lines(description);
    for (std::string line; std::getline(lines, line);)
        file.lines += "desc\t" + line + "\n";
    Write();
}

void PerforceDepot::Write() const
{
    std::string text = general_;
    for (const File& file : files_)
        text += "file\t" + file.path + "\n" + file.lines;
    WriteBytes(folder_ / u"depot", text);
}

} // namespace tarnwell::test
