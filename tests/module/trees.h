// What hosts do with trees of revisions, in short.
#pragma once

#include "module/outcome.h"
#include "support/treesink.h"

#include <string>
#include <vector>

namespace tarnwell::test
{

std::vector<std::u16string> NamesOf(const std::vector<TreeEntry>& entries);

// Calls that must succeed.
std::vector<TreeEntry> ListOf(const ComPtr<ITree>& tree, const std::u16string& name = {},
                              bool recursive = false);
// The names of all files.
std::vector<std::u16string> FilesIn(const ComPtr<ITree>& tree);
TreeEntry FindIn(const ComPtr<ITree>& tree, const std::u16string& name);
std::string ContentOf(const ComPtr<ITree>& tree, const std::u16string& name = {});
std::u16string IdOf(const ComPtr<ITree>& tree);
std::uint64_t TimeOf(const ComPtr<ITree>& tree);
// Calls that must give nothing to their sinks.
Outcome FindFailure(const ComPtr<ITree>& tree, const std::u16string& name);
Outcome ListFailure(const ComPtr<ITree>& tree, const std::u16string& name, bool recursive = false);
Outcome OpenFailure(const ComPtr<ITree>& tree, const std::u16string& name);

} // namespace tarnwell::test
