#include <CAEObject.h>
#include <CAEProject.h>

#include "CAEObjectJson.h"
#include "ImportWalk.h"
#include "Members.h"

void CAEObjectJson::Import() {
    if (PrepareImport()) {
        ImportMembers();
    }
}

bool CAEObjectJson::PrepareImport() {
    if (ReadTypeField(node_).IsEmpty() || object_ == nullptr) {
        return false;
    }
    project_ = object_->getProject();
    return project_ != nullptr;
}

void CAEObjectJson::ImportMembers() {
    if (object_ != nullptr) {
        ImportWalk::ImportMembers(*this);
    }
}

void ImportWalk::BeginMembers(Place& place) {
    // The elements of an array are no members, even where they bear names.
    place.membersLeft = place.converter.node_.type() == JSON_NODE && !place.converter.node_.empty();
}

void ImportWalk::ImportNextMember(Place& place) {
    const JSONNode& node = place.converter.node_;
    const JSONNode& member = node.at(place.nextMember++);
    place.membersLeft = place.nextMember < node.size();
    const json_string name = member.name();
    const ObjectNodeKey key = ClassifyObjectNodeKey({name.data(), name.size()});
    if (key == ObjectNodeKey::kChildren) {
        BeginChildren(place, member.as_array());
    } else {
        place.converter.ImportMember(key, member);
    }
}

void CAEObjectJson::ImportMember(ObjectNodeKey key, const JSONNode& member) {
    switch (key) {
        // On a project the two names are crossed: "name" is what it is displayed as. This is meant.
        case ObjectNodeKey::kName:
            if (object_->getType() != CAE_PROJECT) {
                object_->setName(TextOf(member));
            } else if (auto* project = dynamic_cast<CAEProject*>(object_)) {
                project->SetDisplayName(TextOf(member));
            }
            break;
        case ObjectNodeKey::kDisplayName:
            object_->setName(TextOf(member));
            break;
        case ObjectNodeKey::kDatabaseKey:
            // A view item's key names the item that it shows.
            if (object_->getType() == CAE_VIEW_ITEM) {
                object_->setLinkDBKey(TextOf(member));
            } else {
                object_->setDBKey(TextOf(member));
            }
            break;
        case ObjectNodeKey::kCreatedDate:
            object_->setCreatedDate(TextOf(member));
            break;
        case ObjectNodeKey::kCreatedBy: {
            // Asks into the text instead of setting it, so no import changes who created an object. This is
            // meant.
            OuString userName = TextOf(member);
            object_->getCreatedUserName(userName);
            break;
        }
        case ObjectNodeKey::kMetaData:
            ImportMetadata(member.as_node());
            break;
        case ObjectNodeKey::kFiles:
            ImportFiles(member.as_array());
            break;
        default:
            // Not recognised, or recognised and without effect on purpose.
            break;
    }
}
