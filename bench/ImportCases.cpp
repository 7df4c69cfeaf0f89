// A document to objects: ours beside calls that say the same to the object model and have no document.

#include <korvanejson/CaeRest.h>
#include <korvanejson/JsonSerializer.h>

#include "Case.h"
#include "HandImport.h"

namespace {

/// Every run starts from an empty project.
class IntoNewProject : public Case {
public:
    void Prepare() override { project_ = MakeEmptyProject(); }
    std::string Result() override { return DocumentText(*project_); }
    void Clear() override { project_.reset(); }

protected:
    CAEProject& Project() { return *project_; }

private:
    std::unique_ptr<CAEProject> project_;
};

class Import : public IntoNewProject {
public:
    explicit Import(Subject& subject) : document_(JsonSerializer(&subject.Project()).GetJson()) {
        subject.DropProject();
    }

    void Run() override { caerest::json::DeserializeJsonToObject(document_, &Project()); }

private:
    JSONNode document_;
};

class ImportByHand : public IntoNewProject {
public:
    explicit ImportByHand(Subject& subject) : import_(subject.Project()) { subject.DropProject(); }

    void Run() override { import_.MakeIn(Project()); }

private:
    HandImport import_;
};

}  // namespace

std::vector<NamedCase> ImportCases() {
    return {
        {"import", kSameImport, MakeCase<Import>},
        {"import-by-hand", kSameImport, MakeCase<ImportByHand>},
    };
}
