#include <dlfcn.h>
#include <gtest/gtest.h>
#include <libjson.h>

#include <cstdlib>
#include <stdexcept>

#include "LoadedLibrary.h"

// The loader takes this program's function for libjson's, so that it sees what the library registers.

namespace {

struct Registration {
    int count = 0;
    libjson::malloc_t allocate = nullptr;
    libjson::realloc_t reallocate = nullptr;
    libjson::free_t release = nullptr;
};

Registration registration;

}  // namespace

__attribute__((visibility("default"))) void libjson::register_memory_callbacks(malloc_t allocate,
                                                                               realloc_t reallocate,
                                                                               free_t release) noexcept {
    registration = {registration.count + 1, allocate, reallocate, release};
}

TEST(RegisteredFunctions, AreTheOnesOfTheRuntime) {
    ASSERT_EQ(registration.count, 0);
    const LoadedLibrary library;
    EXPECT_EQ(registration.count, 1);
    EXPECT_EQ(registration.allocate, static_cast<libjson::malloc_t>(std::malloc));
    EXPECT_EQ(registration.reallocate, static_cast<libjson::realloc_t>(std::realloc));
    EXPECT_EQ(registration.release, static_cast<libjson::free_t>(std::free));
}
