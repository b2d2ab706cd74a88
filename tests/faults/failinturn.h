// An action, run once for each of its platform calls with that one failing. Whatever fails, nothing
// is leaked and nothing is left behind.
#pragma once

#include "faults/local.h"

#include <functional>

namespace tarnwell::test
{

class FailingAction
{
public:
    FailingAction() = default;
    FailingAction(const FailingAction&) = delete;
    FailingAction& operator=(const FailingAction&) = delete;
    virtual ~FailingAction() = default;

    // Puts everything back to how it was, before each run.
    virtual void Renew() {}
    // Gets ready, without faults, and gives what is to be run with them. What that holds is let go
    // of when it has run.
    virtual std::function<HRESULT()> Prepare() = 0;
    // Whether each run has the same calls. What a client prints while it is spoken to comes in more
    // or fewer blocks.
    virtual bool HasSteadyCalls() const
    {
        return true;
    }
    // After a run in which nothing failed.
    virtual void ExpectWhole(const Result& result) = 0;
    // After one in which a call of `operation` failed.
    virtual void Expect(const std::string& operation, const Result& result) = 0;
};

// Runs it with each call failing with each of a few errors. Nothing may stay in its temporary and
// in its current folder, which are its own meanwhile.
void FailInTurn(FailingAction& action);

} // namespace tarnwell::test
