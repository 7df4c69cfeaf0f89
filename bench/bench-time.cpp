// Times cases beside each other:
//
//     bench-time --list
//     bench-time [--keep-memory] CASE@OBJECTS CASE@OBJECTS...
//
// Checks first that all cases of one outcome and size give the same result, byte for byte, and says "ready".
// Then, for each line that it reads, it runs every case once (short ones until there is something to
// measure) and writes their times in one line: seconds of processor time, user and system, per run. Free
// memory is given back to the system before every run, so that a run touches its memory for the first time,
// as the one export or import of a host does, and a project of any size meets the same conditions;
// --keep-memory leaves that out.

#include <malloc.h>

#include <algorithm>
#include <charconv>
#include <ctime>
#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>

#include "Case.h"

namespace {

/// So long that the clock and the beginning do not show.
constexpr double kLeastSeconds = 0.1;

double ProcessorSeconds() {
    timespec now{};
    if (clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now) != 0) {
        throw std::runtime_error("there is no clock of processor time");
    }
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

struct TimedCase {
    std::string label;
    std::string outcome;
    std::unique_ptr<Case> work;
};

double SecondsPerRun(Case& timed, bool keepsMemory) {
    double total = 0;
    int runs = 0;
    while (total < kLeastSeconds) {
        timed.Prepare();
        if (!keepsMemory) {
            malloc_trim(0);
        }
        const double start = ProcessorSeconds();
        timed.Run();
        total += ProcessorSeconds() - start;
        ++runs;
        timed.Clear();
    }
    return total / runs;
}

/// The cases of a run, and the projects that they share.
class Cases {
public:
    void Add(std::string_view label) {
        const std::size_t at = label.find('@');
        const std::string_view size = at == label.npos ? std::string_view() : label.substr(at + 1);
        int objects = 0;
        const auto [end, error] = std::from_chars(size.data(), size.data() + size.size(), objects);
        if (error != std::errc() || end != size.data() + size.size() || objects < 1) {
            throw std::invalid_argument("not CASE@OBJECTS: " + std::string(label));
        }
        const std::vector<NamedCase> all = AllCases();
        const auto found = std::ranges::find(all, label.substr(0, at), &NamedCase::name);
        if (found == all.end()) {
            throw std::invalid_argument("there is no case of that name: " + std::string(label));
        }
        Subject& subject = subjects_.try_emplace(objects, objects).first->second;
        cases_.push_back({std::string(label), std::string(found->outcome) + std::string(label.substr(at)),
                          found->make(subject)});
    }

    /// Throws for a result that is not that of the other cases.
    void Check() {
        std::map<std::string, std::string> expected;
        for (const TimedCase& timed : cases_) {
            timed.work->Prepare();
            timed.work->Run();
            const std::string result = timed.work->Result();
            timed.work->Clear();
            const std::string& known = expected.try_emplace(timed.outcome, result).first->second;
            if (result.empty() || result != known) {
                throw std::logic_error(timed.label + " gives another result than the cases before it");
            }
        }
    }

    void Time(bool keepsMemory) {
        for (const TimedCase& timed : cases_) {
            std::cout << SecondsPerRun(*timed.work, keepsMemory) << ' ';
        }
        std::cout << std::endl;
    }

private:
    std::map<int, Subject> subjects_;
    std::vector<TimedCase> cases_;
};

int Run(int count, char** arguments) {
    if (count == 2 && std::string_view(arguments[1]) == "--list") {
        for (const NamedCase& named : AllCases()) {
            std::cout << named.name << '\n';
        }
        return 0;
    }
    const bool keepsMemory = count > 1 && std::string_view(arguments[1]) == "--keep-memory";
    Cases cases;
    for (int index = keepsMemory ? 2 : 1; index < count; ++index) {
        cases.Add(arguments[index]);
    }
    cases.Check();
    std::cout.precision(9);
    std::cout << "ready" << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
        cases.Time(keepsMemory);
    }
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    try {
        return Run(count, arguments);
    } catch (const std::exception& error) {
        std::cerr << "bench-time: " << error.what() << '\n';
        return 1;
    }
}
