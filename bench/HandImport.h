#pragma once

#include <CAEFile.h>
#include <CAEProject.h>

#include <deque>
#include <string>
#include <vector>

/// What an import makes, as a list of what to say to the object model: no document, no names of members, no
/// texts to recognise. Texts are narrow, as those of every document.
class HandImport {
public:
    /// Notes what a document of the project says.
    explicit HandImport(CAEProject& project);

    /// Makes it in another project.
    void MakeIn(CAEProject& project) const;

private:
    struct Header {
        const char* name = nullptr;
        const char* createdDate = nullptr;
        const char* key = nullptr;
    };
    struct Entry {
        const char* name;
        const char* value;
        const char* type;
    };
    struct File {
        Header header;
        _tagFileType type;
        _tagFileFormat format;
        const char* locationType;
    };
    struct Object {
        _tagCAEObjectType type = CAE_PROJECT;
        Header header;
        std::vector<Entry> metadata;
        std::vector<Object> children;
        std::vector<File> files;
    };

    const char* Keep(const OuString& text);
    Header NoteHeader(CAEObject& object, const OuString& name);
    Object Note(CAEObject& object);
    File NoteFile(CAEFile& file);

    static void Make(CAEProject& project, CAEObject& object, const Object& noted);
    static void MakeChild(CAEProject& project, CAEObject& parent, const Object& noted);
    static void MakeFile(CAEProject& project, CAEObject& object, const File& noted);

    /// Every text once it is said, one after the other as in a document.
    std::deque<std::string> texts_;
    Object root_;
    const char* additionalType_;
};
