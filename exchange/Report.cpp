#include <korvaneexchange/Report.h>

namespace korvane::exchange {

std::string_view NameOf(Reason reason) {
    switch (reason) {
        case Reason::kUnknownMember:
            return "unknown-member";
        case Reason::kWithoutEffect:
            return "without-effect";
        case Reason::kFixed:
            return "fixed";
        case Reason::kRepeatedMember:
            return "repeated-member";
        case Reason::kWrongKind:
            return "wrong-kind";
        case Reason::kNotAnObject:
            return "not-an-object";
        case Reason::kNoType:
            return "no-type";
        case Reason::kUnknownType:
            return "unknown-type";
        case Reason::kRefused:
            return "refused";
        case Reason::kBelowFileRecord:
            return "below-file-record";
        case Reason::kLeadsOut:
            return "leads-out";
        case Reason::kNoRole:
            return "no-role";
        case Reason::kNullKey:
            return "null-key";
        case Reason::kConflict:
            return "conflict";
        case Reason::kOtherRoot:
            return "other-root";
        case Reason::kNotComparable:
            return "not-comparable";
        case Reason::kNoSuchObject:
            return "no-such-object";
        case Reason::kNoIdentifier:
            return "no-identifier";
        case Reason::kNoKey:
            return "no-key";
        case Reason::kLaterKey:
            return "later-key";
        case Reason::kOtherKey:
            return "other-key";
        case Reason::kKeyInUse:
            return "key-in-use";
        case Reason::kOtherParent:
            return "other-parent";
        case Reason::kReadAsEmpty:
            return "read-as-empty";
        case Reason::kNamelessFile:
            return "nameless-file";
        case Reason::kReadAsNull:
            return "read-as-null";
        case Reason::kCutAtNul:
            return "cut-at-nul";
        case Reason::kMerged:
            return "merged";
        case Reason::kIncomplete:
            return "incomplete";
        case Reason::kUnattached:
            return "unattached";
        case Reason::kNoMasterAssembly:
            return "no-master-assembly";
        case Reason::kNoNumber:
            return "no-number";
        case Reason::kKeyRemoved:
            return "key-removed";
        case Reason::kAdded:
            return "added";
        case Reason::kChanged:
            return "changed";
        case Reason::kMoved:
            return "moved";
        case Reason::kRemoved:
            return "removed";
        case Reason::kKept:
            return "kept";
    }
    return {};
}

}  // namespace korvane::exchange
