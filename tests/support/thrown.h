// What a call throws, for tests of the module's inside.
#pragma once

#include "frame/exception.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace tarnwell::test
{

struct Thrown
{
    HRESULT status;
    std::u16string text;
    std::u16string source;
    std::uint32_t line;
};

template <class F> Thrown ThrownBy(F&& call)
{
    try
    {
        std::forward<F>(call)();
    }
    catch (const ComException& exception)
    {
        return {static_cast<HRESULT>(exception.code), exception.message,
                exception.file == nullptr ? u"" : exception.file, exception.line};
    }
    ADD_FAILURE() << "nothing was thrown";
    return {};
}

} // namespace tarnwell::test
