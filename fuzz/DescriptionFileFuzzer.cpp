// Reads any text as a korvane.toml.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Expect.h"
#include "host/directory/DescriptionFile.h"

namespace {

void ExpectObject(const host::DescribedObject& object) {
    for (const host::DescribedEntry& entry : object.metadata) {
        Expect(!entry.name.empty(), "an entry has a name");
        Expect(entry.value.find('\0') == std::string::npos, "a value is a text of the object model");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const host::DescriptionFile file = host::ReadDescriptionFile({reinterpret_cast<const char*>(data), size});
    ExpectObject(file.study);
    for (const auto* const objects : {&file.iterations, &file.parts}) {
        for (const host::DescribedObject& object : *objects) {
            Expect(object.place.line > 0 && object.place.column > 0, "an object has a place");
            ExpectObject(object);
        }
    }
    for (const host::DescriptionProblem& problem : file.problems) {
        Expect(problem.place.line > 0 && problem.place.column > 0, "a problem has a place");
        Expect(!problem.text.empty(), "a problem has a sentence");
    }
    return 0;
}
