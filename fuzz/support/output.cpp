#include "support/output.h"

#include "runner/outputfile.h"
#include "support/target.h"

namespace tarnwell::fuzz
{

HANDLE OutputOf(std::string_view bytes)
{
    static const std::shared_ptr<OsHandle> file = MakeOutputFile({}, u"fuzz");
    DWORD written = 0;
    Rewind(*file);
    const bool isFilled =
        SetEndOfFile(file->Get()) &&
        WriteFile(file->Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    Expect(isFilled && written == bytes.size(), "there is room for the input on the disk");
    Rewind(*file);
    return file->Get();
}

} // namespace tarnwell::fuzz
