// The user's settings, out of their file.
#include "frame/handle.h"
#include "platform/wide.h"
#include "support/environmentvalue.h"
#include "support/tempfolder.h"

#include <gmock/gmock.h>

#include <cstring>

namespace tarnwell::test
{
namespace
{

constexpr const char16_t* keyName = u"Software\\Dovrin\\Vorel\\7.0\\Vorel7.FTPFS";

class Registry : public testing::Test
{
protected:
    void Write(std::string_view text) const
    {
        std::filesystem::create_directory(folder.Path() / "tarnwell");
        WriteBytes((folder.Path() / "tarnwell" / "ftp.conf").u16string(), text);
    }
    LSTATUS Open(RegistryKey& key) const
    {
        HKEY opened = nullptr;
        const LSTATUS status =
            RegOpenKeyExW(HKEY_CURRENT_USER, Wide(keyName), 0, KEY_READ, &opened);
        key = RegistryKey(opened);
        return status;
    }
    LSTATUS Query(const char16_t* name)
    {
        RegistryKey key;
        EXPECT_EQ(Open(key), ERROR_SUCCESS);
        size = sizeof data;
        return RegQueryValueExW(key.Get(), Wide(name), nullptr, &type,
                                reinterpret_cast<BYTE*>(data), &size);
    }
    DWORD Number() const
    {
        DWORD number = 0;
        std::memcpy(&number, data, sizeof number);
        return number;
    }

    const TempFolder folder;
    const EnvironmentValue settings{"XDG_CONFIG_HOME", folder.Path().c_str()};
    char16_t data[512] = {};
    DWORD type = 99;
    DWORD size = 0;
};

TEST_F(Registry, WithoutTheFileThereIsNoKey)
{
    RegistryKey key;
    EXPECT_EQ(Open(key), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(key);
}

TEST_F(Registry, ThereIsOneKeyOnly)
{
    Write("");
    HKEY opened = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, Wide(u"Software"), 0, KEY_READ, &opened),
              ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(opened, nullptr);
    RegistryKey key;
    EXPECT_EQ(Open(key), ERROR_SUCCESS);
}

TEST_F(Registry, ValuesHaveTheirTypes)
{
    Write("# Proxy = REG_SZ not this\n"
          "Proxy = REG_SZ ftp=proxy:3128 \r\n"
          "ProxyBypassList=REG_EXPAND_SZ\t*.example; <local>\n"
          "UseProxy = REG_DWORD 1\n"
          "  UseActive=REG_DWORD 0x10\n"
          "Empty = REG_SZ\n"
          "Bytes = REG_BINARY 00 01\n"
          "Odd = REG_DWORD one\n"
          "Negative = REG_DWORD -1\n"
          "TooHigh = REG_DWORD 4294967296\n"
          "no line of a value\n");
    EXPECT_EQ(Query(u"Proxy"), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_SZ);
    EXPECT_EQ(std::u16string(data), u"ftp=proxy:3128");
    EXPECT_EQ(size, 30U);
    EXPECT_EQ(Query(u"proxybypasslist"), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_EXPAND_SZ);
    EXPECT_EQ(std::u16string(data), u"*.example; <local>");
    EXPECT_EQ(Query(u"UseProxy"), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_DWORD);
    EXPECT_EQ(size, 4U);
    EXPECT_EQ(Number(), 1U);
    EXPECT_EQ(Query(u"UseActive"), ERROR_SUCCESS);
    EXPECT_EQ(Number(), 16U);
    EXPECT_EQ(Query(u"Empty"), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_SZ);
    EXPECT_EQ(size, 2U);
    for (const char16_t* const name : {u"Bytes", u"Odd", u"Negative", u"TooHigh"})
    {
        EXPECT_EQ(Query(name), ERROR_SUCCESS);
        EXPECT_EQ(type, REG_NONE);
    }
    EXPECT_EQ(Query(u"Missing"), ERROR_FILE_NOT_FOUND);
}

TEST_F(Registry, WhatDoesNotFitIsMoreData)
{
    Write("Fits = REG_SZ " + std::string(511, 'x') + "\nLong = REG_SZ " + std::string(512, 'x'));
    EXPECT_EQ(Query(u"Fits"), ERROR_SUCCESS);
    EXPECT_EQ(size, 1024U);
    EXPECT_EQ(Query(u"Long"), ERROR_MORE_DATA);
    EXPECT_EQ(size, 1026U);
}

} // namespace
} // namespace tarnwell::test
