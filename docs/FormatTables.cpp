#include "FormatTables.h"

#include <CAEFunctions.h>
#include <CAEObject.h>

#include <algorithm>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "format/Effects.h"
#include "format/Kinds.h"
#include "format/Nodes.h"
#include "format/Values.h"

namespace member = format::member;

namespace {

std::string Code(std::string_view text) {
    return '`' + std::string(text) + '`';
}

std::string MemberCell(format::MemberName name) {
    return '"' + std::string(name.View()) + '"';
}

std::string PresenceCell(format::Presence presence) {
    switch (presence) {
        case format::Presence::kInIterations:
            return "only in iterations, and there always";
        case format::Presence::kWithKey:
            return "only when the object has a key";
        case format::Presence::kInRoot:
            return "only in the root, and there always";
        default:
            return "always";
    }
}

/// Members that stand behind others: the first of them has the number.
Table MembersTable(const char* name, std::span<const format::NodeMember> members, std::size_t number) {
    Table table{name, {"#", "member", "present", "value"}, 1, {}};
    for (const format::NodeMember& known : members) {
        table.rows.push_back(
            {std::to_string(number++), MemberCell(known.name), PresenceCell(known.presence)});
    }
    return table;
}

/// The number of the first member that a file record has of its own: the root's last member is in no record.
constexpr std::size_t kFirstOfFileRecord =
    static_cast<std::size_t>(std::ranges::count_if(
        format::kObjectNode,
        [](const format::NodeMember& known) { return known.presence != format::Presence::kInRoot; })) +
    1;

std::string WrittenType(format::Kind kind, format::Writing writing, std::string_view name) {
    if (writing == format::Writing::kAsTheProjectSays) {
        return "the additional type in upper case";
    }
    if (writing == format::Writing::kAsRead) {
        return Code(name);
    }
    std::string written =
        format::kKindPrefix + std::string(CAEObject::getTypeName(static_cast<_tagCAEObjectType>(kind)));
    std::ranges::transform(written, written.begin(), [](char letter) {
        return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    });
    return Code(written);
}

Table KindsTable() {
    struct Types {
        std::string written;
        std::string read;
    };
    constexpr auto kAsTheModelSays = format::Writing::kAsTheModelSays;
    std::map<int, Types> kinds;
    for (const format::KindName& known : format::kKindNames) {
        Types& types = kinds[static_cast<int>(known.kind)];
        types.written = WrittenType(known.kind, known.writing, known.name);
        types.read += (types.read.empty() ? "" : ", ") + Code(known.name);
    }
    kinds[static_cast<int>(format::Kind::kSessionObject)] = {
        WrittenType(format::Kind::kSessionObject, kAsTheModelSays, {}), "none"};

    Table table{"kinds", {"kind", "\"type\" as written", "\"type\" as read", "what it is"}, 0, {}};
    for (const auto& [kind, types] : kinds) {
        table.rows.push_back({std::to_string(kind), types.written, types.read});
    }
    table.rows.push_back(
        {"all others", WrittenType(format::Kind::kUnknown, kAsTheModelSays, {}), "every other text"});
    return table;
}

Table FileTypesTable() {
    // More than the object model has.
    constexpr int kLastValue = 255;
    Table table{"file types", {"value", "\"fileType\"", "meaning"}, 0, {}};
    const std::string unknown = CAEGetFileTypeName(static_cast<int>(format::FileType::kUnknown));
    for (int value = 1; value <= kLastValue; ++value) {
        if (const std::string name = CAEGetFileTypeName(value); name != unknown) {
            table.rows.push_back({std::to_string(value), Code(name)});
        }
    }
    table.rows.push_back({"0 and all others", Code(unknown)});
    return table;
}

Table FileFormatsTable() {
    Table table{"file formats", {"value", "\"fileFormat\"", "meaning"}, 0, {}};
    for (const format::FileFormatName& known : format::kFileFormatNames) {
        table.rows.push_back({std::to_string(static_cast<int>(known.format)), Code(known.name)});
    }
    table.rows.push_back({"0 and all others", Code(format::kUnknownFileFormat)});
    return table;
}

Table FixedValuesTable() {
    return {"fixed values",
            {"value", "where", "meaning"},
            0,
            {{Code(format::kSubTypeValue), MemberCell(member::kSubType)},
             {Code(format::kNameless), MemberCell(member::kName)},
             {Code(format::kGenericStudy), MemberCell(member::kStudyTypeName)},
             {Code(format::kDescriptionMember), "the names in " + MemberCell(member::kMetaData)},
             {Code(format::kProgramReferenceEntry), "the names in " + MemberCell(member::kMetaData)},
             {Code(format::kNoProgramReference), "the " + MemberCell(member::kValue) + " of this entry"},
             {Code(format::kTrue), MemberCell(member::kIsInCoordinateGlobalFrame) + ", " +
                                       MemberCell(member::kIsFileDownloaded)}}};
}

std::string EffectCell(format::Effect effect) {
    switch (effect) {
        case format::Effect::kTaken:
            return "read";
        case format::Effect::kWithoutEffect:
            return "no effect";
        default:
            return "not known";
    }
}

std::string ShapeCell(format::Shape shape) {
    switch (shape) {
        case format::Shape::kRecords:
            return "an object of records";
        case format::Shape::kNodes:
            return "an array of nodes";
        default:
            return "text";
    }
}

bool IsTaken(const format::MemberEffect& known) {
    return known.inObject == format::Effect::kTaken || known.inRecord == format::Effect::kTaken;
}

Table ImportedMembersTable() {
    Table table{"imported members",
                {"member", "in an object node", "in a file record", "read as", "what it does"},
                0,
                {}};
    for (const format::MemberEffect& known : format::kMemberEffects) {
        if (IsTaken(known)) {
            table.rows.push_back({MemberCell(known.name), EffectCell(known.inObject),
                                  EffectCell(known.inRecord), ShapeCell(known.shape)});
        }
    }
    return table;
}

Table IgnoredMembersTable() {
    Table table{"members without effect", {"member", "in an object node", "in a file record", "why"}, 0, {}};
    for (const format::MemberEffect& known : format::kMemberEffects) {
        if (!IsTaken(known)) {
            table.rows.push_back(
                {MemberCell(known.name), EffectCell(known.inObject), EffectCell(known.inRecord)});
        }
    }
    return table;
}

Table AnswerTable() {
    Table table{"answer", {"member", "read", "what it does"}, 0, {}};
    for (const format::AnswerMember& known : format::kAnswerNode) {
        table.rows.push_back(
            {MemberCell(known.name), known.isAtTheTopOnly ? "at the top only" : "in every node"});
    }
    return table;
}

}  // namespace

std::vector<Table> FormatTables() {
    return {MembersTable("object node", format::kObjectNode, 1),
            MembersTable("metadata record", format::kMetadataRecord, 1),
            MembersTable("file record", format::kFileRecord, kFirstOfFileRecord),
            FileTypesTable(),
            FileFormatsTable(),
            KindsTable(),
            FixedValuesTable(),
            AnswerTable(),
            ImportedMembersTable(),
            IgnoredMembersTable()};
}
