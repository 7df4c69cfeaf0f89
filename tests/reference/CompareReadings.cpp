#include <cstdio>
#include <exception>
#include <string>

#include "Comparison.h"
#include "PlainReading.h"

/// Compares the library with the second reading for longer than a test does.
int main(int argc, char** argv) {
    constexpr const char* kUsage =
        "compare-readings [--rounds N] [--seconds N] [--seed N] [--verbose]\n"
        "Random models, documents and answers go through the library and through a second reading of the\n"
        "format. Ends at the first difference, or after that many rounds or seconds (100000 rounds unless\n"
        "told otherwise).\n";
    ComparisonOptions options;
    options.rounds = 100000;
    try {
        for (int i = 1; i < argc; ++i) {
            const std::string option = argv[i];
            if (option == "--verbose") {
                options.isVerbose = true;
            } else if (option == "--rounds" && i + 1 < argc) {
                options.rounds = std::stol(argv[++i]);
            } else if (option == "--seconds" && i + 1 < argc) {
                options.seconds = std::stod(argv[++i]);
            } else if (option == "--seed" && i + 1 < argc) {
                options.seed = std::stoull(argv[++i]);
            } else {
                std::fputs(kUsage, stderr);
                return 2;
            }
        }
    } catch (const std::exception&) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const std::unique_ptr<Reading> library = MakeLibraryReading();
    PlainReading plain;
    const ComparisonResult result = Compare(*library, plain, options);
    std::printf("%ld rounds from the seed %llu\n", result.rounds,
                static_cast<unsigned long long>(options.seed));
    if (!result.difference.empty()) {
        std::fputs(result.difference.c_str(), stderr);
        return 1;
    }
    return 0;
}
