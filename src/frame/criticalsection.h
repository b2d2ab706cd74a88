// Owners of the platform's critical sections.
#pragma once

#include "frame/status.h"

namespace tarnwell
{

class CriticalSection
{
public:
    CriticalSection() = default;
    CriticalSection(const CriticalSection&) = delete;
    CriticalSection& operator=(const CriticalSection&) = delete;
    ~CriticalSection()
    {
        Delete();
    }

    // To be called once before the first Enter.
    HRESULT Initialize()
    {
        if (!InitializeCriticalSectionEx(&section_, 0, 0))
            return EnsureFailed(StatusFromLastError());
        ready_ = true;
        return S_OK;
    }
    void Delete()
    {
        if (ready_)
            DeleteCriticalSection(&section_);
        ready_ = false;
    }

    void Enter()
    {
        EnterCriticalSection(&section_);
    }
    void Leave()
    {
        LeaveCriticalSection(&section_);
    }

private:
    CRITICAL_SECTION section_{};
    bool ready_ = false;
};

// Holds a critical section for as long as it lives.
class Locked
{
public:
    explicit Locked(CriticalSection& section) : section_(section)
    {
        section_.Enter();
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked()
    {
        section_.Leave();
    }

private:
    CriticalSection& section_;
};

} // namespace tarnwell
