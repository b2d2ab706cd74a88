#include "support/components.h"

#include <windows.h>

#include <objbase.h>

namespace tarnwell::test
{

Components::Components()
{
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
}

Components::~Components()
{
    CoUninitialize();
}

} // namespace tarnwell::test
