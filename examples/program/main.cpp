#include <EmbeddedModel.h>
#include <korvanejson/JsonSerializer.h>

#include <iostream>

int main() {
    const auto project = korvane::CreateProject(L"trailer", L"/studies/trailer");
    korvane::SetCreation(*project, L"2026-03-01T09:30:00Z", L"engineer");
    CAEObject& frame = *korvane::CreateObject(*project, CAE_PART, L"frame");
    frame.setMetadataValue(L"Mass", L"1250.5");
    korvane::SetMetadataUnit(frame, L"Mass", L"kg");
    const CAEFile& drawing =
        *korvane::CreateFile(*project, L"/studies/trailer/frame.pdf", CAE_FILE_REPORT, CAE_FORMAT_BINARY);
    frame.attachCustomFile(drawing.getID(), project.get());
    std::cout << JsonSerializer(&frame).GetJson().write_formatted() << '\n';
}
