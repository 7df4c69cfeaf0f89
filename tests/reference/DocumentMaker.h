#pragma once

#include <libjson.h>

#include <string>

#include "Random.h"

/// Makes the parts of one document; the deeper and the larger it is already, the less it adds.
class DocumentMaker {
public:
    explicit DocumentMaker(Random& random) : random_(random) {}

    JSONNode ObjectNode(int depth, bool isFile = false);
    JSONNode Section(const std::string& name, int depth);
    JSONNode AnswerNode(int depth);
    JSONNode Value(int depth);
    JSONNode Chain();

private:
    JSONNode Member(const std::string& name, int depth);
    JSONNode Identifier();
    JSONNode Container(char type, int depth, JSONNode (DocumentMaker::*element)(int));
    JSONNode ChildElement(int depth) { return ObjectNode(depth); }
    JSONNode FileElement(int depth) { return ObjectNode(depth, true); }
    JSONNode VersionElement(int depth);
    JSONNode MetadataElement(int depth);
    void AddFileMembers(JSONNode& node);
    void Shuffle(JSONNode& node);
    /// How many parts something at the depth gets; none once the document is large.
    int Count(int depth, int most);

    Random& random_;
    int budget_ = 150;
};
