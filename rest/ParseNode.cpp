#include <korvanejson/CaeRest.h>

#include "AnswerWalk.h"

void caerest::json::util::ParseNode(const JSONNode& node, std::map<std::string, std::string>& map) {
    WalkAnswer(node,
               [&map](const NodeText& id, const NodeText& key) { map.emplace(UpToNul(id), UpToNul(key)); });
}
