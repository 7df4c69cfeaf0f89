#pragma once

#include <random>
#include <string>
#include <vector>

#include "support/ModelBuilders.h"

/// A project with objects and files of all kinds, whose names, keys and metadata repeat now and then.
class RandomTree {
public:
    explicit RandomTree(unsigned seed, int steps = 60) : numbers_(seed) {
        objects_.push_back(&*project_);
        for (int step = 0; step < steps; ++step) {
            Step();
        }
    }

    CAEProject& operator*() const { return *project_; }
    CAEProject* operator->() const { return &*project_; }

    std::size_t Pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(numbers_);
    }
    CAEObject& AnyObject() { return *objects_[Pick(objects_.size())]; }

private:
    OuString Name() {
        static const wchar_t* const names[] = {L"",        L"arm",      L"base",  L"Arm",
                                               L"a/b\\c~", L"\u00E4rm", L"model", L"a b"};
        return names[Pick(std::size(names))];
    }
    /// Mostly a new one.
    OuString Key() {
        const std::size_t number = Pick(4) == 0 ? Pick(3) : 100 + Pick(100000);
        return OuString(("K" + std::to_string(number)).c_str(), 0);
    }

    void Step() {
        const std::size_t step = Pick(10);
        if (step < 4) {
            CAEObject* const added =
                korvane::CreateObject(AnyObject(), kObjectKinds[Pick(std::size(kObjectKinds))], Name());
            if (added != nullptr) {
                objects_.push_back(added);
            }
        } else if (step < 6) {
            AddFile();
        } else if (step == 6) {
            static_cast<void>(AnyObject().setDBKey(Key()));
        } else if (step == 7) {
            AnyObject().setCreatedDate(Name());
        } else if (step == 8) {
            SetMetadata(AnyObject(), Name(), Name(), Name());
        } else if (auto* const project = dynamic_cast<CAEProject*>(&AnyObject())) {
            project->setAdditionalType(Pick(2) == 0 ? L"CAEPROJECT" : L"CAEPROGRAM");
        }
    }

    void AddFile() {
        const auto type = static_cast<_tagFileType>(Pick(6));
        CAEFile& file = project_.AddFile(AnyObject(), Name(), type, static_cast<_tagFileFormat>(Pick(3)));
        file.m_locationType = Name();
        static_cast<void>(file.setDBKey(Key()));
        if (Pick(3) == 0) {
            AttachFile(AnyObject(), file.getID(), type);
        }
    }

    TestProject project_;
    std::mt19937 numbers_;
    std::vector<CAEObject*> objects_;
};
