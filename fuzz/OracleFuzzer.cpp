// Reads any text with libjson and with two packaged readers: what both accept libjson accepts, with the same
// values, and what both refuse it refuses.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "Oracles.h"
#include "Texts.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    libjson::set_text_units(libjson::text_units::utf8);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const OracleVerdict verdict = AskOracles({reinterpret_cast<const char*>(data), size});
    if (!verdict.difference.empty()) {
        std::fprintf(stderr, "%s\n", verdict.difference.c_str());
        std::abort();
    }
    return 0;
}
