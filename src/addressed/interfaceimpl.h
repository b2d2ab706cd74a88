// Making the objects of the file systems of addresses, and the failures that these share.
#pragma once

#include "frame/comobject.h"

#include <initializer_list>
#include <string>

namespace tarnwell
{

// Throws message 133, which names `item`. If there are facts, they follow in brackets, one a line.
[[noreturn]] void ThrowNotFound(const std::u16string& item,
                                std::initializer_list<std::u16string> facts = {});

// Throws a failed attempt to make an object: message 114 with the system's text.
void ThrowIfNotMade(HRESULT status);

// A new object of class `T`, ready to be filled.
template <class T> ComPtr<ComObject<T>> NewObject()
{
    ComPtr<ComObject<T>> object;
    ThrowIfNotMade(MakeObject<T>(object));
    return object;
}

} // namespace tarnwell
