#include "Subject.h"

#include <korvanejson/JsonSerializer.h>

CAEProject& Subject::Project() {
    if (project_ == nullptr) {
        project_ = MakeProject(objects_);
    }
    return *project_;
}

const std::string& Subject::Text() {
    if (text_.empty()) {
        text_ = DocumentText(Project());
    }
    return text_;
}

std::string DocumentText(CAEProject& project) {
    const OuString text = JsonSerializer(&project).GetJsonString();
    // Character by character: an ANSI form would stay with the text, and is not what this is about.
    return {text.GetBuffer(), text.GetBuffer() + text.GetLength()};
}
