// What the handles of the platform's internet functions stand for.
#pragma once

#include "platform/posix/internet/ftpfind.h"
#include "platform/posix/internet/internetfailure.h"

#include <cstddef>
#include <memory>
#include <mutex>
#include <new>
#include <unordered_map>
#include <variant>

namespace tarnwell::posix
{

struct InternetRoot
{
    // Lists as they were given.
    std::string proxy;
    std::string bypass;
};

struct InternetConnection
{
    std::shared_ptr<FtpConnection> ftp;
};

// Keeps its connection alive.
class FtpTransfer
{
public:
    FtpTransfer(std::shared_ptr<FtpConnection> ftp, bool isUpload)
        : ftp_(std::move(ftp)), isUpload_(isUpload)
    {
    }
    FtpTransfer(const FtpTransfer&) = delete;
    FtpTransfer& operator=(const FtpTransfer&) = delete;
    // Nobody is told what comes of it.
    ~FtpTransfer()
    {
        ftp_->EndTransfer();
    }

    FtpConnection& Ftp() const
    {
        return *ftp_;
    }
    bool IsUpload() const
    {
        return isUpload_;
    }

private:
    std::shared_ptr<FtpConnection> ftp_;
    bool isUpload_;
};

using InternetObject = std::variant<InternetRoot, InternetConnection, FtpFind, FtpTransfer>;

// Handles are numbers that are never given twice, so that a closed one is known as such.
class InternetHandles
{
public:
    static InternetHandles& Instance()
    {
        // Never destroyed: a stream may outlive everything static. In room that is there from the
        // beginning, so that a bad handle is one also where there is no memory left.
        alignas(InternetHandles) static std::byte room[sizeof(InternetHandles)];
        static InternetHandles& table = *new (room) InternetHandles;
        return table;
    }

    template <class T, class... Arguments> HINTERNET Add(Arguments&&... arguments)
    {
        auto object = std::make_shared<InternetObject>(std::in_place_type<T>,
                                                       std::forward<Arguments>(arguments)...);
        const std::lock_guard lock(guard_);
        // Odd, so that it is no address of anything.
        last_ += 2;
        objects_.emplace(last_, std::move(object));
        return reinterpret_cast<HINTERNET>(last_);
    }
    std::shared_ptr<InternetObject> Find(HINTERNET handle)
    {
        const std::lock_guard lock(guard_);
        const auto found = objects_.find(reinterpret_cast<std::uintptr_t>(handle));
        return found == objects_.end() ? nullptr : found->second;
    }
    // The object goes with the caller's pointer, outside of the lock.
    std::shared_ptr<InternetObject> Take(HINTERNET handle)
    {
        const std::lock_guard lock(guard_);
        const auto found = objects_.extract(reinterpret_cast<std::uintptr_t>(handle));
        return found.empty() ? nullptr : std::move(found.mapped());
    }

private:
    std::mutex guard_;
    std::unordered_map<std::uintptr_t, std::shared_ptr<InternetObject>> objects_;
    std::uintptr_t last_ = 1;
};

// The object stays for as long as the operation lasts, whoever closes the handle meanwhile.
template <class T> std::shared_ptr<T> ObjectOf(HINTERNET handle)
{
    const std::shared_ptr<InternetObject> object = InternetHandles::Instance().Find(handle);
    Check(object != nullptr, ERROR_INVALID_HANDLE);
    T* const wanted = std::get_if<T>(object.get());
    Check(wanted != nullptr, ERROR_INTERNET_INCORRECT_HANDLE_TYPE);
    return {object, wanted};
}

} // namespace tarnwell::posix
