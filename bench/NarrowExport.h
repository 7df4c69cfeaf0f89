#pragma once

#include <CAEProject.h>

#include <cstddef>

/// Takes the text of a document, page by page.
class PageTaker {
public:
    virtual void Take(const char* text, std::size_t length) = 0;

protected:
    ~PageTaker() = default;
};

/// False with the libraries of a revision that writes all text by way of nodes.
bool CanWriteNarrow();
void WriteNarrow(CAEProject& project, PageTaker& taker);
