#pragma once

#include <libjson.h>

#include <cstddef>
#include <deque>
#include <optional>

#include "CAEObjectJson.h"

/// The import of an object node with everything under it: members in document order, a child's whole subtree
/// before its next sibling is created, with the way back to the root kept on the heap, so that no depth of
/// nesting exhausts the stack.
class ImportWalk {
public:
    /// Applies every member of the converter's node to its object.
    static void ImportMembers(CAEObjectJson& converter);
    /// Creates and imports the elements of the array as children of the converter's object.
    static void ImportChildren(CAEObjectJson& converter, const JSONNode& children);

private:
    /// A converter on the way, the member it stands at, and the array of children being walked.
    struct Place {
        explicit Place(CAEObjectJson& root) : converter(root) {}
        Place(const JSONNode& element, CAEObject& child)
            : own(std::in_place, element, &child), converter(*own) {}
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;

        /// The converter of a child; the root's belongs to the caller.
        std::optional<CAEObjectJson> own;
        CAEObjectJson& converter;

        bool membersLeft = false;
        json_index_t nextMember = 0;
        JSONNode children = JSONNode(JSON_ARRAY);
        json_index_t nextChild = 0;
    };

    void Run();

    void BeginMembers(Place& place);
    void ImportNextMember(Place& place);
    void BeginChildren(Place& place, const JSONNode& children);

    /// Creates the element's object and enters it, where the element is one to be imported.
    void EnterChild(Place& place, const JSONNode& element);
    /// Completes the last place, a child, and leaves it.
    void LeaveChild();

    std::deque<Place> places_;
};
