#include <EmbeddedModel.h>
#include <korvaneexchange/ParseDocument.h>
#include <korvaneexchange/Text.h>
#include <korvaneexchange/WriteDocument.h>

#include <cstdio>
#include <string>

using namespace korvane::exchange;

int main() {
    const auto project = korvane::CreateProject(FromUtf8("Outside"), L"/studies");
    project->setCreatedDate(L"2026-03-01T09:30:00Z");
    korvane::SetCreatedUserName(*project, L"engineer");
    project->setAdditionalType(L"Simulation");

    std::string text;
    const WriteReport report = WriteDocument(*project, {}, [&text](std::string_view page) { text += page; });
    std::puts(text.c_str());

    // What the library throws is caught by its own class.
    try {
        ParseDocument(std::string_view(text).substr(0, text.size() - 1));
    } catch (const DocumentError& error) {
        return error.Offset() == report.bytes - 1 ? 0 : 1;
    }
    return 1;
}
