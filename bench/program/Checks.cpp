#include "Checks.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "Rows.h"

namespace bench {

void Expect(bool holds, const std::string& what) {
    if (!holds) {
        throw std::runtime_error("not as it has to be: " + what);
    }
}

void ExpectSameRows(const std::string& first, const std::string& second) {
    const std::string difference = DifferenceOf(LoadRows(first), LoadRows(second));
    Expect(difference.empty(), first + " and " + second + " differ in " + difference);
}

std::string ReadText(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

}  // namespace bench
