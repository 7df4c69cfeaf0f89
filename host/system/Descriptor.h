#pragma once

#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace host {

/// The reason why the last system call failed.
inline std::error_code LastError() {
    return {errno, std::generic_category()};
}

/// A file descriptor, which is closed at the end.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { static_cast<void>(Close()); }
    Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
    Descriptor& operator=(Descriptor&&) = delete;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const { return number_ >= 0; }
    int Get() const { return number_; }
    /// Some file systems report only now that the bytes could not be written.
    std::error_code Close() {
        const int number = number_;
        number_ = -1;
        return number >= 0 && ::close(number) != 0 ? LastError() : std::error_code();
    }

private:
    int number_;
};

}  // namespace host
