#pragma once

#include <EmbeddedModel.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "Random.h"

/// Two projects with whatever random steps made of them. The same steps make equal models, and each step does
/// its work whichever others are left out.
class RandomModel {
public:
    using Steps = std::vector<std::uint64_t>;

    explicit RandomModel(const Steps& steps);

    CAEProject& Project() const { return *project_; }

    /// What nothing else can destroy: the two projects, what was detached, and the files without a project.
    std::vector<CAEObject*> Roots() const;
    /// Everything that hangs on the roots, files of projects included, in a fixed order.
    std::vector<CAEObject*> Objects() const;

private:
    void Take(std::uint64_t step);

    CAEObject& PickObject(Random& random) const;
    void AddObjects(Random& random);
    void AddChain(Random& random);
    void AddFile(Random& random);
    void SetHeader(Random& random);
    void SetMetadata(Random& random);
    void SetProject(Random& random);
    void SetReference(Random& random);
    void SetIdentifier(Random& random);
    void AttachFile(Random& random);
    void AddVersion(Random& random);
    void Detach(Random& random);

    std::unique_ptr<CAEProject> project_;
    std::unique_ptr<CAEProject> other_;
    std::vector<CAEObject*> detached_;
    std::vector<std::unique_ptr<CAEFile>> files_;
};

RandomModel::Steps RandomSteps(Random& random);

/// The whole state of the model, one fact a line: every object with everything that can be asked of it, its
/// place, its files and their roles, its versions, and what every identifier is found as.
std::vector<std::string> StateOf(const RandomModel& model);
