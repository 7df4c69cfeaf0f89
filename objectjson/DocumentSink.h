#pragma once

#include <cstddef>

/// Takes the text of a document piece by piece. What it throws ends the writing and reaches the caller.
class DocumentSink {
public:
    /// The piece lives for the time of the call. None is empty.
    virtual void Write(const char* text, std::size_t length) = 0;

protected:
    ~DocumentSink() = default;
};
