#pragma once

#include <OuList.h>
#include <libjson.h>

#include <deque>
#include <variant>

#include "CAEFileJson.h"
#include "CAEObjectJson.h"

class CAEObject;
class CAEProject;

/// The export of everything that stands below one object: depth first, in the order in which the object model
/// is asked when every child's and every file's own export is called in turn, but with the way back to the
/// root kept on the heap, so that no depth of nesting exhausts the stack.
class ExportWalk {
public:
    /// The sections that nest, in the order in which an object node carries them.
    enum class Section { kChildren, kFiles };

    /// One section of the converter's object, whole; empty without one.
    static JSONNode Write(CAEObjectJson& converter, Section section);

private:
    /// A converter on the way, and how far its section has come.
    struct Place {
        explicit Place(CAEObjectJson& root) : converter(root) {}
        explicit Place(CAEObject& child)
            : own(std::in_place_type<CAEObjectJson>, &child), converter(std::get<CAEObjectJson>(own)) {}
        explicit Place(CAEFile& file)
            : own(std::in_place_type<CAEFileJson>, &file), converter(std::get<CAEFileJson>(own)) {}
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;

        /// The converter of a child or a file; the root's belongs to the caller.
        std::variant<std::monostate, CAEObjectJson, CAEFileJson> own;
        CAEObjectJson& converter;

        Section section = Section::kChildren;
        JSONNode array;
        OuList elements;
        OuListPosition* next = nullptr;
        /// Where the identifiers of the files are looked up.
        CAEProject* project = nullptr;
    };

    void Begin(Place& place, Section section);
    void BeginChildren(Place& place);
    void BeginFiles(Place& place);

    /// Enters the next element that the section carries; false when there is none left.
    bool EnterNext(Place& place);
    bool EnterNextChild(Place& place);
    bool EnterNextFile(Place& place);

    /// Writes what stands before the nesting sections and begins the first of them.
    void Enter(Place& place);
    /// Completes the last place, hands its node to the array above and leaves it.
    void Leave();

    std::deque<Place> places_;
};
