#include <OuString.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "Comparison.h"
#include "PlainReading.h"

namespace {

constexpr const char* kUsage =
    "compare-readings [--rounds N] [--seconds N] [--seed N] [--code-page NAME] [--verbose]\n"
    "Random models, documents and answers go through the library and through a second reading of the\n"
    "format. Ends at the first difference, or after that many rounds or seconds (100000 rounds unless\n"
    "told otherwise).\n";

/// Takes an option with its value; false if there is no such option or the value is not valid for it.
bool TakeOption(const std::string& name, const std::string& value, ComparisonOptions& options) {
    if (name == "--rounds") {
        options.rounds = std::stol(value);
    } else if (name == "--seconds") {
        options.seconds = std::stod(value);
    } else if (name == "--seed") {
        options.seed = std::stoull(value);
    } else if (name == "--code-page") {
        return OuSetAnsiCodePage(value.c_str());
    } else {
        return false;
    }
    return true;
}

/// Reads all arguments; false if they are not as the usage says.
bool ReadArguments(const std::vector<std::string>& arguments, ComparisonOptions& options) {
    try {
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            if (arguments[i] == "--verbose") {
                options.isVerbose = true;
            } else if (i + 1 == arguments.size() || !TakeOption(arguments[i], arguments[i + 1], options)) {
                return false;
            } else {
                ++i;
            }
        }
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

}  // namespace

/// Compares the library with the second reading for longer than a test does.
int main(int argc, char** argv) {
    ComparisonOptions options;
    options.rounds = 100000;
    if (!ReadArguments({argv + 1, argv + argc}, options)) {
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
