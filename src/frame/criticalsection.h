// Owner of one of the platform's critical sections.
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
        if (ready_)
            DeleteCriticalSection(&section_);
    }

    // To be called once.
    HRESULT Initialize()
    {
        if (!InitializeCriticalSectionEx(&section_, 0, 0))
            return EnsureFailed(StatusFromLastError());
        ready_ = true;
        return S_OK;
    }

    // So that the standard library's guards take it.
    void lock()
    {
        EnterCriticalSection(&section_);
    }
    void unlock()
    {
        LeaveCriticalSection(&section_);
    }

private:
    CRITICAL_SECTION section_{};
    bool ready_ = false;
};

} // namespace tarnwell
