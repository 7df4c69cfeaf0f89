#pragma once

#include <memory>
#include <string>

#include "Project.h"

/// A project of some size and its document, each made when it is first asked for.
class Subject {
public:
    explicit Subject(int objects) : objects_(objects) {}

    int Objects() const { return objects_; }
    CAEProject& Project();
    /// The document of the project as it was made.
    const std::string& Text();
    /// For those that have taken from it what they need.
    void DropProject() { project_.reset(); }

private:
    int objects_;
    std::unique_ptr<CAEProject> project_;
    std::string text_;
};

/// The document of a project as GetJsonString returns it, which is ASCII.
std::string DocumentText(CAEProject& project);
