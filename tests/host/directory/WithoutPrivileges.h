#pragma once

#if !defined(_WIN32)

#include <unistd.h>

#include <cstdlib>

namespace host {

/// Takes the rights of the superuser away from the test for a while, where it has them.
class WithoutPrivileges {
public:
    WithoutPrivileges() { isRoot_ = ::geteuid() == 0 && ::seteuid(65534) == 0; }
    ~WithoutPrivileges() {
        if (isRoot_ && ::seteuid(0) != 0) {
            std::abort();
        }
    }
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

private:
    bool isRoot_ = false;
};

}  // namespace host

#endif
