// What the addresses of all file systems promise.
#pragma once

#include "addressed/uri.h"
#include "frame/exception.h"
#include "support/target.h"

#include <memory>
#include <string>

namespace tarnwell::fuzz
{

// Whether `action`, which is about the address `text`, succeeds. There is one way to fail.
template <class Action> bool Succeeds(const std::u16string& text, Action&& action)
{
    try
    {
        action();
        return true;
    }
    catch (const ComException& failure)
    {
        Expect(static_cast<HRESULT>(failure.code) == E_INVALIDARG, "an address is an argument");
        const std::u16string named = text.substr(0, text.find(u'\0'));
        Expect(failure.message.find(named) != std::u16string::npos, "the address is named");
        return false;
    }
}

// A new address of the class `Address`; null if it refuses `text`.
template <class Address> std::shared_ptr<Uri> Make(const std::u16string& text)
{
    std::shared_ptr<Uri> uri;
    Succeeds(text, [&] { uri = std::make_shared<Address>(text); });
    return uri;
}

// Asks `uri` everything and holds the answers against one another. False if it answers nothing,
// since its class's pattern doesn't match. In some classes a host is one only with a user in front
// of it, so that one without isn't found again in what is composed.
bool CheckAddress(const Uri& uri, bool hostNeedsUser = false);

} // namespace tarnwell::fuzz
