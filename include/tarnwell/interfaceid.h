/// @file
/// The identifiers of interfaces, reachable from the interface type.
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

/// `InterfaceId<I>::value` is the identifier of interface `I`.
template <class I> struct InterfaceId;

/// The identifier of interface `I`, on every compiler; `__uuidof(I)` gives the same where the
/// compiler has it.
template <class I> constexpr const GUID& IidOf()
{
    return InterfaceId<I>::value;
}

/// @cond
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
/// @endcond

} // namespace tarnwell

/// @cond
// Tells the compiler the identifier for `__uuidof`, where it has that operator. Both ways need the
// whole identifier in their own spelling, so its common rest stands here a second time.
// Blanks would become a part of the text.
// clang-format off
#define TARNWELL_UUID_TEXT(identifier) #identifier
#if defined(_MSC_VER)
#define TARNWELL_UUIDOF(name, first)                                                               \
    namespace tarnwell                                                                             \
    {                                                                                              \
    struct __declspec(uuid(TARNWELL_UUID_TEXT(first-C961-4751-84B9-EA3B67E048A3))) name;   \
    }
#elif defined(__CRT_UUID_DECL)
#define TARNWELL_UUIDOF(name, first)                                                               \
    __CRT_UUID_DECL(tarnwell::name, 0x##first, 0xC961, 0x4751, 0x84, 0xB9, 0xEA, 0x3B, 0x67, 0xE0, \
                    0x48, 0xA3)
#else
#define TARNWELL_UUIDOF(name, first)
#endif

// clang-format on

// Gives interface `name` its identifier: as `IID_name`, through `IidOf` and for `__uuidof`. `first`
// is the identifier's first word in eight hexadecimal digits. Stands outside of all namespaces.
#define TARNWELL_INTERFACE_ID(name, first)                                                         \
    namespace tarnwell                                                                             \
    {                                                                                              \
    inline constexpr GUID IID_##name = detail::InterfaceGuid(0x##first);                           \
    template <> struct InterfaceId<name>                                                           \
    {                                                                                              \
        static constexpr const GUID& value = IID_##name;                                           \
    };                                                                                             \
    }                                                                                              \
    TARNWELL_UUIDOF(name, first)
/// @endcond
