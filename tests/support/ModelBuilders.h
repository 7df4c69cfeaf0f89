#pragma once

#include <CAEFunctions.h>
#include <EmbeddedModel.h>

#include <memory>

/// The created date and user of everything that the builders make, so that documents come out alike every
/// time.
inline constexpr const wchar_t* kTestDate = L"2026-03-01T09:30:00Z";
inline constexpr const wchar_t* kTestUser = L"engineer";

/// Every kind that an object can have.
inline constexpr _tagCAEObjectType kObjectKinds[] = {
    CAE_PART,
    CAE_SUBASSEMBLY,
    CAE_FILE,
    CAE_PROJECT,
    CAE_MODEL,
    CAE_ITERATION,
    CAE_ITERATION_FOLDER,
    CAE_ITERATION_MODEL,
    CAE_ASSEMBLY_FOLDER,
    CAE_LOADCASE_VIEW_FOLDER,
    CAE_LOADCASE_VIEW,
    CAE_VIEW_ITEM,
    CAE_SESSION_OBJECT,
    CAE_TAG,
};

/// A project for one test, with identifier 1, the additional type "Simulation" and the directory "/studies".
class TestProject {
public:
    explicit TestProject(const OuString& name = L"Project");

    CAEProject& operator*() const { return *project_; }
    CAEProject* operator->() const { return project_.get(); }

    /// Identifiers are given in the order of the calls, from 2 on.
    CAEObject& Add(CAEObject& parent, _tagCAEObjectType type, const OuString& name);
    /// The same below the project itself.
    CAEObject& Add(_tagCAEObjectType type, const OuString& name);

    /// A new file of the project in its directory, attached to the object in the role of its type.
    CAEFile& AddFile(CAEObject& object, const OuString& name, _tagFileType type,
                     _tagFileFormat format = CAE_FORMAT_ASCII);

private:
    std::unique_ptr<CAEProject> project_;
};

/// Sets a metadata entry; an empty unit or type is not set at all.
void SetMetadata(CAEObject& object, const OuString& name, const OuString& value, const OuString& unit = L"",
                 const OuString& type = L"");

/// Attaches a file in the role that its type has on the kind of the object.
void AttachFile(CAEObject& object, int fileId, _tagFileType type);
