// What is done with the file systems of the rows while their platform calls fail in turn.
#pragma once

#include "faults/backendhere.h"

#include <tarnwell/text.h>

#include <functional>
#include <span>
#include <string>

namespace tarnwell::test
{

// What a run gave, as text, in the order in which it was asked for.
struct Seen
{
    std::string text;
    bool failsBare = false; // by design

    void Add(const Bstr& value)
    {
        text += EncodeName(value.View()).value_or("?") + "\n";
    }
};

struct SharedAction
{
    const char* name;
    bool (*applies)(const Backend&);
    std::function<HRESULT()> (*prepare)(const BackendHere&, Seen&);
    // What never fails, or not with a text, whatever the row.
    bool leavesText = true;
    bool hidesAll = false;
};

std::span<const SharedAction> SharedActions();

} // namespace tarnwell::test
