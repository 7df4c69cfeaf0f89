// Measures the memory of one run of one case, in a process of its own:
//
//     bench-memory CASE OBJECTS
//
// writes "BYTES ALLOCATIONS HELD PROJECT": by how much the process grew at most while the case ran, how often
// it asked for memory, how much it had before the run, and how much of that came with the project.

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "Case.h"
#include "CountedMemory.h"

namespace {

/// A line of the process's status, which has kilobytes.
long long StatusBytes(std::string_view name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name)) {
            return std::strtoll(line.c_str() + name.size(), nullptr, 10) * 1024;
        }
    }
    throw std::runtime_error("the system does not say what memory a process has");
}

/// What the process has, without what it only keeps ready.
long long ResidentBytes() {
    malloc_trim(0);
    return StatusBytes("VmRSS:");
}

/// From now on the peak is that of what follows.
void ForgetPeak() {
    std::ofstream references("/proc/self/clear_refs");
    if (!(references << "5" << std::flush)) {
        throw std::runtime_error("the system does not let a process forget its peak of memory");
    }
}

std::unique_ptr<Case> CaseNamed(std::string_view name, Subject& subject) {
    const std::vector<NamedCase> all = AllCases();
    const auto found = std::ranges::find(all, name, &NamedCase::name);
    if (found == all.end()) {
        throw std::invalid_argument("there is no case of that name: " + std::string(name));
    }
    return found->make(subject);
}

void Measure(std::string_view name, int objects) {
    // What a first run leaves behind for good is not the run's: code that is loaded, names that are kept, the
    // narrow forms that the object model keeps of its texts.
    Subject small(100);
    const std::unique_ptr<Case> first = CaseNamed(name, small);
    first->Prepare();
    first->Run();
    first->Clear();

    const long long empty = ResidentBytes();
    Subject subject(objects);
    subject.Project();
    const long long project = ResidentBytes() - empty;
    DocumentText(subject.Project());
    const std::unique_ptr<Case> measured = CaseNamed(name, subject);
    measured->Prepare();
    const long long held = ResidentBytes();
    ForgetPeak();
    const long allocations = CountOfAllocations();
    measured->Run();
    const long made = CountOfAllocations() - allocations;
    std::cout << std::max(0LL, StatusBytes("VmHWM:") - held) << ' ' << made << ' ' << held << ' ' << project
              << '\n';
}

}  // namespace

int main(int count, char** arguments) {
    try {
        const int objects = count == 3 ? std::atoi(arguments[2]) : 0;
        if (objects < 1) {
            std::cerr << "Usage: bench-memory CASE OBJECTS\n";
            return 2;
        }
        Measure(arguments[1], objects);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "bench-memory: " << error.what() << '\n';
        return 1;
    }
}
