// The question before something is deleted for good.
#pragma once

#include <cstddef>
#include <string_view>

namespace tarnwell::posix
{

// Asks whether `count` items, `first` the first one's path, shall be deleted: through the
// desktop's dialog program if there is a display, else on the terminal. Where there is nobody to
// ask, the answer is no.
bool ConfirmDelete(std::u16string_view first, std::size_t count);

} // namespace tarnwell::posix
