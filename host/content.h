// The content of files.
#pragma once

#include "session.h"

#include <span>
#include <vector>

namespace tarnwell::host
{

// An open file, read from its beginning.
class Reader
{
public:
    // Throws Failure.
    explicit Reader(const ComPtr<IFile>& file);

    // The next bytes, valid until the next call: a full block, but for the last one; empty at
    // the end.
    std::span<const char> Next();

private:
    std::size_t Read(std::size_t filled);

    ComPtr<ISequentialStream> stream_;
    std::vector<char> block_;
};

// A file that is made, or emptied, and written.
class Writer
{
public:
    explicit Writer(const ComPtr<IFile>& file);

    void Write(std::span<const char> bytes);
    // Tells whether all of it has arrived.
    void Close();

private:
    ComPtr<IFileStream> file_;
    ComPtr<ISequentialStream> stream_;
};

} // namespace tarnwell::host
