#include <string>

#include "DocumentMaker.h"
#include "JsonParts.h"
#include "RandomDocuments.h"
#include "RandomTexts.h"

using namespace std::string_literals;

JSONNode DocumentMaker::Identifier() {
    // Few, so that they are met again and the first has to win.
    const std::string number = std::to_string(random_.Below(random_.OneIn(2) ? 6 : 40));
    const std::string texts[] = {number,
                                 number,
                                 number,
                                 " " + number,
                                 "00" + number,
                                 "+" + number,
                                 number + "ab",
                                 "-" + number,
                                 number + "\0x"s,
                                 "\t\v" + number,
                                 "2147483648",
                                 "-99999999999999999999",
                                 "",
                                 "abc",
                                 "0x1",
                                 "\xC2\xA0" + number,
                                 "4294967298"};
    return random_.OneIn(5)    ? libjson::parse(JsonText(number))
           : random_.OneIn(20) ? Value(6)
                               : String("", random_.OneIn(2) ? number : random_.Pick(texts));
}

JSONNode DocumentMaker::AnswerNode(int depth) {
    if (random_.OneIn(20)) {
        return Value(depth);
    }
    JSONNode node(random_.OneIn(30) ? JSON_ARRAY : JSON_NODE);
    const std::string names[] = {"id", "dbkey",       "name",     "children", "files",
                                 "ID", "displayName", "children", "id"};
    std::size_t usual = 0;
    for (int count = random_.Between(0, 6); count > 0; --count) {
        const std::string& name = random_.OneIn(4) ? random_.Pick(names) : names[usual++ % std::size(names)];
        if (name == "id") {
            node.push_back(Named(name, Identifier()));
        } else if (name == "children" || name == "files") {
            const char type = random_.OneIn(8) ? JSON_NODE : JSON_ARRAY;
            node.push_back(Named(
                name, random_.OneIn(15) ? Value(depth) : Container(type, depth, &DocumentMaker::AnswerNode)));
        } else {
            node.push_back(random_.OneIn(15) ? Named(name, Value(depth))
                                             : String(name, RandomBytes(random_)));
        }
    }
    if (random_.OneIn(4)) {
        Shuffle(node);
    }
    return node;
}

JSONNode RandomAnswer(Random& random) {
    DocumentMaker maker(random);
    if (random.OneIn(25)) {
        return MaybeThroughText(random, maker.Chain());
    }
    JSONNode answer = maker.AnswerNode(0);
    if (random.OneIn(3)) {
        JSONNode answers(JSON_ARRAY);
        for (int count = random.Between(0, 4); count > 0; --count) {
            answers.push_back(maker.AnswerNode(1));
        }
        answer = answers;
    }
    return MaybeThroughText(random, answer);
}
