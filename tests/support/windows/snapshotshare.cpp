// Wine looks for shares in a folder of its configuration. Windows has a share of its own there.
#include "support/snapshotshare.h"

#include "support/tempfolder.h"

#include <windows.h>

#include <stdexcept>

namespace tarnwell::test
{

namespace fs = std::filesystem;

namespace
{

// The folder of Wine's configuration; empty if there is none.
fs::path ConfigurationFolder()
{
    wchar_t folder[1024] = {};
    const DWORD length = GetEnvironmentVariableW(L"WINECONFIGDIR", folder, 1024);
    std::wstring path(folder, length < 1024 ? length : 0);
    // In the form of the system's inside, which programs don't open.
    const std::wstring prefix = L"\\??\\";
    return path.starts_with(prefix) ? fs::path(path.substr(prefix.size())) : fs::path();
}

} // namespace

// The folder that Wine takes for the share. What isn't a test's own is left alone.
struct SnapshotShare::Place
{
    Place(const fs::path& configuration, char16_t drive)
        : server(configuration / "dosdevices" / "unc" / "localhost"),
          folder(server / (std::wstring(1, static_cast<wchar_t>(drive)) + L'$'))
    {
        if (fs::exists(folder) && !fs::exists(folder / mark))
            throw std::runtime_error("in the way of the test: " + folder.string());
        fs::remove_all(folder);
        fs::create_directories(folder);
        WriteBytes((folder / mark).u16string(), "");
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place()
    {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
        // Only if nothing else is in them.
        fs::remove(server, ignored);
        fs::remove(server.parent_path(), ignored);
    }

    static constexpr const char* mark = "made by a test";
    fs::path server;
    fs::path folder;
};

SnapshotShare::SnapshotShare(char16_t drive)
    : name_(std::u16string(u"\\\\localhost\\") + drive + u'$')
{
    const fs::path configuration = ConfigurationFolder();
    if (!configuration.empty())
        place_ = std::make_unique<Place>(configuration, drive);
}

SnapshotShare::~SnapshotShare() = default;

bool SnapshotShare::Possible() const
{
    return place_ != nullptr;
}

void SnapshotShare::Put(std::u16string_view inside, std::string_view bytes)
{
    const fs::path path = place_->folder / inside;
    fs::create_directories(path.parent_path());
    WriteBytes(path.u16string(), bytes);
}

void SnapshotShare::MakeFolder(std::u16string_view inside)
{
    fs::create_directories(place_->folder / inside);
}

void SnapshotShare::Remove(std::u16string_view inside)
{
    fs::remove_all(place_->folder / inside);
}

} // namespace tarnwell::test
