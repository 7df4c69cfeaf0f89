#include "Case.h"

#include <iterator>

std::vector<NamedCase> AllCases() {
    std::vector<NamedCase> all;
    for (const auto& group : {TextCases(), NodeCases(), ParseCases(), ImportCases(), AnswerCases()}) {
        all.insert(all.end(), group.begin(), group.end());
    }
    return all;
}
