// The component system of the calling thread, where there is one.
#pragma once

namespace tarnwell::test
{

// Started for as long as it lives.
class Components
{
public:
    Components();
    Components(const Components&) = delete;
    Components& operator=(const Components&) = delete;
    ~Components();
};

} // namespace tarnwell::test
