// The identifiers of interfaces, reachable from the interface type.
#pragma once

#include <tarnwell/com.h>

namespace tarnwell
{

namespace detail
{
// All of the object model's own interface identifiers differ in their first word only.
constexpr GUID InterfaceGuid(std::uint32_t first)
{
    return GUID{first, 0xC961, 0x4751, {0x84, 0xB9, 0xEA, 0x3B, 0x67, 0xE0, 0x48, 0xA3}};
}
} // namespace detail

// `InterfaceId<I>::value` is the identifier of interface `I`.
template <class I> struct InterfaceId;

template <class I> constexpr const GUID& IidOf()
{
    return InterfaceId<I>::value;
}

template <> struct InterfaceId<::IUnknown>
{
    static constexpr GUID value{0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
};

template <> struct InterfaceId<::IClassFactory>
{
    static constexpr GUID value{0x00000001, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
};

template <> struct InterfaceId<::ISequentialStream>
{
    static constexpr GUID value{
        0x0C733A30, 0x2A1C, 0x11CE, {0xAD, 0xE5, 0x00, 0xAA, 0x00, 0x44, 0x77, 0x3D}};
};

template <> struct InterfaceId<::IErrorInfo>
{
    static constexpr GUID value{
        0x1CF2B120, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
};

template <> struct InterfaceId<::ICreateErrorInfo>
{
    static constexpr GUID value{
        0x22F03340, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
};

template <> struct InterfaceId<::ISupportErrorInfo>
{
    static constexpr GUID value{
        0xDF0B3D60, 0x548F, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
};

} // namespace tarnwell

// Gives interface `name` its identifier, both as `IID_name` and through `IidOf`.
#define TARNWELL_INTERFACE_ID(name, first)                                                         \
    inline constexpr GUID IID_##name = detail::InterfaceGuid(first);                               \
    template <> struct InterfaceId<name>                                                           \
    {                                                                                              \
        static constexpr const GUID& value = IID_##name;                                           \
    }
