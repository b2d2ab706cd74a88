// Parsers of what a running client prints, which comes in pieces.
#pragma once

#include "support/target.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarnwell::fuzz
{

// What a parser that `make` gives reads of the bytes, fed `piece` at a time.
template <class Make>
auto ReadIn(std::string_view bytes, std::size_t piece, const Make& make, bool& isComplete)
{
    auto parser = make();
    std::vector<typename decltype(parser.Next())::value_type> found;
    const auto take = [&] {
        while (auto next = parser.Next())
            found.push_back(std::move(*next));
    };
    while (!bytes.empty())
    {
        parser.Feed(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        take();
    }
    if constexpr (requires { parser.End(); })
    {
        parser.End();
        take();
    }
    isComplete = parser.IsComplete();
    return found;
}

// What it reads of them at once, which must be what it reads of pieces. `same` compares two.
template <class Make, class Same>
auto ReadTwice(std::string_view bytes, std::size_t piece, const Make& make, const Same& same)
{
    bool isWhole = false;
    bool isInPieces = false;
    auto whole = ReadIn(bytes, bytes.size(), make, isWhole);
    const auto pieces = ReadIn(bytes, piece, make, isInPieces);
    Expect(isWhole == isInPieces, "pieces are as complete as the whole");
    Expect(std::equal(whole.begin(), whole.end(), pieces.begin(), pieces.end(), same),
           "pieces are read as the whole is");
    return whole;
}

// Of a name in a tree.
inline void ExpectLeadsDown(std::string_view path)
{
    const std::string text = "/" + std::string(path) + "/";
    Expect(text.find("/../") == std::string::npos && text.find("/./") == std::string::npos &&
               text.find("//") == std::string::npos && text.find('\0') == std::string::npos,
           "a name leads down");
}

} // namespace tarnwell::fuzz
