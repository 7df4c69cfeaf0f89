#include <EmbeddedModel.h>
#include <korvanejson/JsonSerializer.h>

#include <cstdio>

int main() {
    const auto project = korvane::CreateProject(L"Outside", L"/studies");
    project->setCreatedDate(L"2026-03-01T09:30:00Z");
    korvane::SetCreatedUserName(*project, L"engineer");
    project->setAdditionalType(L"Simulation");
    std::puts(JsonSerializer(project.get()).GetJsonString().GetAnsiBuffer());
}
