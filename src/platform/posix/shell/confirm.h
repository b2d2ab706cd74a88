// The question before something is deleted.
#pragma once

#include <cstddef>
#include <string_view>

namespace tarnwell::posix
{

enum class Deletion
{
    ForGood,
    ToTrash
};

// Asks whether `count` items, `first` the first one's path, shall be deleted: through the
// desktop's dialog program if there is a display, else on the terminal. Where there is nobody to
// ask, the answer is no.
bool ConfirmDelete(std::u16string_view first, std::size_t count, Deletion deletion);

} // namespace tarnwell::posix
