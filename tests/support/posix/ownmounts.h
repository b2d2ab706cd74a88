// A view of the mounts that is this process's alone.
#pragma once

namespace tarnwell::test
{

// Gives the process, which must have one thread, such a view and the right to change it. False
// where the system doesn't let it.
bool HaveOwnMounts();

// A new file system at `folder` becomes the root of all folders, with all the present ones in it.
// False where the system doesn't let it.
bool MakeRoot(const char* folder);

} // namespace tarnwell::test
