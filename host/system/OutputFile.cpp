#include "OutputFile.h"

namespace host {

std::error_code WriteOutputFile(const std::filesystem::path& target, std::string_view text) {
    return WriteOutputFile(target, [text](const WritePiece& write) { return write(text); });
}

std::error_code CollectText(const WriteText& write, std::string& text) {
    return write([&text](std::string_view piece) {
        text += piece;
        return std::error_code();
    });
}

}  // namespace host
