#include "ReportBuilder.h"

#include <utility>

namespace korvane::exchange {

void ReportBuilder::Add(Reason reason, std::string pointer, int identifier, std::string subject,
                        std::string sentence) {
    if (!IsListing()) {
        CountUnlisted(reason);
        return;
    }
    bytes_ += sizeof(Entry) + pointer.size() + subject.size() + sentence.size();
    report_.entries.push_back(
        {std::move(pointer), identifier, reason, std::move(subject), std::move(sentence)});
    Count(reason);
}

void ReportBuilder::CountUnlisted(Reason reason) {
    ++report_.unlisted;
    Count(reason);
}

}  // namespace korvane::exchange
