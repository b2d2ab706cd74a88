// The creatable classes.
#pragma once

#include "platform/win32.h"

namespace tarnwell
{

// To be called before the first class object is asked for.
HRESULT InitializeClassTable();

// Drops the cached class objects, in the table's order. To be called only if the table was
// initialised.
void ReleaseClassTable();

// The class object of `clsid`, made at the first call and cached, asked for interface `iid`.
HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** out);

} // namespace tarnwell
