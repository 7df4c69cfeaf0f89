#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

#include "host/system/OutputFile.h"

namespace host {

/// Gathers small texts into pieces.
class TextPieces {
public:
    explicit TextPieces(const WritePiece& write) : write_(write) { piece_.reserve(kBytes); }

    void Put(std::string_view text) {
        if (piece_.size() + text.size() > kBytes) {
            Hand();
        }
        piece_.append(text);
    }
    /// Hands over what is left.
    std::error_code Finish() {
        Hand();
        return error_;
    }
    bool HasFailed() const { return static_cast<bool>(error_); }

private:
    static constexpr std::size_t kBytes = std::size_t{64} * 1024;

    void Hand() {
        if (!error_ && !piece_.empty()) {
            error_ = write_(piece_);
        }
        piece_.clear();
    }

    const WritePiece& write_;
    std::string piece_;
    std::error_code error_;
};

}  // namespace host
