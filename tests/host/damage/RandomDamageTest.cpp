#include <algorithm>
#include <cstdint>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "DamageSupport.h"
#include "support/LongRun.h"

namespace {

/// Each test has a share of the damages, so that none takes long. Where programs take
/// long to start, fewer are enough. More commands read files with a checksum, and they
/// have more ways of being damaged.
struct Amount {
    int shares;
    int damages;
};

Amount AmountFor(const FileFormat& format) {
    const bool hasChecksum = format.damaged == DamagedReading::AsSound;
    const bool isFree = format.damaged == DamagedReading::AsFarAsItGoes;
    const int shares = hasChecksum && !kIsSample ? 5 : 1;
    const int inShortRun = kIsSample ? (hasChecksum ? 3 : 1) : isFree ? 5 : 10;
    return {shares, IsLongRun() ? 100 : inShortRun};
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
                return Flip(bytes, std::min<std::size_t>(bytes.size(), 100));
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
        const std::size_t page = std::min<std::size_t>(4096, bytes.size() / 2);
        const std::size_t first = Below(bytes.size() / page) * page;
        const std::size_t second = Below(bytes.size() / page) * page;
        const auto at = [&](std::size_t offset) {
            return bytes.begin() + static_cast<std::ptrdiff_t>(offset);
        };
        // Nothing happens to a page that is swapped with itself.
        std::swap_ranges(at(first), first == second ? at(first) : at(first + page), at(second));
        what_ = "pages at " + std::to_string(first) + " and " + std::to_string(second) + " swapped";
        return bytes;
    }

    std::mt19937_64 random_;
    std::string what_;
};

/// One share of the damages to files of a format.
struct Share {
    const FileFormat* format;
    int number;
};

std::ostream& operator<<(std::ostream& stream, const Share& share) {
    return stream << share.format->name << ' ' << share.number;
}

std::vector<Share> AllShares() {
    std::vector<Share> shares;
    for (const FileFormat& format : AllFileFormats()) {
        for (int number = 0; number < AmountFor(format).shares; ++number) {
            shares.push_back({&format, number});
        }
    }
    return shares;
}

class RandomDamage : public DamageTest, public testing::WithParamInterface<Share> {};

TEST_P(RandomDamage, IsSaidOrDoesNotMatter) {
    const FileFormat& format = *GetParam().format;
    const Amount amount = AmountFor(format);
    for (int index = 0; index < amount.damages; ++index) {
        const int seed = GetParam().number + amount.shares * index;
        Damage damage(static_cast<std::uint64_t>(seed));
        const std::string bytes = damage.Apply(BytesOf(format));
        ExpectSafe(format, bytes, "seed " + std::to_string(seed) + ", " + damage.What());
    }
}

INSTANTIATE_TEST_SUITE_P(Shares, RandomDamage, testing::ValuesIn(AllShares()),
                         [](const testing::TestParamInfo<Share>& tested) {
                             return tested.param.format->name + std::to_string(tested.param.number);
                         });

/// The file of every command that works on one is damaged in these tests.
TEST(FileFormats, HaveARowForEveryFileThatACommandWorksOn) {
    for (const ProgramCommand& command : AllCommands()) {
        if (command.use != FileUse::None) {
            EXPECT_FALSE(FormatOf(command).readings.empty()) << command.name;
            EXPECT_EQ(FormatOf(command).IsReadBy(command), command.HasFile()) << command.name;
        }
    }
}

}  // namespace
