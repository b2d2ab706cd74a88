// Names of files and folders in depots, as bytes. In what the client takes and prints the
// characters that mean something in its paths are encoded.
#pragma once

#include <string>
#include <string_view>

namespace tarnwell
{

// A name's bytes as the client takes them, and the other way round. `path` may have slashes in it.
std::string P4Encoded(std::string_view path);
std::string P4Decoded(std::string_view path);

// The same as the first for a path that may be encoded already: what is encoded stays so.
std::string P4Literal(std::string_view path);

// Whether `path` can be an item's, as the client takes it. It has no line end and no terminator in
// it, since it is a line to the client, and no part that is empty, that leads elsewhere or that
// would find more than one item.
bool IsP4Path(std::string_view path);

// The local folder that a workspace has for all that is below a folder, as "/home/a/...". Empty for
// what is no such path.
std::u16string P4FolderOfAll(std::u16string_view local);

} // namespace tarnwell
