// Prints the published binary contract as this compiler makes it: the place of every method in its
// table and what it takes and gives, the sizes of boundary types, the identifiers. The text is the
// same on both platforms, but for the layer below, which Windows has of its own.
#include <tarnwell/tarnwell.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

using namespace tarnwell;

namespace
{

// "i32", "u64", or "pointer" for what is passed as one.
template <class T> std::string Shape()
{
    if constexpr (std::is_pointer_v<T> || std::is_reference_v<T>)
        return "pointer";
    else
        return (std::is_signed_v<T> ? "i" : "u") + std::to_string(8 * sizeof(T));
}

// Both compilers keep the distance from the table's beginning, plus 1, in the first word.
template <class Method> std::size_t PlaceOf(Method method)
{
    std::size_t words[2];
    static_assert(sizeof words == sizeof method, "a pointer to a method is two words");
    std::memcpy(words, &method, sizeof words);
    return (words[0] - 1) / sizeof(void*);
}

template <class I, class Result, class... Arguments>
void PrintMethod(const char* name, Result (STDMETHODCALLTYPE I::*method)(Arguments...))
{
    std::string text;
    ((text += (text.empty() ? "" : ", ") + Shape<Arguments>()), ...);
    std::printf("  %zu %s(%s) %s\n", PlaceOf(method), name, text.c_str(), Shape<Result>().c_str());
}

// What would come behind the last method shows how many there are, a destructor included.
template <class I> struct Behind : I
{
    virtual void STDMETHODCALLTYPE Next() = 0;

protected:
    ~Behind() = default;
};

void PrintIdentifier(const char* name, const GUID& id)
{
    std::printf("%s %08x-%04x-%04x-", name, static_cast<unsigned>(id.Data1), id.Data2, id.Data3);
    for (int i = 0; i < 8; ++i)
        std::printf(i == 2 ? "-%02x" : "%02x", id.Data4[i]);
    std::printf("\n");
}

template <class I> void PrintInterface(const char* name)
{
    PrintIdentifier(name, IidOf<I>());
#if defined(_MSC_VER) || defined(__CRT_UUID_DECL)
    if (__uuidof(I) != IidOf<I>())
        PrintIdentifier("  __uuidof differs:", __uuidof(I));
#endif
    std::printf("  %zu methods, object of %zu bytes\n", PlaceOf(&Behind<I>::Next), sizeof(I));
}

template <class T> void PrintType(const char* name)
{
    std::printf("%s %zu bytes, aligned to %zu\n", name, sizeof(T), alignof(T));
}

} // namespace

#define SHOW_INTERFACE(name) PrintInterface<name>(#name)
#define SHOW_METHOD(of, name) PrintMethod<of>(#name, &of::name)
#define SHOW_CLASS(name) PrintIdentifier(#name, name)
#define SHOW_TYPE(name) PrintType<name>(#name)
#define SHOW_CONSTANT(name) std::printf("%s %08x\n", #name, static_cast<unsigned>(name))

// clang-format off
int main()
{
#ifndef _WIN32
#include "components.inc"
#endif
#include "layout.inc"
}
