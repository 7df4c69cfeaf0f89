#pragma once

#include <CAEFile.h>
#include <CAEFunctions.h>
#include <CAEProject.h>
#include <OuStringFileName.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>

/// The document of a project as somebody writes it by hand who knows what is in it: one function for each
/// section, recursion, no modes. The object model is asked what an export asks it, in the same order, and
/// gives narrow texts. The target gets
///
///     OpenObject(), OpenObject(name), OpenArray(name), Text(name, value), EndObject(), EndArray()
template <typename Target>
class HandExport {
public:
    HandExport(CAEProject& project, Target& target) : project_(project), target_(target) {}

    void Write() {
        target_.OpenObject();
        WriteObject(project_);
        target_.Text("subType", "SDM");
        target_.EndObject();
    }

private:
    void Text(std::string_view name, const OuString& value) { target_.Text(name, value.GetAnsiBuffer()); }

    void WriteName(CAEObject& object, _tagCAEObjectType type) {
        if (type == CAE_FILE) {
            OuStringFileName path;
            static_cast<CAEFile&>(object).getFullPathName(path);
            Text("name", path.GetFileName());
            return;
        }
        OuString name;
        object.getName(name);
        target_.Text("name", name.IsEmpty() ? "model" : name.GetAnsiBuffer());
    }

    void WriteStudy(const CAEObject& iteration) {
        const CAEObject* const parent = iteration.getParent();
        const CAEObject* const study = parent == nullptr ? nullptr : parent->getParent();
        OuString name(L"Generic");
        if (study != nullptr) {
            study->getName(name);
        }
        Text("studyTypeName", name);
    }

    void WriteType(CAEObject& object, _tagCAEObjectType type) {
        const char* const modelName = CAEObject::getTypeName(type);
        if (type == CAE_PROJECT) {
            OuString name = static_cast<CAEProject&>(object).getAdditionalType();
            name.MakeUpper();
            Text("type", name);
            return;
        }
        std::array<char, 64> name{"CAE"};
        std::transform(modelName, modelName + std::min(std::string_view(modelName).size(), name.size() - 4),
                       name.begin() + 3, [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        target_.Text("type", name.data());
    }

    void WriteHeader(CAEObject& object) {
        target_.Text("id", std::to_string(object.getID()).c_str());
        const _tagCAEObjectType type = object.getType();
        WriteName(object, type);
        if (type == CAE_ITERATION) {
            WriteStudy(object);
        }
        OuString text;
        object.getCreatedDate(text);
        Text("createdDate", text);
        object.getCreatedUserName(text);
        Text("createdBy", text);
        WriteType(object, type);
        const OuString key = object.getDBKey();
        if (!key.IsEmpty()) {
            Text("dbkey", key);
        }
    }

    void WriteMetadata(const CAEObject& object) {
        target_.OpenObject("metaData");
        OuTemplateArray<OuString, OuCRTAllocator> names;
        OuTemplateArray<OuString, OuCRTAllocator> values;
        object.getAllMetadata(names, values);
        for (int index = 0; index < names.GetSize(); ++index) {
            const OuString& name = names[index];
            OuString type;
            OuString unit;
            OuString value;
            object.getMetadataType(name, type);
            object.getMetadataUnitString(name, unit);
            object.getMetadataValue(name, value);
            target_.OpenObject(name.GetAnsiBuffer());
            Text("value", value);
            Text("metaDataType", unit);
            target_.EndObject();
        }
        target_.EndObject();
    }

    void WriteChildren(const CAEObject& object) {
        target_.OpenArray("children");
        OuList children;
        object.getChildrenList(children);
        for (OuListPosition* position = children.GetHeadPosition(); position != nullptr;) {
            target_.OpenObject();
            WriteObject(*static_cast<CAEObject*>(children.GetNext(position)));
            target_.EndObject();
        }
        target_.EndArray();
    }

    void WriteFiles(CAEObject& object) {
        target_.OpenArray("files");
        const OuList files = object.GetFiles();
        CAEProject* const project = object.getProject();
        for (OuListPosition* position = files.GetHeadPosition(); position != nullptr;) {
            CAEFile& file = *project->getFile(files.GetNextID(position));
            target_.OpenObject();
            WriteObject(file);
            WriteFileMembers(file);
            target_.EndObject();
        }
        target_.EndArray();
    }

    void WriteFileMembers(const CAEFile& file) {
        target_.Text("fileType", CAEGetFileTypeName(file.getFileType()));
        target_.Text("fileFormat", file.getFileFormat() == CAE_FORMAT_ASCII ? "ASCII" : "Binary");
        Text("locationType", file.m_locationType);
        target_.Text("filePath", "");
    }

    void WriteObject(CAEObject& object) {
        WriteHeader(object);
        WriteMetadata(object);
        WriteChildren(object);
        WriteFiles(object);
    }

    CAEProject& project_;
    Target& target_;
};
