#include "support/childprogram.h"

namespace tarnwell::test
{

std::filesystem::path ChildProgram()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "test-child";
}

} // namespace tarnwell::test
