// A folder of a benchmark's own.
#pragma once

#include <string>

namespace tarnwell::bench
{

// Made below the system's temporary folder, and removed with all that is in it.
class TempFolder
{
public:
    TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder();

    std::string operator/(const std::string& name) const
    {
        return path_ + "/" + name;
    }
    const std::string& Path() const
    {
        return path_;
    }

private:
    std::string path_;
};

} // namespace tarnwell::bench
