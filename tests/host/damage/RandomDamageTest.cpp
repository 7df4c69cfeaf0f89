#include <algorithm>
#include <cstdint>
#include <random>

#include "DamageSupport.h"
#include "support/LongRun.h"

namespace {

/// Each test has a share of the damages, so that none takes long. The code is the same on Windows, where
/// programs take long to start, so fewer are enough there.
#if defined(_WIN32)
constexpr int kShares = 2;
constexpr int kLongShare = 50;
#else
constexpr int kShares = 10;
constexpr int kLongShare = 100;
#endif

int DamagesInShare() {
    return IsLongRun() ? kLongShare : kIsSanitized ? 2 : 10;
}

/// Damages that a disk, a transfer or an editor do to a file. The same seed gives the same damage everywhere.
class Damage {
public:
    explicit Damage(std::uint64_t seed) : random_(seed) {}

    std::string Apply(std::string bytes) {
        switch (Below(8)) {
            case 0:
                return Cut(bytes);
            case 1:
                return Overwrite(bytes, 512 * (1 + Below(8)), true);
            case 2:
                return Overwrite(bytes, 1 + Below(32), false);
            case 3:
                return SwapPages(bytes);
            case 4:
                return Flip(bytes, 100);
            default:
                return Flip(bytes, bytes.size());
        }
    }
    const std::string& What() const { return what_; }

private:
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }

    /// Changes one bit somewhere in the beginning of the file.
    std::string Flip(std::string& bytes, std::size_t size) {
        const std::size_t at = Below(size);
        const auto bit = static_cast<unsigned>(Below(8));
        bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ (1U << bit));
        what_ = "bit " + std::to_string(bit) + " of byte " + std::to_string(at) + " flipped";
        return bytes;
    }
    std::string Cut(std::string& bytes) {
        bytes.resize(1 + Below(bytes.size() - 1));
        what_ = "cut after " + std::to_string(bytes.size()) + " bytes";
        return bytes;
    }
    std::string Overwrite(std::string& bytes, std::size_t size, bool isZero) {
        const std::size_t at = Below(bytes.size());
        const std::size_t end = std::min(bytes.size(), at + size);
        for (std::size_t index = at; index < end; ++index) {
            bytes[index] = isZero ? '\0' : static_cast<char>(Below(256));
        }
        what_ = "bytes " + std::to_string(at) + " to " + std::to_string(end) + " overwritten";
        return bytes;
    }
    std::string SwapPages(std::string& bytes) {
        constexpr std::size_t kPage = 4096;
        const std::size_t first = Below(bytes.size() / kPage) * kPage;
        const std::size_t second = Below(bytes.size() / kPage) * kPage;
        const auto at = [&](std::size_t offset) {
            return bytes.begin() + static_cast<std::ptrdiff_t>(offset);
        };
        // Nothing happens to a page that is swapped with itself.
        std::swap_ranges(at(first), first == second ? at(first) : at(first + kPage), at(second));
        what_ = "pages at " + std::to_string(first) + " and " + std::to_string(second) + " swapped";
        return bytes;
    }

    std::mt19937_64 random_;
    std::string what_;
};

class RandomDamage : public DamageTest, public testing::WithParamInterface<int> {};

TEST_P(RandomDamage, IsSaidOrDoesNotMatter) {
    for (int index = 0; index < DamagesInShare(); ++index) {
        const int seed = GetParam() + kShares * index;
        const DamagedFile file = index % 2 == 0 ? DamagedFile::Project : DamagedFile::Database;
        Damage damage(static_cast<std::uint64_t>(seed));
        const std::string bytes = damage.Apply(BytesOf(file));
        ExpectSafe(file, bytes, "seed " + std::to_string(seed) + ", " + damage.What());
    }
}

INSTANTIATE_TEST_SUITE_P(Shares, RandomDamage, testing::Range(0, kShares));

}  // namespace
