#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace host {

/// Writes JSON in UTF-8 from calls in the order of the text. A byte that is not UTF-8 is written as U+FFFD.
/// Members need a name, elements of arrays have none.
class JsonText {
public:
    void OpenObject(std::string_view name = {});
    void OpenArray(std::string_view name = {});
    /// Ends what was opened last.
    void End();

    void Text(std::string_view name, std::string_view value);
    void Number(std::string_view name, std::uint64_t value);
    void Flag(std::string_view name, bool value);
    /// An element of an array that is JSON already, on a line of its own.
    void Element(std::string_view json);

    /// The text without anything behind it.
    std::string Take();

private:
    void Begin(std::string_view name, bool isContainer);
    void Quote(std::string_view text);

    std::string text_;
    /// The ends of what is open.
    std::string open_;
    bool isFirst_ = true;
};

}  // namespace host
