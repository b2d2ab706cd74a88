// The content of files.
#pragma once

#include "session.h"

#include <span>
#include <string_view>
#include <vector>

namespace tarnwell::host
{

// An open file, read from its beginning.
class Reader
{
public:
    // Throws Failure.
    explicit Reader(const ComPtr<IFile>& file);
    explicit Reader(const ComPtr<IFileStream>& stream);
    // Of these bytes.
    explicit Reader(std::string_view bytes);

    // The next bytes, valid until the next call: a full block, but for the last one; empty at
    // the end.
    std::span<const char> Next();

private:
    std::size_t Read(std::size_t filled);

    // Null where there are no more bytes than those in the block.
    ComPtr<ISequentialStream> stream_;
    std::vector<char> block_;
    // How much of the block such a reader has yet to give.
    std::size_t left_ = 0;
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
